#include "TextWriter.h"

#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)

#include <string_view>

namespace {

libjson::plain_name Plain(format::MemberName name) {
    return {name.View()};
}

std::string_view View(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace

void TextWriter::Text(format::MemberName name, const char* value) {
    writer_.text(Plain(name), View(value));
}

void TextWriter::OpenObject(format::MemberName name) {
    writer_.open_object(Plain(name));
}

void TextWriter::OpenArray(format::MemberName name) {
    writer_.open_array(Plain(name));
}

void TextWriter::OpenObject(const char* name) {
    writer_.open_object(View(name));
}

void TextWriter::Finish() {
    writer_.end();
    writer_.finish();
}

#endif

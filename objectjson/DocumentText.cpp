#include "DocumentText.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "Sections.h"
#include "TextWriter.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#if !defined(KORVANEJSON_TEXT_WITHOUT_NODES)
#include "NodeWriter.h"
#endif

namespace {

constexpr std::size_t kStep = 16;

/// Widens that many characters of ASCII. Copies on both sides let compilers see that no character changes on
/// the way, and widen all of them together.
void WidenStep(const char* text, wchar_t* wide) {
    std::array<unsigned char, kStep> from;
    std::memcpy(from.data(), text, sizeof(from));
    std::array<wchar_t, kStep> to;
    std::ranges::copy(from, to.begin());
    std::memcpy(wide, to.data(), sizeof(to));
}

}  // namespace

void WriteRootMembers(CAEObject* object, ExportMode mode, DocumentWriter& out) {
    if (object != nullptr) {
        WriteObject(*object, mode, out);
    }
    out.Text(format::member::kSubType, format::kSubTypeValue);
}

void WriteDocument(CAEObject* object, ExportMode mode, DocumentSink& sink) {
#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)
    TextWriter out(sink);
    WriteRootMembers(object, mode, out);
    out.Finish();
#else
    JSONNode document(JSON_NODE);
    NodeWriter out(document);
    WriteRootMembers(object, mode, out);
    const json_string text = document.write();
    sink.Write(text.data(), text.size());
#endif
}

void WideText::Write(const char* text, std::size_t length) {
    while (length != 0) {
        const std::size_t next = std::min(length, kMostWidened);
        Append(text, next);
        text += next;
        length -= next;
    }
}

void WideText::Append(const char* text, std::size_t length) {
    std::size_t at = 0;
    for (; length - at >= kStep; at += kStep) {
        WidenStep(text + at, widened_.data() + at);
    }
    std::copy(text + at, text + length, widened_.data() + at);
    text_.Append(widened_.data(), length);
}

OuString WideText::Take() {
    return std::exchange(text_, OuString());
}

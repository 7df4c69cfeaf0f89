#include "NodeWriter.h"

void NodeWriter::Text(format::MemberName name, const char* value) {
    nodes_.text(name.View(), value == nullptr ? "" : value);
}

#if !__has_include(<node_writer.h>)

namespace {

json_string Copy(std::string_view text) {
    return json_string(text.data(), text.size());
}

}  // namespace

void NodeMaker::Open(char type, std::string_view name) {
    open_.emplace_back(type).set_name(Copy(name));
}

void NodeMaker::end() {
    const JSONNode ended = std::move(open_.back());
    open_.pop_back();
    Innermost().push_back(ended);
}

void NodeMaker::text(std::string_view name, std::string_view value) {
    Innermost().push_back(JSONNode(Copy(name), Copy(value)));
}

#endif

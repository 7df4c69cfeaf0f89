#include "NodeWriter.h"

void NodeWriter::Text(format::MemberName name, const char* value) {
    Innermost().push_back(JSONNode(name.c_str(), value == nullptr ? "" : value));
}

void NodeWriter::OpenArray(format::MemberName name) {
    open_.emplace_back(JSON_ARRAY).set_name(name.c_str());
}

void NodeWriter::OpenObject(const char* name) {
    open_.emplace_back(JSON_NODE).set_name(name == nullptr ? "" : name);
}

void NodeWriter::OpenElement() {
    open_.emplace_back(JSON_NODE);
}

void NodeWriter::End() {
    const JSONNode ended = std::move(open_.back());
    open_.pop_back();
    Innermost().push_back(ended);
}

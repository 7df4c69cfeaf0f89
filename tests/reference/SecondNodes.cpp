#include "SecondReading.h"

namespace reference {

OuString Widen(const std::string& text) {
    return {text.c_str(), 0};
}

JSONNode MakeString(const OuString& name, const OuString& value) {
    return JSONNode(json_string(name.GetAnsiBuffer()), value.GetAnsiBuffer());
}

JSONNode MakeContainer(char type, const OuString& name) {
    JSONNode node(type);
    node.set_name(json_string(name.GetAnsiBuffer()));
    return node;
}

bool IsContainer(const JSONNode& node) {
    return node.type() == JSON_NODE || node.type() == JSON_ARRAY;
}

const JSONNode* FindMember(const JSONNode& node, const char* name) {
    if (node.type() == JSON_NODE) {
        for (const JSONNode& member : node) {
            if (member.name() == name) {
                return &member;
            }
        }
    }
    return nullptr;
}

std::string TextOf(const JSONNode& node) {
    return node.as_string().c_str();
}

}  // namespace reference

#include "Show.h"

#include <cstdint>
#include <cstdio>

namespace {

bool IsPlain(unsigned long code) {
    return code >= 0x20 && code < 0x7F && code != '"' && code != '\\';
}

void AppendNode(const JSONNode& node, const std::string& indent, std::string& shown) {
    constexpr const char* kTypes[] = {"null", "string", "number", "boolean", "array", "object"};
    const auto bytes = [](const json_string& text) { return ShowBytes({text.data(), text.size()}); };
    shown += indent + kTypes[node.type()] + " \"" + bytes(node.name()) + "\" = \"" + bytes(node.as_string()) +
             "\"\n";
    for (const JSONNode& child : node) {
        AppendNode(child, indent + " ", shown);
    }
}

}  // namespace

std::string ShowBytes(const std::string& text) {
    std::string shown;
    for (const char character : text) {
        const unsigned code = static_cast<unsigned char>(character);
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02X", code);
        shown += IsPlain(code) ? std::string(1, character) : escape;
    }
    return shown;
}

std::string ShowText(const OuString& text) {
    std::string shown = "\"";
    for (std::size_t i = 0; i < text.GetLength(); ++i) {
        const auto code = static_cast<unsigned long>(static_cast<std::uint32_t>(text.GetBuffer()[i]));
        char escape[16];
        std::snprintf(escape, sizeof escape, "\\{%lX}", code);
        shown += IsPlain(code) ? std::string(1, static_cast<char>(code)) : escape;
    }
    return shown + '"';
}

std::string ShowNode(const JSONNode& node) {
    std::string shown;
    AppendNode(node, "", shown);
    return shown;
}

// Making, sharing and naming nodes.

#include <charconv>
#include <cmath>
#include <concepts>
#include <cstring>
#include <utility>

#include "Node.h"
#include "libjson.h"

using namespace libjson::detail;

namespace {

Node* MakeNamed(char type, const json_string& name, std::string_view text) {
    Cells cells;
    HeldName held(AcquireName(name, cells), cells);
    Node* const node = MakeText(type, held.Get(), text, cells);
    held.PassOn();
    return node;
}

template <class Number>
Node* MakeNumber(const json_string& name, Number value) {
    if constexpr (std::floating_point<Number>) {
        if (!std::isfinite(value)) {
            return MakeNamed(JSON_NULL, name, "null");
        }
    }
    char digits[32];
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof(digits), value);
    return MakeNamed(JSON_NUMBER, name, {digits, static_cast<std::size_t>(result.ptr - digits)});
}

Node* MakeUnnamed(char type) {
    Cells cells;
    switch (type) {
        case JSON_NODE:
            return nullptr;
        case JSON_ARRAY:
            return MakeContainer(JSON_ARRAY, nullptr, 0, cells);
        case JSON_STRING:
            return MakeText(JSON_STRING, nullptr, "", cells);
        case JSON_NUMBER:
            return MakeText(JSON_NUMBER, nullptr, "0", cells);
        case JSON_BOOL:
            return MakeText(JSON_BOOL, nullptr, "false", cells);
        default:
            return MakeText(JSON_NULL, nullptr, "null", cells);
    }
}

}  // namespace

JSONNode::JSONNode(char type) : node_(MakeUnnamed(type)) {}

JSONNode::JSONNode(const json_string& name, const char* value)
    : node_(MakeNamed(JSON_STRING, name, value != nullptr ? std::string_view(value) : std::string_view())) {}
JSONNode::JSONNode(const json_string& name, const json_string& value)
    : node_(MakeNamed(JSON_STRING, name, value)) {}
JSONNode::JSONNode(const json_string& name, bool value)
    : node_(MakeNamed(JSON_BOOL, name, value ? "true" : "false")) {}

// As numbers the character types are the integers that they are.
JSONNode::JSONNode(const json_string& name, char value) : node_(MakeNumber(name, int{value})) {}
JSONNode::JSONNode(const json_string& name, signed char value) : node_(MakeNumber(name, int{value})) {}
JSONNode::JSONNode(const json_string& name, unsigned char value) : node_(MakeNumber(name, int{value})) {}
JSONNode::JSONNode(const json_string& name, short value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned short value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, int value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned int value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, long value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned long value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, long long value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned long long value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, float value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, double value) : node_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, long double value)
    : node_(MakeNumber(name, static_cast<double>(value))) {}

JSONNode::JSONNode(const JSONNode& other) noexcept : node_(Share(other.node_)) {}

JSONNode& JSONNode::operator=(const JSONNode& other) noexcept {
    JSONNode shared(other);
    swap(shared);
    return *this;
}

JSONNode& JSONNode::operator=(JSONNode&& other) noexcept {
    JSONNode taken(std::move(other));
    swap(taken);
    return *this;
}

JSONNode::~JSONNode() {
    if (node_ != nullptr && --node_->references == 0) {
        Cells cells;
        Release(node_, cells);
    }
}

void JSONNode::swap(JSONNode& other) noexcept {
    std::swap(node_, other.node_);
}

unsigned char JSONNode::type() const noexcept {
    return static_cast<unsigned char>(Read(*this).type);
}

json_string JSONNode::name() const {
    return json_string(TextOf(Read(*this).name));
}

void JSONNode::set_name(const json_string& name) {
    if (std::string_view(name) == TextOf(Read(*this).name)) {
        return;
    }
    Cells cells;
    HeldName held(AcquireName(name, cells), cells);
    Node& node = MakeUnique(*this, cells);
    DropName(node.name, cells);
    node.name = held.PassOn();
}

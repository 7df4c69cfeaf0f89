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

Handle MakeNamed(char type, const json_string& name, std::string_view text) {
    Cells cells;
    HeldName held(AcquireName(name, cells), cells);
    const Handle handle = MakeText(type, held.Get(), text, cells);
    held.PassOn();
    return handle;
}

template <class Number>
Handle MakeNumber(const json_string& name, Number value) {
    if constexpr (std::floating_point<Number>) {
        if (!std::isfinite(value)) {
            return MakeNamed(JSON_NULL, name, "null");
        }
    }
    char digits[32];
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof(digits), value);
    return MakeNamed(JSON_NUMBER, name, {digits, static_cast<std::size_t>(result.ptr - digits)});
}

Handle MakeUnnamed(char type) {
    Cells cells;
    switch (type) {
        case JSON_NODE:
        case JSON_ARRAY:
            return MakeEmpty(type, nullptr, cells);
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

/// Gives the node another name, with the reference to it, where that needs no other node and no one else
/// holds it. False, with nothing changed, where that is not so.
bool RenameInPlace(Handle& handle, Name* name, Cells& cells) noexcept {
    if (IsPacked(handle)) {
        if (IsCounted(name)) {
            return false;
        }
        handle = WithNameSlot(handle, SlotOf(name));
        return true;
    }
    Node& node = *NodeOf(handle);
    if (node.references > 1) {
        return false;
    }
    if (IsContainerType(node.type)) {
        DropName(NameOf(handle), cells);
        static_cast<Container&>(node).SetName(name);
        return true;
    }
    if (IsCounted(name) || node.shortLength == kExtended) {
        return false;
    }
    node.nameSlot = SlotOf(name);
    return true;
}

}  // namespace

JSONNode::JSONNode(char type) : handle_(MakeUnnamed(type)) {}

JSONNode::JSONNode(const json_string& name, const char* value)
    : handle_(MakeNamed(JSON_STRING, name, value != nullptr ? std::string_view(value) : std::string_view())) {
}
JSONNode::JSONNode(const json_string& name, const json_string& value)
    : handle_(MakeNamed(JSON_STRING, name, value)) {}
JSONNode::JSONNode(const json_string& name, bool value)
    : handle_(MakeNamed(JSON_BOOL, name, value ? "true" : "false")) {}

// As numbers the character types are the integers that they are.
JSONNode::JSONNode(const json_string& name, char value) : handle_(MakeNumber(name, int{value})) {}
JSONNode::JSONNode(const json_string& name, signed char value) : handle_(MakeNumber(name, int{value})) {}
JSONNode::JSONNode(const json_string& name, unsigned char value) : handle_(MakeNumber(name, int{value})) {}
JSONNode::JSONNode(const json_string& name, short value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned short value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, int value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned int value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, long value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned long value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, long long value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, unsigned long long value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, float value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, double value) : handle_(MakeNumber(name, value)) {}
JSONNode::JSONNode(const json_string& name, long double value)
    : handle_(MakeNumber(name, static_cast<double>(value))) {}

JSONNode::JSONNode(const JSONNode& other) noexcept : handle_(Share(other.handle_)) {}

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
    if (!IsPacked(handle_) && --NodeOf(handle_)->references == 0) {
        Cells cells;
        Release(NodeOf(handle_), cells);
    }
}

void JSONNode::swap(JSONNode& other) noexcept {
    std::swap(handle_, other.handle_);
}

unsigned char JSONNode::type() const noexcept {
    return static_cast<unsigned char>(TypeOf(handle_));
}

json_string JSONNode::name() const {
    return json_string(TextOf(NameOf(handle_)));
}

void JSONNode::set_name(const json_string& name) {
    if (std::string_view(name) == TextOf(NameOf(handle_))) {
        return;
    }
    Cells cells;
    HeldName held(AcquireName(name, cells), cells);
    if (!RenameInPlace(handle_, held.Get(), cells)) {
        const Handle renamed = CopyAs(TypeOf(handle_), *this, held.Get(), cells);
        Drop(handle_, cells);
        handle_ = renamed;
    }
    held.PassOn();
}

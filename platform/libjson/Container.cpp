// Nodes as lists of children.

#include <cstring>
#include <span>
#include <stdexcept>
#include <string_view>

#include "Node.h"
#include "libjson.h"

using namespace libjson::detail;

namespace {

/// The position of the first child with that name, or the number of children.
std::uint32_t PositionOf(const JSONNode& node, std::string_view name) noexcept {
    const Children children = ChildrenOf(node);
    for (std::uint32_t position = 0; position < children.count; ++position) {
        if (TextOf(NameOf(children.first[position])) == name) {
            return position;
        }
    }
    return children.count;
}

/// Returns the position if the node has a child there.
std::uint32_t CheckedPosition(const JSONNode& node, std::uint32_t position) {
    if (position >= ChildrenOf(node).count) {
        throw std::out_of_range("a node has no child at this position");
    }
    return position;
}

std::uint32_t CheckedPositionOf(const JSONNode& node, std::string_view name) {
    const std::uint32_t position = PositionOf(node, name);
    if (position == ChildrenOf(node).count) {
        throw std::out_of_range("a node has no child with this name");
    }
    return position;
}

}  // namespace

json_index_t JSONNode::size() const noexcept {
    return ChildrenOf(*this).count;
}

void JSONNode::clear() {
    if (size() == 0) {
        return;
    }
    Cells cells;
    HeldName name(ShareName(NameOf(handle_)), cells);
    const Handle cleared = MakeEmpty(TypeOf(handle_), name.Get(), cells);
    name.PassOn();
    Drop(handle_, cells);
    handle_ = cleared;
}

void JSONNode::reserve(json_index_t capacity) {
    if (IsContainer(*this)) {
        Cells cells;
        OwnContainer(*this, capacity, cells);
    }
}

void JSONNode::push_back(const JSONNode& child) {
    if (!IsContainer(*this)) {
        return;
    }
    Cells cells;
    // Held before anything else: the child may be in the list that grows, or be this node itself.
    HeldNode held(Share(child.handle_), cells);
    AppendChild(*this, held.Get(), cells);
    held.PassOn();
}

JSONNode JSONNode::pop_back(json_index_t position) {
    CheckedPosition(*this, position);
    Cells cells;
    Container& container = OwnContainer(*this, 0, cells);
    JSONNode* const children = container.Children();
    const Handle removed = children[position].handle_;
    --container.count;
    std::memmove(static_cast<void*>(children + position), static_cast<const void*>(children + position + 1),
                 (container.count - position) * sizeof(JSONNode));
    return JSONNode(removed);
}

JSONNode JSONNode::pop_back(const json_string& name) {
    return pop_back(CheckedPositionOf(*this, name));
}

JSONNode::iterator JSONNode::begin() {
    if (size() == 0) {
        return nullptr;
    }
    Cells cells;
    return OwnContainer(*this, 0, cells).Children();
}

JSONNode::iterator JSONNode::end() {
    return begin() + size();
}

JSONNode::const_iterator JSONNode::begin() const noexcept {
    return ChildrenOf(*this).first;
}

JSONNode::const_iterator JSONNode::end() const noexcept {
    return begin() + size();
}

JSONNode::iterator JSONNode::find(const json_string& name) {
    return begin() + PositionOf(*this, name);
}
JSONNode::iterator JSONNode::find(const char* name) {
    return begin() + PositionOf(*this, name);
}

JSONNode::const_iterator JSONNode::find(const json_string& name) const noexcept {
    return begin() + PositionOf(*this, name);
}
JSONNode::const_iterator JSONNode::find(const char* name) const noexcept {
    return begin() + PositionOf(*this, name);
}

JSONNode& JSONNode::at(json_index_t position) {
    CheckedPosition(*this, position);
    return begin()[position];
}

const JSONNode& JSONNode::at(json_index_t position) const {
    return begin()[CheckedPosition(*this, position)];
}

JSONNode& JSONNode::at(const json_string& name) {
    return at(CheckedPositionOf(*this, name));
}
const JSONNode& JSONNode::at(const json_string& name) const {
    return begin()[CheckedPositionOf(*this, name)];
}

JSONNode JSONNode::as_array() const {
    if (TypeOf(handle_) != JSON_NODE) {
        return TypeOf(handle_) == JSON_ARRAY ? *this : JSONNode(JSON_ARRAY);
    }
    Cells cells;
    JSONNode array(CopyAs(JSON_ARRAY, *this, ShareName(NameOf(handle_)), cells));
    const Children children = ChildrenOf(array);
    for (JSONNode& child : std::span(const_cast<JSONNode*>(children.first), children.count)) {
        if (NameOf(child) != nullptr) {
            child = JSONNode(CopyAs(TypeOf(child), child, nullptr, cells));
        }
    }
    return array;
}

JSONNode JSONNode::as_node() const {
    if (TypeOf(handle_) != JSON_ARRAY) {
        return TypeOf(handle_) == JSON_NODE ? *this : JSONNode(JSON_NODE);
    }
    Cells cells;
    return JSONNode(CopyAs(JSON_NODE, *this, ShareName(NameOf(handle_)), cells));
}

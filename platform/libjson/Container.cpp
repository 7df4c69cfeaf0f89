// Nodes as lists of children.

#include <cstring>
#include <stdexcept>
#include <string_view>

#include "Node.h"
#include "libjson.h"

using namespace libjson::detail;

namespace {

/// The node's own list of children, for changes; null where the node has none.
Container* OwnChildren(JSONNode& node, Cells& cells) {
    if (!IsContainer(Read(node))) {
        return nullptr;
    }
    return static_cast<Container*>(&MakeUnique(node, cells));
}

/// The number of children for a node of any type.
std::uint32_t CountOf(const Node& node) noexcept {
    return IsContainer(node) ? ChildrenOf(node).count : 0;
}

/// The position of the first child with that name, or the number of children.
std::uint32_t PositionOf(const Node& node, std::string_view name) noexcept {
    const std::uint32_t count = CountOf(node);
    if (count == 0) {
        return 0;
    }
    const JSONNode* const children = ChildrenOf(node).children;
    for (std::uint32_t position = 0; position < count; ++position) {
        if (TextOf(Read(children[position]).name) == name) {
            return position;
        }
    }
    return count;
}

/// Returns the position if the node has a child there.
std::uint32_t CheckedPosition(const Node& node, std::uint32_t position) {
    if (position >= CountOf(node)) {
        throw std::out_of_range("a node has no child at this position");
    }
    return position;
}

std::uint32_t CheckedPositionOf(const Node& node, std::string_view name) {
    const std::uint32_t position = PositionOf(node, name);
    if (position == CountOf(node)) {
        throw std::out_of_range("a node has no child with this name");
    }
    return position;
}

}  // namespace

json_index_t JSONNode::size() const noexcept {
    return CountOf(Read(*this));
}

void JSONNode::clear() {
    if (size() == 0) {
        return;
    }
    Cells cells;
    const Node& node = Read(*this);
    Node* const cleared = MakeContainer(node.type, node.name, 0, cells);
    ShareName(node.name);
    Drop(node_, cells);
    node_ = cleared;
}

void JSONNode::reserve(json_index_t capacity) {
    Cells cells;
    if (Container* const container = OwnChildren(*this, cells)) {
        ReserveChildren(*container, capacity, cells);
    }
}

void JSONNode::push_back(const JSONNode& child) {
    Cells cells;
    // Held before anything else: the child may be in the list that grows, or be this node itself.
    HeldNode held(Share(NodeAccess::Pointer(child)), cells);
    if (Container* const container = OwnChildren(*this, cells)) {
        AppendChild(*container, held.Get(), cells);
        held.PassOn();
    }
}

JSONNode JSONNode::pop_back(json_index_t position) {
    CheckedPosition(Read(*this), position);
    Cells cells;
    Container& container = *OwnChildren(*this, cells);
    JSONNode* const children = container.children;
    Node* const removed = NodeAccess::Pointer(children[position]);
    --container.count;
    std::memmove(static_cast<void*>(children + position), static_cast<const void*>(children + position + 1),
                 (container.count - position) * sizeof(JSONNode));
    return JSONNode(removed);
}

JSONNode JSONNode::pop_back(const json_string& name) {
    return pop_back(CheckedPositionOf(Read(*this), name));
}

JSONNode::iterator JSONNode::begin() {
    Cells cells;
    Container* const container = OwnChildren(*this, cells);
    return container != nullptr ? container->children : nullptr;
}

JSONNode::iterator JSONNode::end() {
    return begin() + size();
}

JSONNode::const_iterator JSONNode::begin() const noexcept {
    const Node& node = Read(*this);
    return IsContainer(node) ? ChildrenOf(node).children : nullptr;
}

JSONNode::const_iterator JSONNode::end() const noexcept {
    return begin() + size();
}

JSONNode::iterator JSONNode::find(const json_string& name) {
    return begin() + PositionOf(Read(*this), name);
}
JSONNode::iterator JSONNode::find(const char* name) {
    return begin() + PositionOf(Read(*this), name);
}

JSONNode::const_iterator JSONNode::find(const json_string& name) const noexcept {
    return begin() + PositionOf(Read(*this), name);
}
JSONNode::const_iterator JSONNode::find(const char* name) const noexcept {
    return begin() + PositionOf(Read(*this), name);
}

JSONNode& JSONNode::at(json_index_t position) {
    CheckedPosition(Read(*this), position);
    return begin()[position];
}

const JSONNode& JSONNode::at(json_index_t position) const {
    return begin()[CheckedPosition(Read(*this), position)];
}

JSONNode& JSONNode::at(const json_string& name) {
    return at(CheckedPositionOf(Read(*this), name));
}
const JSONNode& JSONNode::at(const json_string& name) const {
    return begin()[CheckedPositionOf(Read(*this), name)];
}

JSONNode JSONNode::as_array() const {
    const Node& node = Read(*this);
    if (node.type != JSON_NODE) {
        return node.type == JSON_ARRAY ? *this : JSONNode(JSON_ARRAY);
    }
    Cells cells;
    const Container& source = ChildrenOf(node);
    Container* const array = MakeContainer(JSON_ARRAY, source.name, source.count, cells);
    ShareName(source.name);
    JSONNode result(array);
    for (std::uint32_t index = 0; index < source.count; ++index) {
        Node* const child = NodeAccess::Pointer(source.children[index]);
        const bool named = child != nullptr && child->name != nullptr;
        Node* const element = named ? CopyUnderName(*child, nullptr, cells) : Share(child);
        NodeAccess::AdoptAt(array->children + index, element);
        array->count = index + 1;
    }
    return result;
}

JSONNode JSONNode::as_node() const {
    const Node& node = Read(*this);
    if (node.type != JSON_ARRAY) {
        return node.type == JSON_NODE ? *this : JSONNode(JSON_NODE);
    }
    Cells cells;
    Node* const object = CopyUnderName(node, node.name, cells);
    ShareName(object->name);
    object->type = JSON_NODE;
    return JSONNode(object);
}

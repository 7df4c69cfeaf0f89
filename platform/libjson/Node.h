#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>

#include "Names.h"
#include "Pool.h"
#include "libjson.h"

namespace libjson::detail {

/// What every node starts with. A null, string, number or boolean continues with its text (as it was read,
/// digits and words included), followed by room up to whole blocks; a long text has a block of its own, and
/// the node continues as LongText. An array or object continues as Container.
/// Measured: where every text has a block of its own, reading takes 1.62 times as long and duplicating 1.8
/// times (bench-json, 1,111 objects, gcc 12).
struct Node {
    std::uint32_t references;
    char type;
    CellClass cellClass;
    /// The length of the text in the node, or kHasLongText.
    std::uint16_t shortLength;
    union {
        Name* name;
        /// Of a container that is being released: the next one that waits for it.
        Node* nextReleased;
    };
};

inline constexpr std::size_t kLongestShortText = kLargestCell - sizeof(Node);
inline constexpr std::uint16_t kHasLongText = 0xFFFF;

struct LongText : Node {
    char* text;
    std::size_t length;
};

/// Lists of children have a capacity that fills a cell, or a block of their own beyond the largest cell.
struct Container : Node {
    JSONNode* children;
    std::uint32_t count;
    std::uint32_t capacity;
};

static_assert(sizeof(JSONNode) == sizeof(void*));
static_assert(sizeof(Node) % kCellStep == 0, "texts start at whole blocks");
static_assert(sizeof(LongText) <= 48 && sizeof(Container) <= 48);
static_assert(kLongestShortText < kHasLongText);

inline bool IsContainerType(char type) noexcept {
    return type == JSON_ARRAY || type == JSON_NODE;
}
inline bool IsContainer(const Node& node) noexcept {
    return IsContainerType(node.type);
}

/// What a null handle means.
inline constexpr Container kEmptyObject{{1, JSON_NODE, 0, 0, {nullptr}}, nullptr, 0, 0};

/// The way between handles and nodes.
struct NodeAccess {
    static const Node& Read(const JSONNode& handle) noexcept {
        return handle.node_ != nullptr ? *handle.node_ : static_cast<const Node&>(kEmptyObject);
    }
    static Node*& Pointer(JSONNode& handle) noexcept { return handle.node_; }
    static Node* Pointer(const JSONNode& handle) noexcept { return handle.node_; }
    /// A handle that takes one reference over.
    static JSONNode Adopt(Node* node) noexcept { return JSONNode(node); }
    static void AdoptAt(JSONNode* place, Node* node) noexcept { new (place) JSONNode(node); }
};

inline const Node& Read(const JSONNode& handle) noexcept {
    return NodeAccess::Read(handle);
}

/// The text of a node that is not a container, readable up to whole blocks.
inline std::string_view TextOf(const Node& node) noexcept {
    if (node.shortLength == kHasLongText) {
        const auto& longText = static_cast<const LongText&>(node);
        return {longText.text, longText.length};
    }
    return {reinterpret_cast<const char*>(&node + 1), node.shortLength};
}

/// The children of an array or object.
inline const Container& ChildrenOf(const Node& node) noexcept {
    return static_cast<const Container&>(node);
}

/// A node with one reference. The reference to the name is taken over, unless std::bad_alloc is thrown.
Node* MakeText(char type, Name* name, std::string_view text, Cells& cells);

/// Likewise, with room for a number of children.
Container* MakeContainer(char type, Name* name, std::uint32_t capacity, Cells& cells);

/// A copy of the node, with one reference, under a name; its children are shared. The reference to the name
/// is taken over, unless std::bad_alloc is thrown.
Node* CopyUnderName(const Node& node, Name* name, Cells& cells);

/// One more reference to the node, which may be null.
inline Node* Share(Node* node) noexcept {
    if (node != nullptr) {
        ++node->references;
    }
    return node;
}

/// Frees a node whose last reference is gone, and all that was held by it alone.
void Release(Node* node, Cells& cells) noexcept;

/// Gives a reference back; null is ignored.
inline void Drop(Node* node, Cells& cells) noexcept {
    if (node != nullptr && --node->references == 0) {
        Release(node, cells);
    }
}

/// The handle's own node: a copy of the node that shares its children, where others hold the node too. The
/// handle is changed only once everything has succeeded.
Node& MakeUnique(JSONNode& handle, Cells& cells);

/// Makes room for that many children altogether. Throws std::bad_alloc, and then changes nothing.
void ReserveChildren(Container& container, std::uint32_t capacity, Cells& cells);

/// Appends the child and takes the reference over, unless std::bad_alloc or std::length_error is thrown.
void AppendChild(Container& container, Node* child, Cells& cells);

/// Makes the nodes the children of a container that has none yet and takes the references over, unless
/// std::bad_alloc or std::length_error is thrown.
void AdoptChildren(Container& container, Node* const* children, std::size_t count, Cells& cells);

/// Holds one reference to a node until it is passed on.
class HeldNode {
public:
    HeldNode(Node* node, Cells& cells) noexcept : node_(node), cells_(cells) {}
    ~HeldNode() { Drop(node_, cells_); }
    HeldNode(const HeldNode&) = delete;
    HeldNode& operator=(const HeldNode&) = delete;
    Node* Get() const noexcept { return node_; }
    Node* PassOn() noexcept {
        Node* const node = node_;
        node_ = nullptr;
        return node;
    }

private:
    Node* node_;
    Cells& cells_;
};

/// Holds one reference to a name until it is passed on.
class HeldName {
public:
    HeldName(Name* name, Cells& cells) noexcept : name_(name), cells_(cells) {}
    ~HeldName() { DropName(name_, cells_); }
    HeldName(const HeldName&) = delete;
    HeldName& operator=(const HeldName&) = delete;
    Name* Get() const noexcept { return name_; }
    Name* PassOn() noexcept {
        Name* const name = name_;
        name_ = nullptr;
        return name;
    }

private:
    Name* name_;
    Cells& cells_;
};

}  // namespace libjson::detail

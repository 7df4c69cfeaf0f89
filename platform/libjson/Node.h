#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>

#include "Names.h"
#include "Pool.h"
#include "libjson.h"

namespace libjson::detail {

// A handle is a pointer to a node, or it is the node itself: packed. A third of the nodes of a document are
// empty or a few characters long, and need no memory but their handle.
// Measured: with pointers for all texts, reading and releasing take 1.13 times as long and 1.2 times the
// memory (10,000 objects, gcc 12).

/// What every node in memory starts with: a null, string, number or boolean, whose text (as it was read,
/// digits and words included) follows, or an array or object, which continues as Container.
struct Node {
    std::uint32_t references;
    char type;
    /// The length of the text that follows; or kExtended.
    std::uint8_t shortLength;
    /// Of the lasting name.
    std::uint16_t nameSlot;
};

/// Of a text: the node continues as ExtendedText. Of a container: its name is a counted one.
inline constexpr std::uint8_t kExtended = 0xFF;
inline constexpr std::size_t kLongestShortText = 256 - sizeof(Node);

/// A text that is long or has a counted name. Its characters are in memory of their own.
struct ExtendedText : Node {
    Name* name;
    char* text;
    std::size_t length;
};

/// A container is followed by its children, and fills a cell, or a block of its own beyond the largest cell.
struct Container : Node {
    std::uint32_t count;
    /// How many children there is room for.
    std::uint32_t capacity;

    /// Of a name that is not a lasting one. It has its place in every container, so that children stay where
    /// they are when the name changes.
    Name* countedName;

    bool HasCountedName() const noexcept { return shortLength == kExtended; }
    void SetName(Name* name) noexcept {
        shortLength = IsCounted(name) ? kExtended : std::uint8_t{0};
        nameSlot = SlotOf(name);
        countedName = name;
    }
    JSONNode* Children() noexcept { return reinterpret_cast<JSONNode*>(this + 1); }
    const JSONNode* Children() const noexcept { return const_cast<Container*>(this)->Children(); }
};

static_assert(sizeof(JSONNode) == sizeof(void*) && sizeof(JSONNode) == sizeof(Handle));
static_assert(sizeof(Node) == 8 && sizeof(Container) == 24 && sizeof(ExtendedText) == 2 * kCellStep);
static_assert(kLongestShortText < kExtended);
static_assert(std::endian::native == std::endian::little,
              "the text of a packed node is the end of its handle");

inline bool IsContainerType(char type) noexcept {
    return type == JSON_ARRAY || type == JSON_NODE;
}

/// The way between JSONNode and what it holds.
struct NodeAccess {
    static Handle& Of(JSONNode& node) noexcept { return node.handle_; }
    static Handle Of(const JSONNode& node) noexcept { return node.handle_; }
    /// A node that takes one reference over.
    static JSONNode Adopt(Handle handle) noexcept { return JSONNode(handle); }
    static void AdoptAt(JSONNode* place, Handle handle) noexcept { new (place) JSONNode(handle); }
};

// A packed node, from the lowest bit on: 1, the type (3 bits), the length of the text (4), the slot of the
// name (16), the text (5 bytes).
inline constexpr std::size_t kLongestPackedText = 5;
inline constexpr std::size_t kPackedTextAt = sizeof(Handle) - kLongestPackedText;

inline bool IsPacked(Handle handle) noexcept {
    return (handle.bits & 1) != 0;
}
inline bool IsPacked(const JSONNode& node) noexcept {
    return IsPacked(NodeAccess::Of(node));
}

/// The text of a packed node, followed by zeros.
inline std::uint64_t LoadPackedText(const char* text, std::size_t length) noexcept {
    const auto byte = [text](std::size_t at) {
        return std::uint64_t{static_cast<unsigned char>(text[at])} << (8 * at);
    };
    if (length >= 4) {
        std::uint32_t first = 0;
        std::memcpy(&first, text, sizeof(first));
        return first | byte(length - 1);
    }
    return length == 0 ? 0 : byte(0) | byte(length / 2) | byte(length - 1);
}

/// A packed node; characters beyond the length must be 0.
constexpr Handle Pack(char type, std::uint16_t nameSlot, std::uint64_t characters = 0,
                      std::size_t length = 0) noexcept {
    return {1U | static_cast<std::uint64_t>(type) << 1 | static_cast<std::uint64_t>(length) << 4 |
            static_cast<std::uint64_t>(nameSlot) << 8 | characters << 24};
}
static_assert(Pack(JSON_NODE, 0).bits == Handle().bits);

/// The packed node under another name.
constexpr Handle WithNameSlot(Handle packed, std::uint16_t nameSlot) noexcept {
    return {(packed.bits & ~std::uint64_t{0xFFFF00}) | static_cast<std::uint64_t>(nameSlot) << 8};
}

inline Node* NodeOf(Handle handle) noexcept {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): what is not packed is a pointer.
    return reinterpret_cast<Node*>(handle.bits);
}
inline const Node& NodeOf(const JSONNode& node) noexcept {
    return *NodeOf(NodeAccess::Of(node));
}
inline Handle HandleOf(const Node* node) noexcept {
    return {reinterpret_cast<std::uintptr_t>(node)};
}

inline char TypeOf(Handle handle) noexcept {
    return IsPacked(handle) ? static_cast<char>(handle.bits >> 1 & 7) : NodeOf(handle)->type;
}
inline char TypeOf(const JSONNode& node) noexcept {
    return TypeOf(NodeAccess::Of(node));
}
inline bool IsContainer(const JSONNode& node) noexcept {
    return IsContainerType(TypeOf(node));
}

/// The name of an extended node.
inline Name* ExtendedNameOf(const Node& node) noexcept {
    return IsContainerType(node.type) ? static_cast<const Container&>(node).countedName
                                      : static_cast<const ExtendedText&>(node).name;
}

inline bool IsExtended(const JSONNode& node) noexcept {
    return !IsPacked(node) && NodeOf(node).shortLength == kExtended;
}

inline Name* NameOf(Handle handle) noexcept {
    if (IsPacked(handle)) {
        return LastingName(static_cast<std::uint16_t>(handle.bits >> 8 & 0xFFFF));
    }
    const Node& node = *NodeOf(handle);
    return node.shortLength == kExtended ? ExtendedNameOf(node) : LastingName(node.nameSlot);
}
inline Name* NameOf(const JSONNode& node) noexcept {
    return NameOf(NodeAccess::Of(node));
}

/// The text of a node that is not a container. All of each block of kBlock characters, counted from address
/// 0, that a character of the text is in can be read.
inline std::string_view TextOf(const JSONNode& handle) noexcept {
    if (IsPacked(handle)) {
        return {reinterpret_cast<const char*>(&handle) + kPackedTextAt,
                NodeAccess::Of(handle).bits >> 4 & 0xF};
    }
    const Node& node = NodeOf(handle);
    if (node.shortLength == kExtended) {
        const auto& extended = static_cast<const ExtendedText&>(node);
        return {extended.text, extended.length};
    }
    return {reinterpret_cast<const char*>(&node + 1), node.shortLength};
}

/// The children of a node; types without children have none.
struct Children {
    const JSONNode* first;
    std::uint32_t count;
};
inline Children ChildrenOf(const JSONNode& handle) noexcept {
    if (IsPacked(handle) || !IsContainer(handle)) {
        return {nullptr, 0};
    }
    const auto& container = static_cast<const Container&>(NodeOf(handle));
    return {container.Children(), container.count};
}

/// Copies the text of a short node that is not packed without a call: the two copies overlap.
/// Measured: with a call, duplicating takes 1.27 times as long (10,000 objects, gcc 12).
inline void CopyShortText(char* to, const char* from, std::size_t length) noexcept {
    const auto copyTwice = [&](std::size_t bytes) {
        std::memcpy(to + length - bytes, from + length - bytes, bytes);
        std::memcpy(to, from, bytes);
    };
    if (length <= 8) {
        copyTwice(4);
    } else if (length <= 16) {
        copyTwice(8);
    } else if (length <= 32) {
        copyTwice(16);
    } else {
        std::memcpy(to, from, length);
    }
}

/// A node with one reference. The reference to the name is taken over, unless std::bad_alloc is thrown.
Handle MakeExtendedText(char type, Name* name, std::string_view text, Cells& cells);
inline Handle MakeText(char type, Name* name, std::string_view text, Cells& cells) {
    if (text.size() > kLongestShortText || IsCounted(name)) {
        return MakeExtendedText(type, name, text, cells);
    }
    if (text.size() <= kLongestPackedText) {
        return Pack(type, SlotOf(name), LoadPackedText(text.data(), text.size()), text.size());
    }
    Node* const node = new (cells.Allocate(CellClassFor(sizeof(Node) + text.size())))
        Node{1, type, static_cast<std::uint8_t>(text.size()), SlotOf(name)};
    CopyShortText(reinterpret_cast<char*>(node + 1), text.data(), text.size());
    return HandleOf(node);
}

/// Likewise an array or object without children.
Handle MakeEmpty(char type, Name* name, Cells& cells);

/// Likewise, with room for a number of children. Throws std::length_error for too many.
Container* MakeContainer(char type, Name* name, std::size_t capacity, Cells& cells);

/// A copy of the node under a name, with one reference, as a node of another type if it is a container; its
/// children are shared. The reference to the name is taken over, unless std::bad_alloc is thrown.
Handle CopyAs(char type, const JSONNode& node, Name* name, Cells& cells);

/// One more reference to the node.
inline Handle Share(Handle handle) noexcept {
    if (!IsPacked(handle)) {
        ++NodeOf(handle)->references;
    }
    return handle;
}

/// Frees a node whose last reference is gone, and all that was held by it alone.
void Release(Node* node, Cells& cells) noexcept;

/// Gives a reference back.
inline void Drop(Handle handle, Cells& cells) noexcept {
    if (!IsPacked(handle) && --NodeOf(handle)->references == 0) {
        Release(NodeOf(handle), cells);
    }
}

/// The array or object's own node, with room for that many children altogether: its present one, or one that
/// shares the children, where others hold it too or it is too small. Throws std::bad_alloc or
/// std::length_error, and then changes nothing.
Container& OwnContainer(JSONNode& node, std::size_t capacity, Cells& cells);

/// Appends the child to an array or object and takes the reference over, unless something is thrown.
void AppendChild(JSONNode& node, Handle child, Cells& cells);

/// Holds one reference to a node until it is passed on.
class HeldNode {
public:
    HeldNode(Handle handle, Cells& cells) noexcept : handle_(handle), cells_(cells) {}
    ~HeldNode() { Drop(handle_, cells_); }
    HeldNode(const HeldNode&) = delete;
    HeldNode& operator=(const HeldNode&) = delete;
    Handle Get() const noexcept { return handle_; }
    Handle PassOn() noexcept {
        const Handle handle = handle_;
        handle_ = {};
        return handle;
    }

private:
    Handle handle_;
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

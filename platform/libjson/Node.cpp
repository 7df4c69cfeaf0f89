#include "Node.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "Blocks.h"
#include "PlainRun.h"

namespace libjson::detail {
namespace {

constexpr std::uint32_t kMostChildren = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t kMostChildrenInCell = kLargestCell / sizeof(JSONNode);
constexpr std::uint32_t kFirstCapacity = 4;

struct ChildList {
    JSONNode* children;
    std::uint32_t capacity;
};

ChildList AllocateChildren(std::uint32_t capacity, Cells& cells) {
    const std::size_t bytes = capacity * sizeof(JSONNode);
    if (capacity > kMostChildrenInCell) {
        return {static_cast<JSONNode*>(AllocateBlock(bytes)), capacity};
    }
    const CellClass cellClass = CellClassFor(bytes);
    return {static_cast<JSONNode*>(cells.Allocate(cellClass)),
            static_cast<std::uint32_t>(kCellSizes[cellClass] / sizeof(JSONNode))};
}

void FreeChildren(const Container& container, Cells& cells) noexcept {
    if (container.capacity > kMostChildrenInCell) {
        FreeBlock(container.children);
    } else if (container.capacity > 0) {
        cells.Free(container.children, CellClassFor(container.capacity * sizeof(JSONNode)));
    }
}

void FreeLeaf(Node* node, Cells& cells) noexcept {
    DropName(node->name, cells);
    if (node->shortLength == kHasLongText) {
        FreeBlock(static_cast<LongText*>(node)->text);
    }
    cells.Free(node, node->cellClass);
}

[[noreturn]] void FailForTooManyChildren() {
    throw std::length_error("a node has no room for more children");
}

/// The text with zeros after it up to whole blocks.
void CopyText(char* to, std::string_view text) noexcept {
    if (!text.empty()) {
        std::memset(to + WholeBlocks(text.size()) - kBlock, 0, kBlock);
        std::memcpy(to, text.data(), text.size());
    }
}

Node* MakeLongText(char type, Name* name, std::string_view text, Cells& cells) {
    if (text.size() > std::numeric_limits<std::size_t>::max() - kBlock) {
        throw std::bad_alloc();
    }
    char* const characters = static_cast<char*>(AllocateBlock(WholeBlocks(text.size())));
    CopyText(characters, text);
    constexpr CellClass kClass = CellClassFor(sizeof(LongText));
    void* memory = nullptr;
    try {
        memory = cells.Allocate(kClass);
    } catch (...) {
        FreeBlock(characters);
        throw;
    }
    return new (memory) LongText{{1, type, kClass, kHasLongText, {name}}, characters, text.size()};
}

}  // namespace

Node* MakeText(char type, Name* name, std::string_view text, Cells& cells) {
    if (text.size() > kLongestShortText) {
        return MakeLongText(type, name, text, cells);
    }
    const CellClass cellClass = CellClassFor(sizeof(Node) + WholeBlocks(text.size()));
    Node* const node = new (cells.Allocate(cellClass))
        Node{1, type, cellClass, static_cast<std::uint16_t>(text.size()), {name}};
    CopyText(reinterpret_cast<char*>(node + 1), text);
    return node;
}

Container* MakeContainer(char type, Name* name, std::uint32_t capacity, Cells& cells) {
    constexpr CellClass kClass = CellClassFor(sizeof(Container));
    auto* const container =
        new (cells.Allocate(kClass)) Container{{1, type, kClass, 0, {name}}, nullptr, 0, 0};
    if (capacity > 0) {
        try {
            ReserveChildren(*container, capacity, cells);
        } catch (...) {
            cells.Free(container, kClass);
            throw;
        }
    }
    return container;
}

Node* CopyUnderName(const Node& node, Name* name, Cells& cells) {
    if (!IsContainer(node)) {
        return MakeText(node.type, name, TextOf(node), cells);
    }
    const Container& source = ChildrenOf(node);
    Container* const copy = MakeContainer(source.type, name, source.count, cells);
    for (std::uint32_t index = 0; index < source.count; ++index) {
        NodeAccess::AdoptAt(copy->children + index, Share(NodeAccess::Pointer(source.children[index])));
    }
    copy->count = source.count;
    return copy;
}

void Release(Node* node, Cells& cells) noexcept {
    if (!IsContainer(*node)) {
        FreeLeaf(node, cells);
        return;
    }
    // Containers wait in a list through themselves: neither stack nor memory grows with the depth.
    DropName(node->name, cells);
    node->nextReleased = nullptr;
    while (node != nullptr) {
        auto* const container = static_cast<Container*>(node);
        node = container->nextReleased;
        for (std::uint32_t index = 0; index < container->count; ++index) {
            Node* const child = NodeAccess::Pointer(container->children[index]);
            if (child == nullptr || --child->references > 0) {
                continue;
            }
            if (!IsContainer(*child)) {
                FreeLeaf(child, cells);
                continue;
            }
            DropName(child->name, cells);
            child->nextReleased = node;
            node = child;
        }
        FreeChildren(*container, cells);
        cells.Free(container, container->cellClass);
    }
}

Node& MakeUnique(JSONNode& handle, Cells& cells) {
    Node*& pointer = NodeAccess::Pointer(handle);
    if (pointer == nullptr) {
        pointer = MakeContainer(JSON_NODE, nullptr, 0, cells);
    } else if (pointer->references > 1) {
        Node* const own = CopyUnderName(*pointer, pointer->name, cells);
        ShareName(own->name);
        --pointer->references;
        pointer = own;
    }
    return *pointer;
}

void ReserveChildren(Container& container, std::uint32_t capacity, Cells& cells) {
    if (capacity <= container.capacity) {
        return;
    }
    if (container.capacity > kMostChildrenInCell) {
        container.children =
            static_cast<JSONNode*>(ResizeBlock(container.children, capacity * sizeof(JSONNode)));
        container.capacity = capacity;
        return;
    }
    const ChildList list = AllocateChildren(capacity, cells);
    if (container.count > 0) {
        // Handles are moved as the pointers that they are: nothing refers to their place.
        std::memcpy(static_cast<void*>(list.children), static_cast<const void*>(container.children),
                    container.count * sizeof(JSONNode));
    }
    FreeChildren(container, cells);
    container.children = list.children;
    container.capacity = list.capacity;
}

void AppendChild(Container& container, Node* child, Cells& cells) {
    if (container.count == container.capacity) {
        if (container.count == kMostChildren) {
            FailForTooManyChildren();
        }
        const std::uint32_t doubled =
            container.capacity > kMostChildren / 2 ? kMostChildren : container.capacity * 2;
        ReserveChildren(container, std::max(doubled, kFirstCapacity), cells);
    }
    NodeAccess::AdoptAt(container.children + container.count, child);
    ++container.count;
}

void AdoptChildren(Container& container, Node* const* children, std::size_t count, Cells& cells) {
    if (count > kMostChildren) {
        FailForTooManyChildren();
    }
    ReserveChildren(container, static_cast<std::uint32_t>(count), cells);
    for (std::size_t index = 0; index < count; ++index) {
        NodeAccess::AdoptAt(container.children + index, children[index]);
    }
    container.count = static_cast<std::uint32_t>(count);
}

}  // namespace libjson::detail

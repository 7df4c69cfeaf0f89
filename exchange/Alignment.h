#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "CarriedTree.h"

namespace korvane::exchange {

/// Which node of the first tree is which of the second.
///
/// The roots are. Then come nodes whose key occurs once in each tree, objects and file records apart. Below
/// nodes that are aligned, what is left is aligned by kind and name, equal siblings in their order, and then
/// by position: in its order among those of its kind behind the same aligned sibling, else before the same
/// one, unless both have a key and not the same, because two objects with other keys and other names are two
/// objects. Records are aligned by key among those of their owner, by name and file type, by name alone, and
/// by position. The work grows as n log n.
class Alignment {
public:
    /// The trees must live longer. `onNode` is called for each node of the second.
    Alignment(const CarriedTree& first, const CarriedTree& second, const std::function<void()>& onNode);

    /// The node of the first tree, and that of the second; kNoNode where there is none.
    NodeIndex OfSecond(NodeIndex second) const { return ofSecond_[second]; }
    NodeIndex OfFirst(NodeIndex first) const { return ofFirst_[first]; }
    /// Whether the node of the second, which is aligned, lies below another parent than before.
    bool HasOtherParent(NodeIndex second) const;
    /// Whether it has to be moved to bring its parent's children, or files, into their order. As few as
    /// possible have.
    bool HasOtherPlace(NodeIndex second) const { return hasOtherPlace_[second]; }

    /// The children or files of a node: the first of them, and the next one; kNoNode behind the last.
    NodeIndex FirstBelow(bool inSecond, NodeIndex node, NodePlace place) const;
    NodeIndex NextBelow(bool inSecond, NodeIndex node) const { return (inSecond ? b_ : a_).next[node]; }

    /// What the work has cost so far.
    std::size_t Steps() const { return steps_; }

private:
    struct Siblings {
        explicit Siblings(const CarriedTree& tree);
        std::array<std::vector<NodeIndex>, 2> first;
        std::vector<NodeIndex> next;
        /// Of nodes that are left: the nearest sibling before or behind that is aligned, by its number in the
        /// first tree; kNoNode where there is none.
        std::vector<NodeIndex> neighbour;
    };
    using Nodes = std::vector<NodeIndex>;
    /// What nodes must have in common to be aligned; nodes without it are not aligned.
    struct Group {
        bool isNone = true;
        std::uint64_t value = 0;
        std::uint32_t more = 0;
    };
    struct Grouped {
        std::uint64_t value;
        std::uint32_t more;
        NodeIndex node;
    };
    enum class Equal { kInOrder, kOnlySingle };

    static Group KeyOf(const CarriedNode& node);
    static Group NameOf(const CarriedNode& node);
    void Align(NodeIndex first, NodeIndex second);
    void AlignKeys();
    void AlignBelow(NodeIndex first, NodeIndex second, NodePlace place);
    void AlignRecords();
    void AlignByPosition(NodeIndex first, NodeIndex second, NodePlace place);
    void CollectLeft(NodeIndex first, NodeIndex second, NodePlace place);
    enum class Side { kBefore, kBehind };
    void AlignNextTo(Side side, NodeIndex first, NodeIndex second, NodePlace place);
    void FindNeighbours(Side side, bool inSecond, NodeIndex above, NodePlace place);
    void FindMovedBelow(NodeIndex second, NodePlace place);
    template <typename GroupOfFirst, typename GroupOfSecond>
    void AlignGroups(Equal equal, const GroupOfFirst& ofFirst, const GroupOfSecond& ofSecond);
    template <typename GroupOf>
    void AlignGroups(Equal equal, const GroupOf& groupOf) {
        AlignGroups(equal, groupOf, groupOf);
    }
    template <typename GroupOf>
    void Sort(const CarriedTree& tree, const Nodes& nodes, const GroupOf& groupOf,
              std::vector<Grouped>& sorted);
    void RemoveAligned();

    const CarriedTree& first_;
    const CarriedTree& second_;
    Siblings a_;
    Siblings b_;
    std::vector<NodeIndex> ofFirst_;
    std::vector<NodeIndex> ofSecond_;
    std::vector<bool> hasOtherPlace_;
    /// What is left below the two nodes that are being aligned, and room for sorting.
    Nodes leftOfFirst_;
    Nodes leftOfSecond_;
    std::vector<Grouped> sortedFirst_;
    std::vector<Grouped> sortedSecond_;
    /// The nodes below one of the second tree that hang on the same parent as before, and their partners.
    Nodes ordered_;
    std::vector<std::uint32_t> order_;
    std::size_t steps_ = 0;
};

}  // namespace korvane::exchange

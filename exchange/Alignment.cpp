#include "Alignment.h"

#include <algorithm>
#include <span>
#include <tuple>

#include "IncreasingRun.h"
#include "format/MemberNames.h"

namespace korvane::exchange {
namespace {

constexpr NodePlace kPlaces[] = {NodePlace::Child, NodePlace::FileRecord};

constexpr std::size_t NumberOf(NodePlace place) {
    return place == NodePlace::FileRecord ? 1 : 0;
}

constexpr std::size_t NumberOfFileType() {
    return static_cast<std::size_t>(std::ranges::find(kCarriedFileMembers, format::member::kFileType) -
                                    kCarriedFileMembers.begin());
}

}  // namespace

Alignment::Siblings::Siblings(const CarriedTree& tree) : next(tree.size(), kNoNode), neighbour(tree.size()) {
    for (std::vector<NodeIndex>& firstOfPlace : first) {
        firstOfPlace.assign(tree.size(), kNoNode);
    }
    for (NodeIndex node = tree.size(); node-- > 1;) {
        const CarriedNode& carried = tree.nodes[node];
        NodeIndex& firstBelow = first[NumberOf(carried.place)][carried.parent];
        next[node] = firstBelow;
        firstBelow = node;
    }
}

Alignment::Alignment(const CarriedTree& first, const CarriedTree& second, const std::function<void()>& onNode)
    : first_(first),
      second_(second),
      a_(first),
      b_(second),
      ofFirst_(first.size(), kNoNode),
      ofSecond_(second.size(), kNoNode),
      hasOtherPlace_(second.size(), false) {
    Align(0, 0);
    AlignKeys();
    // A parent comes before its children, so it is aligned by then, if at all.
    for (NodeIndex node = 0; node < second.size(); ++node) {
        onNode();
        for (const NodePlace place : kPlaces) {
            if (ofSecond_[node] != kNoNode) {
                AlignBelow(ofSecond_[node], node, place);
            }
        }
    }
    for (NodeIndex node = 0; node < second.size(); ++node) {
        for (const NodePlace place : kPlaces) {
            if (ofSecond_[node] != kNoNode) {
                FindMovedBelow(node, place);
            }
        }
    }
}

void Alignment::Align(NodeIndex first, NodeIndex second) {
    ofFirst_[first] = second;
    ofSecond_[second] = first;
}

NodeIndex Alignment::FirstBelow(bool inSecond, NodeIndex node, NodePlace place) const {
    return (inSecond ? b_ : a_).first[NumberOf(place)][node];
}

bool Alignment::HasOtherParent(NodeIndex second) const {
    const NodeIndex parent = second_.nodes[second].parent;
    return parent != kNoNode && ofSecond_[parent] != first_.nodes[ofSecond_[second]].parent;
}

Alignment::Group Alignment::KeyOf(const CarriedNode& node) {
    return {node.key == kEmptyText, node.key, static_cast<std::uint32_t>(NumberOf(node.place))};
}

Alignment::Group Alignment::NameOf(const CarriedNode& node) {
    return {!node.hasOwnName, node.name, static_cast<std::uint32_t>(node.kind)};
}

void Alignment::AlignKeys() {
    const auto collect = [](const CarriedTree& tree, Nodes& nodes) {
        for (NodeIndex node = 1; node < tree.size(); ++node) {
            if (tree.nodes[node].key != kEmptyText) {
                nodes.push_back(node);
            }
        }
    };
    collect(first_, leftOfFirst_);
    collect(second_, leftOfSecond_);
    AlignGroups(Equal::kOnlySingle, KeyOf);
    for (Nodes* const nodes : {&leftOfFirst_, &leftOfSecond_}) {
        nodes->clear();
        nodes->shrink_to_fit();
    }
    sortedFirst_ = {};
    sortedSecond_ = {};
}

void Alignment::CollectLeft(NodeIndex first, NodeIndex second, NodePlace place) {
    const auto collect = [&](const Siblings& siblings, NodeIndex above, const Nodes& partners, Nodes& left) {
        left.clear();
        for (NodeIndex node = siblings.first[NumberOf(place)][above]; node != kNoNode;
             node = siblings.next[node]) {
            ++steps_;
            if (partners[node] == kNoNode) {
                left.push_back(node);
            }
        }
    };
    collect(a_, first, ofFirst_, leftOfFirst_);
    collect(b_, second, ofSecond_, leftOfSecond_);
}

void Alignment::AlignBelow(NodeIndex first, NodeIndex second, NodePlace place) {
    CollectLeft(first, second, place);
    if (place == NodePlace::FileRecord) {
        AlignRecords();
    } else {
        AlignGroups(Equal::kInOrder, NameOf);
    }
    AlignByPosition(first, second, place);
}

void Alignment::AlignRecords() {
    AlignGroups(Equal::kOnlySingle, KeyOf);
    const auto nameAndType = [](const CarriedTree& tree) {
        return [&tree](const CarriedNode& node) {
            const TextId type = tree.FileTextsOf(node)[NumberOfFileType()];
            return Group{false, node.name, type};
        };
    };
    AlignGroups(Equal::kInOrder, nameAndType(first_), nameAndType(second_));
    AlignGroups(Equal::kInOrder, NameOf);
}

void Alignment::AlignByPosition(NodeIndex first, NodeIndex second, NodePlace place) {
    AlignNextTo(Side::kBefore, first, second, place);
    AlignNextTo(Side::kBehind, first, second, place);
}

/// Aligns what is left behind the same sibling, or before it.
void Alignment::AlignNextTo(Side side, NodeIndex first, NodeIndex second, NodePlace place) {
    if (leftOfFirst_.empty() || leftOfSecond_.empty()) {
        return;
    }
    FindNeighbours(side, false, first, place);
    FindNeighbours(side, true, second, place);
    const auto next = [](const CarriedTree& tree, const Siblings& siblings, bool hasKey) {
        return [&, hasKey](const CarriedNode& node) {
            const auto index = static_cast<std::size_t>(&node - tree.nodes.data());
            const std::uint64_t neighbour = siblings.neighbour[index];
            return Group{hasKey != (node.key != kEmptyText),
                         neighbour << 32U | static_cast<std::uint32_t>(node.kind), hasKey ? node.key : 0};
        };
    };
    // The same key, which may occur twice, or none.
    AlignGroups(Equal::kInOrder, next(first_, a_, true), next(second_, b_, true));
    AlignGroups(Equal::kInOrder, next(first_, a_, false), next(second_, b_, false));
    // Only one of the two has a key.
    const auto withKey = [](const auto& groupOf) {
        return [groupOf](const CarriedNode& node) {
            Group group = groupOf(node);
            group.more = 0;
            return group;
        };
    };
    AlignGroups(Equal::kInOrder, next(first_, a_, false), withKey(next(second_, b_, true)));
    AlignGroups(Equal::kInOrder, withKey(next(first_, a_, true)), next(second_, b_, false));
}

void Alignment::FindNeighbours(Side side, bool inSecond, NodeIndex above, NodePlace place) {
    Siblings& siblings = inSecond ? b_ : a_;
    ordered_.clear();
    for (NodeIndex node = FirstBelow(inSecond, above, place); node != kNoNode; node = siblings.next[node]) {
        ordered_.push_back(node);
    }
    if (side == Side::kBehind) {
        std::ranges::reverse(ordered_);
    }
    NodeIndex neighbour = kNoNode;
    for (const NodeIndex node : ordered_) {
        ++steps_;
        const NodeIndex partner = inSecond ? ofSecond_[node] : ofFirst_[node];
        if (partner == kNoNode) {
            siblings.neighbour[node] = neighbour;
        } else if (!HasOtherParent(inSecond ? node : partner)) {
            neighbour = inSecond ? partner : node;
        }
    }
}

template <typename GroupOf>
void Alignment::Sort(const CarriedTree& tree, const Nodes& nodes, const GroupOf& groupOf,
                     std::vector<Grouped>& sorted) {
    sorted.clear();
    for (const NodeIndex node : nodes) {
        ++steps_;
        if (const Group group = groupOf(tree.nodes[node]); !group.isNone) {
            sorted.push_back({group.value, group.more, node});
        }
    }
    std::ranges::sort(sorted, [&](const Grouped& left, const Grouped& right) {
        ++steps_;
        return std::tie(left.value, left.more, left.node) < std::tie(right.value, right.more, right.node);
    });
}

/// Aligns nodes that are left and have a group in common, in their order or where each tree has one only.
template <typename GroupOfFirst, typename GroupOfSecond>
void Alignment::AlignGroups(Equal equal, const GroupOfFirst& ofFirst, const GroupOfSecond& ofSecond) {
    if (leftOfFirst_.empty() || leftOfSecond_.empty()) {
        return;
    }
    Sort(first_, leftOfFirst_, ofFirst, sortedFirst_);
    Sort(second_, leftOfSecond_, ofSecond, sortedSecond_);
    const auto groupOf = [](const Grouped& grouped) { return std::tie(grouped.value, grouped.more); };
    const auto lengthOfGroup = [&](const std::vector<Grouped>& sorted, std::size_t begin) {
        const std::span<const Grouped> rest = std::span(sorted).subspan(begin);
        const auto end = std::ranges::find_if(
            rest, [&](const Grouped& other) { return groupOf(other) != groupOf(rest.front()); });
        const auto length = static_cast<std::size_t>(end - rest.begin());
        steps_ += length;
        return length;
    };
    std::size_t a = 0;
    std::size_t b = 0;
    while (a < sortedFirst_.size() && b < sortedSecond_.size()) {
        ++steps_;
        if (groupOf(sortedFirst_[a]) != groupOf(sortedSecond_[b])) {
            ++(groupOf(sortedFirst_[a]) < groupOf(sortedSecond_[b]) ? a : b);
            continue;
        }
        const std::size_t lengthA = lengthOfGroup(sortedFirst_, a);
        const std::size_t lengthB = lengthOfGroup(sortedSecond_, b);
        const bool isTaken = equal == Equal::kInOrder || (lengthA == 1 && lengthB == 1);
        for (std::size_t index = 0; isTaken && index < std::min(lengthA, lengthB); ++index) {
            Align(sortedFirst_[a + index].node, sortedSecond_[b + index].node);
        }
        a += lengthA;
        b += lengthB;
    }
    RemoveAligned();
}

void Alignment::RemoveAligned() {
    std::erase_if(leftOfFirst_, [&](NodeIndex node) { return ofFirst_[node] != kNoNode; });
    std::erase_if(leftOfSecond_, [&](NodeIndex node) { return ofSecond_[node] != kNoNode; });
}

void Alignment::FindMovedBelow(NodeIndex second, NodePlace place) {
    ordered_.clear();
    order_.clear();
    for (NodeIndex node = FirstBelow(true, second, place); node != kNoNode; node = NextBelow(true, node)) {
        ++steps_;
        if (ofSecond_[node] != kNoNode && !HasOtherParent(node)) {
            ordered_.push_back(node);
            order_.push_back(ofSecond_[node]);
        }
    }
    const std::vector<bool> stays = FindLongestIncreasing(order_, steps_);
    for (std::size_t index = 0; index < stays.size(); ++index) {
        hasOtherPlace_[ordered_[index]] = !stays[index];
    }
}

}  // namespace korvane::exchange

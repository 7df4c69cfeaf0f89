#pragma once

#include <libjson.h>

#include <cstddef>
#include <deque>
#include <string_view>
#include <utility>

#include "format/MemberNames.h"

/// Walks over the nodes of documents and answers: the roots and everything that they hold in "children" and
/// "files". A walk keeps its way back on the heap, so nesting needs no stack.
namespace host {

/// Where a node stands in its document.
enum class NodePlace { Root, Child, FileRecord };

/// The member that holds the nodes of a place; a root goes with the children.
constexpr format::MemberName SectionOf(NodePlace place) {
    return place == NodePlace::FileRecord ? format::member::kFiles : format::member::kChildren;
}

/// Which arrays of a node a walk goes into, and in which order. Objects in their place are gone into
/// likewise.
enum class SectionOrder {
    /// Every "children" and "files" in the order of the members: as an import reads them.
    AsWritten,
    /// Every "children", then every "files".
    ChildrenFirst,
    /// The first "children", then the first "files": as an answer is read.
    FirstOfEach,
};

/// What a walk passes at a node.
template <typename Node, typename State>
struct NodeVisit {
    Node& node;
    NodePlace place;
    /// The visitor's own state of this node; it lives until the node is left.
    State& own;
    /// The state of the node that holds this one; null for a root.
    State* above;
};

/// One walk. Use WalkNodes or WalkNodesToChange.
template <typename State, typename Node, typename Enter, typename Leave>
class NodeWalker {
public:
    NodeWalker(SectionOrder order, const Enter& enter, const Leave& leave)
        : order_(order), enter_(enter), leave_(leave) {}

    void Walk(Node& root) {
        EnterNode(root, NodePlace::Root);
        while (!open_.empty()) {
            OpenNode& innermost = open_.back();
            if (Node* const element = NextElement(innermost)) {
                EnterNode(*element, innermost.placeOfElements);
            } else {
                LeaveNode();
            }
        }
    }

private:
    /// A node on the way, and where its walk stands.
    struct OpenNode {
        OpenNode(Node& entered, NodePlace placeOfEntered) : node(entered), place(placeOfEntered) {}
        Node& node;
        NodePlace place;
        State own{};
        /// Sections are looked for once, or once for "children" and once for "files".
        NodePlace placeLookedFor = NodePlace::Child;
        json_index_t nextMember = 0;
        Node* section = nullptr;
        NodePlace placeOfElements = NodePlace::Child;
        json_index_t nextElement = 0;
    };

    State* StateAbove(std::size_t depth) { return depth == 0 ? nullptr : &open_[depth - 1].own; }

    void EnterNode(Node& node, NodePlace place) {
        // The nodes on the way keep their addresses while others come and go behind them.
        OpenNode& entered = open_.emplace_back(node, place);
        if (!enter_(NodeVisit<Node, State>{node, place, entered.own, StateAbove(open_.size() - 1)})) {
            open_.pop_back();
        }
    }

    void LeaveNode() {
        OpenNode& left = open_.back();
        leave_(NodeVisit<Node, State>{left.node, left.place, left.own, StateAbove(open_.size() - 1)});
        open_.pop_back();
    }

    Node* NextElement(OpenNode& open) const {
        while (open.section == nullptr || open.nextElement == open.section->size()) {
            if (!FindSection(open)) {
                return nullptr;
            }
        }
        return &open.section->at(open.nextElement++);
    }

    /// Goes to the node's next section, false where there is none. Only object nodes have members.
    bool FindSection(OpenNode& open) const {
        if (open.node.type() != JSON_NODE) {
            return false;
        }
        while (open.nextMember < open.node.size() || GoOnToFiles(open)) {
            const json_index_t index = open.nextMember++;
            if (IsSection(open, std::as_const(open.node).at(index))) {
                open.section = &open.node.at(index);
                open.nextElement = 0;
                open.nextMember = order_ == SectionOrder::FirstOfEach ? open.node.size() : open.nextMember;
                return true;
            }
        }
        return false;
    }

    /// Begins anew with "files", where the node has members and its "children" are done.
    bool GoOnToFiles(OpenNode& open) const {
        if (order_ == SectionOrder::AsWritten || open.placeLookedFor == NodePlace::FileRecord) {
            return false;
        }
        open.placeLookedFor = NodePlace::FileRecord;
        open.nextMember = 0;
        return !open.node.empty();
    }

    /// Whether the member is a section that is looked for now; its elements are of the place then.
    bool IsSection(OpenNode& open, const JSONNode& member) const {
        const json_string text = member.name();
        const std::string_view name(text.data(), text.size());
        for (const NodePlace place : {NodePlace::Child, NodePlace::FileRecord}) {
            if (SectionOf(place) == name &&
                (order_ == SectionOrder::AsWritten || place == open.placeLookedFor)) {
                open.placeOfElements = place;
                return true;
            }
        }
        return false;
    }

    SectionOrder order_;
    const Enter& enter_;
    const Leave& leave_;
    std::deque<OpenNode> open_;
};

/// The roots of a document or an answer: the elements of an array, or the node itself.
template <typename State, typename Node, typename Enter, typename Leave>
void WalkRoots(Node& root, SectionOrder order, const Enter& enter, const Leave& leave) {
    NodeWalker<State, Node, Enter, Leave> walker(order, enter, leave);
    if (root.type() != JSON_ARRAY) {
        walker.Walk(root);
        return;
    }
    for (json_index_t index = 0; index < root.size(); ++index) {
        walker.Walk(root.at(index));
    }
}

/// Walks over a document or an answer; of one that is an array every element is a root.
///
/// `enter` is called for every node before those that it holds, whatever type it has, and returns whether the
/// walk goes into it. If so, `leave` is called behind those that it holds. Both take a NodeVisit, whose state
/// is made by its default constructor.
template <typename State, typename Enter, typename Leave>
void WalkNodes(const JSONNode& root, SectionOrder order, const Enter& enter, const Leave& leave) {
    WalkRoots<State, const JSONNode>(root, order, enter, leave);
}

/// The state of a visitor that keeps none.
struct NoState {};

/// The same without `leave` and states.
template <typename Enter>
void WalkNodes(const JSONNode& root, SectionOrder order, const Enter& enter) {
    WalkNodes<NoState>(root, order, enter, [](const auto&) {});
}

/// The same for a visitor that changes the node that it enters, and nothing else.
template <typename Enter>
void WalkNodesToChange(JSONNode& root, SectionOrder order, const Enter& enter) {
    WalkRoots<NoState, JSONNode>(root, order, enter, [](const auto&) {});
}

}  // namespace host

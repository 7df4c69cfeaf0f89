#pragma once

#include <libjson.h>

#include <cstddef>
#include <deque>
#include <string_view>
#include <utility>

#include "format/MemberNames.h"

/// Walks over the nodes of documents and answers: the roots, and everything below them in "children" and
/// "files". The way back is kept on the heap, so the depth of nesting needs no stack.
namespace korvane::exchange {

/// The place of a node in its document.
enum class NodePlace { Root, Child, FileRecord };

/// The member that has the nodes of a place. A root counts as a child.
constexpr format::MemberName SectionOf(NodePlace place) {
    return place == NodePlace::FileRecord ? format::member::kFiles : format::member::kChildren;
}

/// Which "children" and "files" of a node a walk goes through, and in which order. An object in the place of
/// the array is gone through in the same way.
enum class SectionOrder {
    /// All of them in the order of the members, as an import reads them.
    AsWritten,
    /// All "children", then all "files".
    ChildrenFirst,
    /// The first "children", then the first "files", as an answer is read.
    FirstOfEach,
};

/// What a visitor gets for a node.
template <typename Node, typename State>
struct NodeVisit {
    Node& node;
    NodePlace place;
    /// The array that the node is an element of, or the object that takes its place; null for a root.
    Node* section;
    /// The node's position there.
    json_index_t position;
    /// The state that the visitor keeps for this node until the walk leaves it.
    State& own;
    /// The state of the node above; null for a root.
    State* above;
};

/// One walk. Use WalkNodes or WalkNodesToChange.
template <typename State, typename Node, typename Enter, typename Leave>
class NodeWalker {
public:
    NodeWalker(SectionOrder order, const Enter& enter, const Leave& leave)
        : order_(order), enter_(enter), leave_(leave) {}

    void Walk(Node& root) {
        EnterNode(root, NodePlace::Root, nullptr, 0);
        while (!open_.empty()) {
            OpenNode& innermost = open_.back();
            if (Node* const element = NextElement(innermost)) {
                EnterNode(*element, innermost.placeOfElements, innermost.section, innermost.nextElement - 1);
            } else {
                LeaveNode();
            }
        }
    }

private:
    /// A node that the walk has entered and not left, and what comes next in it.
    struct OpenNode {
        OpenNode(Node& entered, NodePlace placeOfEntered, Node* sectionOfEntered, json_index_t positionThere)
            : node(entered), place(placeOfEntered), sectionAbove(sectionOfEntered), position(positionThere) {}
        Node& node;
        NodePlace place;
        Node* sectionAbove;
        json_index_t position;
        State own{};
        /// If "children" and "files" are gone through separately, which of them it is now.
        NodePlace placeLookedFor = NodePlace::Child;
        json_index_t nextMember = 0;
        Node* section = nullptr;
        NodePlace placeOfElements = NodePlace::Child;
        json_index_t nextElement = 0;
    };

    State* StateAbove(std::size_t depth) { return depth == 0 ? nullptr : &open_[depth - 1].own; }

    NodeVisit<Node, State> VisitInnermost() {
        OpenNode& innermost = open_.back();
        return {innermost.node,     innermost.place, innermost.sectionAbove,
                innermost.position, innermost.own,   StateAbove(open_.size() - 1)};
    }

    void EnterNode(Node& node, NodePlace place, Node* section, json_index_t position) {
        // Entered nodes keep their addresses while others are added and removed at the end.
        open_.emplace_back(node, place, section, position);
        if (!enter_(VisitInnermost())) {
            open_.pop_back();
        }
    }

    void LeaveNode() {
        leave_(VisitInnermost());
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

    /// Goes to the next section of the node. Returns false if there is none. Only object nodes have members.
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

    /// Goes through the members again for "files". Returns false if that is done, or if there are no members.
    bool GoOnToFiles(OpenNode& open) const {
        if (order_ == SectionOrder::AsWritten || open.placeLookedFor == NodePlace::FileRecord) {
            return false;
        }
        open.placeLookedFor = NodePlace::FileRecord;
        open.nextMember = 0;
        return !open.node.empty();
    }

    /// Whether the member is a section to go through now; if so, its place is set.
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

/// Walks over each root: the elements of an array, or the node itself.
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

/// Walks over a document or an answer. If it is an array, every element is a root.
///
/// `enter` is called for every node, of any type, before the nodes in it, and returns whether the walk goes
/// into it. If it does, `leave` is called after the nodes in it. Both take a NodeVisit, whose state is
/// default-constructed.
template <typename State, typename Enter, typename Leave>
void WalkNodes(const JSONNode& root, SectionOrder order, const Enter& enter, const Leave& leave) {
    WalkRoots<State, const JSONNode>(root, order, enter, leave);
}

/// For visitors that keep no state.
struct NoState {};

/// The same without `leave` and without a state.
template <typename Enter>
void WalkNodes(const JSONNode& root, SectionOrder order, const Enter& enter) {
    WalkNodes<NoState>(root, order, enter, [](const auto&) {});
}

/// The same for a visitor that changes the node that it enters, but no other node.
template <typename Enter>
void WalkNodesToChange(JSONNode& root, SectionOrder order, const Enter& enter) {
    WalkRoots<NoState, JSONNode>(root, order, enter, [](const auto&) {});
}

}  // namespace korvane::exchange

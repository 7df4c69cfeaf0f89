#include <vector>

#include "Node.h"
#include "libjson.h"

using namespace libjson::detail;

namespace {

struct Place {
    const Container* source;
    Container* copy;
};

/// A copy of the node without children but with room for them. Names that are counted are copied, too: a
/// count belongs to one thread, and the copy may go to another.
Node* CopyAlone(const Node& node, Cells& cells) {
    HeldName name(AcquireName(TextOf(node.name), cells), cells);
    Node* const copy = IsContainer(node) ? MakeContainer(node.type, name.Get(), ChildrenOf(node).count, cells)
                                         : MakeText(node.type, name.Get(), TextOf(node), cells);
    name.PassOn();
    return copy;
}

}  // namespace

JSONNode JSONNode::duplicate() const {
    if (node_ == nullptr) {
        return JSONNode();
    }
    Cells cells;
    HeldNode root(CopyAlone(*node_, cells), cells);
    std::vector<Place> places;
    const auto enter = [&places](const Node& source, Node* copy) {
        if (IsContainer(source)) {
            places.push_back({&ChildrenOf(source), static_cast<Container*>(copy)});
        }
    };
    enter(*node_, root.Get());
    while (!places.empty()) {
        const Place place = places.back();
        const std::uint32_t index = place.copy->count;
        if (index == place.source->count) {
            places.pop_back();
            continue;
        }
        const Node* const source = NodeAccess::Pointer(place.source->children[index]);
        Node* const copy = source != nullptr ? CopyAlone(*source, cells) : nullptr;
        NodeAccess::AdoptAt(place.copy->children + index, copy);
        ++place.copy->count;
        if (source != nullptr) {
            enter(*source, copy);
        }
    }
    return JSONNode(root.PassOn());
}

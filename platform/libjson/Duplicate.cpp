#include <vector>

#include "Node.h"
#include "libjson.h"

using namespace libjson::detail;

namespace {

struct Place {
    Children source;
    Container* copy;
};

/// A copy of the node without children but with room for them. Names that are counted are copied, too: a
/// count belongs to one thread, and the copy may go to another.
Handle CopyAlone(const JSONNode& node, Cells& cells) {
    HeldName name(AcquireCopy(NameOf(node), cells), cells);
    const std::uint32_t count = ChildrenOf(node).count;
    const Handle copy = count > 0 ? HandleOf(MakeContainer(TypeOf(node), name.Get(), count, cells))
                                  : CopyAs(TypeOf(node), node, name.Get(), cells);
    name.PassOn();
    return copy;
}

}  // namespace

JSONNode JSONNode::duplicate() const {
    Cells cells;
    HeldNode root(CopyAlone(*this, cells), cells);
    std::vector<Place> places;
    const auto enter = [&places](const JSONNode& source, Handle copy) {
        const Children children = ChildrenOf(source);
        if (children.count > 0) {
            places.push_back({children, static_cast<Container*>(NodeOf(copy))});
        }
    };
    enter(*this, root.Get());
    while (!places.empty()) {
        const Place place = places.back();
        const std::uint32_t index = place.copy->count;
        if (index == place.source.count) {
            places.pop_back();
            continue;
        }
        const JSONNode& source = place.source.first[index];
        const Handle copy = CopyAlone(source, cells);
        NodeAccess::AdoptAt(place.copy->Children() + index, copy);
        ++place.copy->count;
        enter(source, copy);
    }
    return JSONNode(root.PassOn());
}

#include <vector>

#include "Node.h"
#include "libjson.h"

using namespace libjson::detail;

namespace {

/// Two lists of children of the same length, compared up to a position.
struct Place {
    Children left;
    Children right;
    std::uint32_t next;
};

/// Whether two nodes are the same apart from their children, of which they must have the same number.
bool SameButChildren(const JSONNode& left, const JSONNode& right) noexcept {
    if (TypeOf(left) != TypeOf(right) || TextOf(NameOf(left)) != TextOf(NameOf(right))) {
        return false;
    }
    return IsContainer(left) ? ChildrenOf(left).count == ChildrenOf(right).count
                             : TextOf(left) == TextOf(right);
}

}  // namespace

bool JSONNode::operator==(const JSONNode& other) const {
    std::vector<Place> places;
    // Compares two nodes, and leaves what is below them for later.
    const auto same = [&places](const JSONNode& left, const JSONNode& right) {
        if (left.handle_.bits == right.handle_.bits) {
            return true;
        }
        if (!SameButChildren(left, right)) {
            return false;
        }
        if (const Children children = ChildrenOf(left); children.count > 0) {
            places.push_back({children, ChildrenOf(right), 0});
        }
        return true;
    };
    if (!same(*this, other)) {
        return false;
    }
    while (!places.empty()) {
        Place& place = places.back();
        if (place.next == place.left.count) {
            places.pop_back();
            continue;
        }
        const std::uint32_t index = place.next++;
        if (!same(place.left.first[index], place.right.first[index])) {
            return false;
        }
    }
    return true;
}

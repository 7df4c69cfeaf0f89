#include <vector>

#include "Node.h"
#include "libjson.h"

using namespace libjson::detail;

namespace {

/// Two lists of children of the same length, compared up to a position.
struct Place {
    const Container* left;
    const Container* right;
    std::uint32_t next;
};

/// Whether two nodes are the same apart from their children, of which they must have the same number.
bool SameButChildren(const Node& left, const Node& right) noexcept {
    if (left.type != right.type || TextOf(left.name) != TextOf(right.name)) {
        return false;
    }
    return IsContainer(left) ? ChildrenOf(left).count == ChildrenOf(right).count
                             : TextOf(left) == TextOf(right);
}

}  // namespace

bool JSONNode::operator==(const JSONNode& other) const {
    std::vector<Place> places;
    // Compares two nodes, and leaves what is below them for later.
    const auto same = [&places](const Node& left, const Node& right) {
        if (&left == &right) {
            return true;
        }
        if (!SameButChildren(left, right)) {
            return false;
        }
        if (IsContainer(left)) {
            places.push_back({&ChildrenOf(left), &ChildrenOf(right), 0});
        }
        return true;
    };
    if (!same(Read(*this), Read(other))) {
        return false;
    }
    while (!places.empty()) {
        Place& place = places.back();
        if (place.next == place.left->count) {
            places.pop_back();
            continue;
        }
        const std::uint32_t index = place.next++;
        if (!same(Read(place.left->children[index]), Read(place.right->children[index]))) {
            return false;
        }
    }
    return true;
}

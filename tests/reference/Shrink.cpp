#include <algorithm>
#include <functional>

#include "Round.h"

namespace {

/// Makes a round smaller, step by step, as long as something is left that can go.
class Shrinker {
public:
    Shrinker(const Round& round, Reading& first, Reading& second)
        : round_(round), first_(first), second_(second) {}

    Round Result();

private:
    bool Try(const Round& smaller);
    template <typename Part>
    bool RemoveParts(std::vector<Part> Round::*parts);
    bool RemoveNodes(std::size_t action);
    bool SimplifyAction(std::size_t action);

    Round round_;
    Reading& first_;
    Reading& second_;
    int attempts_ = 4000;
};

bool Shrinker::Try(const Round& smaller) {
    if (--attempts_ < 0 || Run(smaller, first_) == Run(smaller, second_)) {
        return false;
    }
    round_ = smaller;
    return true;
}

/// Removes runs of parts, long ones first.
template <typename Part>
bool Shrinker::RemoveParts(std::vector<Part> Round::*parts) {
    bool isSmaller = false;
    for (std::size_t length = (round_.*parts).size(); length > 0; length /= 2) {
        for (std::size_t start = 0; start + length <= (round_.*parts).size();) {
            Round smaller = round_;
            auto& left = smaller.*parts;
            const auto first = left.begin() + static_cast<std::ptrdiff_t>(start);
            left.erase(first, first + static_cast<std::ptrdiff_t>(length));
            if (Try(smaller)) {
                isSmaller = true;
            } else {
                start += length;
            }
        }
    }
    return isSmaller;
}

/// Every node that has one child less than the given one, somewhere in it.
void VisitSmaller(const JSONNode& node, const std::function<bool(const JSONNode&)>& visit, bool& isDone) {
    for (json_index_t i = 0; i < node.size() && !isDone; ++i) {
        JSONNode without = node;
        without.pop_back(i);
        isDone = visit(without);
    }
    for (json_index_t i = 0; i < node.size() && !isDone; ++i) {
        VisitSmaller(
            node.at(i),
            [&](const JSONNode& child) {
                JSONNode with = node;
                with[i] = child;
                return visit(with);
            },
            isDone);
    }
}

bool Shrinker::RemoveNodes(std::size_t action) {
    bool isSmaller = false;
    bool isDone = true;
    while (isDone && attempts_ > 0) {
        isDone = false;
        const JSONNode node = round_.actions[action].node;
        VisitSmaller(
            node,
            [&](const JSONNode& less) {
                Round smaller = round_;
                smaller.actions[action].node = less;
                return Try(smaller);
            },
            isDone);
        isSmaller = isSmaller || isDone;
    }
    return isSmaller;
}

bool Shrinker::SimplifyAction(std::size_t action) {
    bool isSimpler = false;
    const auto change = [&](const auto& simplify) {
        Round simpler = round_;
        simplify(simpler.actions[action]);
        isSimpler = Try(simpler) || isSimpler;
    };
    // The object itself may have another place in a smaller model: any of the first ones will do.
    for (int object = 0; object < std::min(round_.actions[action].object, 25); ++object) {
        change([object](Action& simpler) { simpler.object = object; });
    }
    for (int object = 0; object < std::min(round_.actions[action].otherObject, 25); ++object) {
        change([object](Action& simpler) { simpler.otherObject = object; });
    }
    if (round_.actions[action].preference != Action::Preference::kNone) {
        change([](Action& simpler) { simpler.preference = Action::Preference::kNone; });
    }
    if (round_.actions[action].version >= 0) {
        change([](Action& simpler) { simpler.version = -1; });
    }
    if (!round_.actions[action].mode.IsEmpty()) {
        change([](Action& simpler) { simpler.mode = OuString(); });
    }
    return isSimpler;
}

Round Shrinker::Result() {
    if (round_.throwingAction >= 0) {
        Round calm = round_;
        calm.throwingAction = -1;
        Try(calm);
    }
    for (bool isSmaller = true; isSmaller && attempts_ > 0;) {
        // The action that throws is known by its place.
        isSmaller = round_.throwingAction < 0 && RemoveParts(&Round::actions);
        isSmaller = RemoveParts(&Round::oddities) || isSmaller;
        isSmaller = RemoveParts(&Round::steps) || isSmaller;
        for (std::size_t action = 0; action < round_.actions.size(); ++action) {
            isSmaller = RemoveNodes(action) || isSmaller;
            isSmaller = SimplifyAction(action) || isSmaller;
        }
    }
    return round_;
}

}  // namespace

Round Shrink(const Round& round, Reading& first, Reading& second) {
    return Shrinker(round, first, second).Result();
}

#include "ImportWalk.h"

void ImportWalk::ImportMembers(CAEObjectJson& converter) {
    ImportWalk walk;
    walk.BeginMembers(walk.places_.emplace_back(converter));
    walk.Run();
}

void ImportWalk::ImportChildren(CAEObjectJson& converter, const JSONNode& children) {
    ImportWalk walk;
    walk.BeginChildren(walk.places_.emplace_back(converter), children);
    walk.Run();
}

void ImportWalk::Run() {
    for (;;) {
        Place& place = places_.back();
        if (place.nextChild < place.children.size()) {
            const JSONNode& children = place.children;
            EnterChild(place, children.at(place.nextChild++));
        } else if (place.membersLeft) {
            ImportNextMember(place);
        } else if (places_.size() > 1) {
            LeaveChild();
        } else {
            return;
        }
    }
}

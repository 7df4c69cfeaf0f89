#include "ExportWalk.h"

#include <utility>

JSONNode ExportWalk::Write(CAEObjectJson& converter, Section section) {
    ExportWalk walk;
    walk.Begin(walk.places_.emplace_back(converter), section);
    for (;;) {
        Place& place = walk.places_.back();
        if (walk.EnterNext(place)) {
            continue;
        }
        if (walk.places_.size() == 1) {
            return std::move(place.array);
        }
        place.converter.Append(place.array);
        if (place.section == Section::kChildren) {
            walk.Begin(place, Section::kFiles);
        } else {
            walk.Leave();
        }
    }
}

void ExportWalk::Begin(Place& place, Section section) {
    place.section = section;
    section == Section::kChildren ? BeginChildren(place) : BeginFiles(place);
}

bool ExportWalk::EnterNext(Place& place) {
    return place.section == Section::kChildren ? EnterNextChild(place) : EnterNextFile(place);
}

void ExportWalk::Enter(Place& place) {
    place.converter.ExportOwnMembers();
    Begin(place, Section::kChildren);
}

void ExportWalk::Leave() {
    Place& place = places_.back();
    if (auto* record = std::get_if<CAEFileJson>(&place.own)) {
        record->ExportFileMembers();
    }
    places_[places_.size() - 2].array.push_back(place.converter.node_);
    places_.pop_back();
}

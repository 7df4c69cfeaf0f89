#include "CAEObjectDBManagement.h"

#include <utility>

#include "Recorded.h"
#include "Status.h"

using korvane::kDone;
using korvane::Recorded;

CAEObjectDBManagement::CAEObjectDBManagement() = default;
CAEObjectDBManagement::~CAEObjectDBManagement() = default;

OuString CAEObjectDBManagement::getDBKey() const {
    const Recorded note("CAEObjectDBManagement::getDBKey", *this);
    return key_;
}

int CAEObjectDBManagement::setDBKey(const OuString& key) {
    const Recorded note("CAEObjectDBManagement::setDBKey", *this, key);
    key_ = key;
    return kDone;
}

OuString CAEObjectDBManagement::getLinkDBKey() const {
    const Recorded note("CAEObjectDBManagement::getLinkDBKey", *this);
    return linkKey_;
}

int CAEObjectDBManagement::setLinkDBKey(OuString key) {
    const Recorded note("CAEObjectDBManagement::setLinkDBKey", *this, key);
    linkKey_ = std::move(key);
    return kDone;
}

#include "CAEObjectIdentification.h"

#include "Recorded.h"

using korvane::Recorded;

CAEObjectIdentification::CAEObjectIdentification() = default;
CAEObjectIdentification::~CAEObjectIdentification() = default;

int CAEObjectIdentification::getID() const {
    const Recorded note("CAEObjectIdentification::getID", *this);
    return id_;
}

void CAEObjectIdentification::setID(int id) {
    const Recorded note("CAEObjectIdentification::setID", *this, id);
    id_ = id;
}

void CAEObjectIdentification::getName(OuString& name) const {
    const Recorded note("CAEObjectIdentification::getName", *this);
    name = name_;
}

void CAEObjectIdentification::setName(const OuString& name) {
    const Recorded note("CAEObjectIdentification::setName", *this, name);
    name_ = name;
}

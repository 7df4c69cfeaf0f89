#include "CAEViewItem.h"

#include "ObjectData.h"
#include "Recorded.h"
#include "Status.h"

using korvane::kDone;
using korvane::kFailed;
using korvane::Recorded;

CAEViewItem::CAEViewItem() : CAEObject(CAE_VIEW_ITEM) {}
CAEViewItem::~CAEViewItem() = default;

int CAEViewItem::setReferencedCAEObject(int id) {
    const Recorded note("CAEViewItem::setReferencedCAEObject", *this, id);
    if (id < 0) {
        return kFailed;
    }
    referencedId_ = id;
    return kDone;
}

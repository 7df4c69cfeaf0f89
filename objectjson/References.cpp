#include "CAEObjectJson.h"
#include "Sections.h"

bool ResolveReference(CAEObject& viewItem, CAEProject* project) {
    int masterId = 0;
    // The key is passed also when it is empty; only the identifier says whether there is a master assembly.
    getMasterAssemblyCAEIDByITEMID(project, viewItem.getLinkDBKey(), masterId);
    if (auto* const item = masterId == 0 ? nullptr : dynamic_cast<CAEViewItem*>(&viewItem)) {
        item->setReferencedCAEObject(masterId);
    }
    return masterId != 0;
}

void CAEObjectJson::ResolveViewItemReference(CAEObject* viewItem) {
    if (viewItem != nullptr) {
        ResolveReference(*viewItem, project_);
    }
}

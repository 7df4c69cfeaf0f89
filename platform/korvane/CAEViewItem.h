#pragma once

#include "CAEObject.h"

/// An item of a load-case view that shows another object of the project.
class KORVANE_API CAEViewItem : public CAEObject {
public:
    ~CAEViewItem() override;

    /// Shows the object with the identifier, 0 for none. The identifier is not looked up; a negative one
    /// fails.
    int setReferencedCAEObject(int id);

private:
    friend class korvane::Access;
    CAEViewItem();
    int referencedId_ = 0;
};

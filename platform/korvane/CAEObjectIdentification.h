#pragma once

#include "KorvaneExport.h"
#include "OuString.h"

namespace korvane {
class Access;
}

/// What makes an object known: its identifier within the tree of its project, and its name.
class KORVANE_API CAEObjectIdentification {
public:
    virtual ~CAEObjectIdentification();
    CAEObjectIdentification(const CAEObjectIdentification&) = delete;
    CAEObjectIdentification& operator=(const CAEObjectIdentification&) = delete;

    /// The identifier; 0 until one is assigned.
    int getID() const;
    /// Changes the object's own identifier only: the project goes on finding it under the one that it had
    /// when it came into the tree.
    void setID(int id);

    /// Fills in the name, which may be empty.
    void getName(OuString& name) const;
    virtual void setName(const OuString& name);

protected:
    CAEObjectIdentification();

private:
    friend class korvane::Access;
    int id_ = 0;
    OuString name_;
};

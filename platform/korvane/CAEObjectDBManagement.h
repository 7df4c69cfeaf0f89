#pragma once

#include "CAEObjectIdentification.h"

/// What ties an object to the data-management server: its own database key, and the key of the item it points
/// to. Setters return 0.
class KORVANE_API CAEObjectDBManagement : public CAEObjectIdentification {
public:
    ~CAEObjectDBManagement() override;

    /// The object's own database key; empty when the server does not know the object.
    OuString getDBKey() const;
    virtual int setDBKey(const OuString& key);

    /// The database key of the item that the object points to; empty when it points to none.
    OuString getLinkDBKey() const;
    int setLinkDBKey(OuString key);

protected:
    CAEObjectDBManagement();

private:
    friend class korvane::Access;
    OuString key_;
    OuString linkKey_;
};

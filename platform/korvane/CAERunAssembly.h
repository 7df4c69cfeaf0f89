#pragma once

#include "CAEObject.h"

/// What a solver runs on (an iteration model): its finite-element representation.
class KORVANE_API CAERunAssembly : public CAEObject {
public:
    ~CAERunAssembly() override;

    /// The last file set is the current one; every earlier one stays in the list of files. Fails for an
    /// identifier that is not positive.
    int setFERepresentationFile(int fileId);

private:
    friend class korvane::Access;
    CAERunAssembly();
};

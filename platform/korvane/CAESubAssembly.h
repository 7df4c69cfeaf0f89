#pragma once

#include "CAEObject.h"

/// A sub-assembly with its geometry, representations and picture. The identifiers of files are not looked up;
/// one that is not positive fails.
class KORVANE_API CAESubAssembly : public CAEObject {
public:
    ~CAESubAssembly() override;

    /// The last CAD or graphic file set is the current one; an earlier one stays in the list of files.
    int setCADFile(int fileId);
    int setGraphicFile(int fileId);
    int attachNewRepresentationOrMeshingReq(int fileId);
    /// Fails for an identifier that is not a representation of the sub-assembly.
    int setActiveMesh(int fileId);

private:
    friend class korvane::Access;
    CAESubAssembly();
};

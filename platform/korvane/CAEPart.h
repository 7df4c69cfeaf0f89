#pragma once

#include "CAEObject.h"

/// A part with its geometry, meshes and picture. The identifiers of files are not looked up; one that is not
/// positive fails.
class KORVANE_API CAEPart : public CAEObject {
public:
    ~CAEPart() override;

    /// The last CAD or graphic file set is the current one; an earlier one stays in the list of files.
    int setCADFile(int fileId);
    int setGraphicFile(int fileId);
    int attachNewMeshOrMeshingRequest(int fileId);
    /// Fails for an identifier that is not a mesh of the part.
    int setActiveMesh(int fileId);

private:
    friend class korvane::Access;
    CAEPart();
};

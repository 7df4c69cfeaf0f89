#include "CAEPart.h"

#include "Files.h"
#include "ObjectData.h"
#include "Recorded.h"

using korvane::Recorded;

CAEPart::CAEPart() : CAEObject(CAE_PART) {}
CAEPart::~CAEPart() = default;

int CAEPart::setCADFile(int fileId) {
    const Recorded note("CAEPart::setCADFile", *this, fileId);
    return korvane::SetCadFile(*this, fileId);
}

int CAEPart::setGraphicFile(int fileId) {
    const Recorded note("CAEPart::setGraphicFile", *this, fileId);
    return korvane::SetGraphicFile(*this, fileId);
}

int CAEPart::attachNewMeshOrMeshingRequest(int fileId) {
    const Recorded note("CAEPart::attachNewMeshOrMeshingRequest", *this, fileId);
    return korvane::AttachMesh(*this, fileId);
}

int CAEPart::setActiveMesh(int fileId) {
    const Recorded note("CAEPart::setActiveMesh", *this, fileId);
    return korvane::SetActiveMesh(*this, fileId);
}

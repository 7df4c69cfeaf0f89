#include "CAESubAssembly.h"

#include "Files.h"
#include "ObjectData.h"
#include "Recorded.h"

using korvane::Recorded;

CAESubAssembly::CAESubAssembly() : CAEObject(CAE_SUBASSEMBLY) {}
CAESubAssembly::~CAESubAssembly() = default;

int CAESubAssembly::setCADFile(int fileId) {
    const Recorded note("CAESubAssembly::setCADFile", *this, fileId);
    return korvane::SetCadFile(*this, fileId);
}

int CAESubAssembly::setGraphicFile(int fileId) {
    const Recorded note("CAESubAssembly::setGraphicFile", *this, fileId);
    return korvane::SetGraphicFile(*this, fileId);
}

int CAESubAssembly::attachNewRepresentationOrMeshingReq(int fileId) {
    const Recorded note("CAESubAssembly::attachNewRepresentationOrMeshingReq", *this, fileId);
    return korvane::AttachMesh(*this, fileId);
}

int CAESubAssembly::setActiveMesh(int fileId) {
    const Recorded note("CAESubAssembly::setActiveMesh", *this, fileId);
    return korvane::SetActiveMesh(*this, fileId);
}

#include "CAERunAssembly.h"

#include "Files.h"
#include "ObjectData.h"
#include "Recorded.h"

using korvane::Recorded;

CAERunAssembly::CAERunAssembly() : CAEObject(CAE_ITERATION_MODEL) {}
CAERunAssembly::~CAERunAssembly() = default;

int CAERunAssembly::setFERepresentationFile(int fileId) {
    const Recorded note("CAERunAssembly::setFERepresentationFile", *this, fileId);
    return korvane::SetFeRepresentation(*this, fileId);
}

#include "CAEFile.h"

#include "Access.h"
#include "ObjectData.h"
#include "Recorded.h"
#include "Status.h"

using korvane::FileData;
using korvane::kDone;
using korvane::Recorded;

CAEFile::CAEFile() : CAEObject(CAE_FILE), fileData_(std::make_unique<FileData>()) {}

CAEFile::CAEFile(OuString* path, _tagFileType type, _tagFileFormat format, bool isInGlobalFrame) : CAEFile() {
    const Recorded note("CAEFile::CAEFile", path, type, format, isInGlobalFrame);
    if (path != nullptr) {
        fileData_->fullPathName = *path;
    }
    fileData_->type = type;
    fileData_->format = format;
    fileData_->isInGlobalFrame = isInGlobalFrame;
}

CAEFile::~CAEFile() = default;

void CAEFile::getFullPathName(OuString& path) const {
    const Recorded note("CAEFile::getFullPathName", *this);
    path = fileData_->fullPathName;
}

void CAEFile::setFullPathName(const OuString& path) {
    const Recorded note("CAEFile::setFullPathName", *this, path);
    fileData_->fullPathName = path;
}

_tagFileType CAEFile::getFileType() const {
    const Recorded note("CAEFile::getFileType", *this);
    return fileData_->type;
}

int CAEFile::setFileType(_tagFileType type) {
    const Recorded note("CAEFile::setFileType", *this, type);
    fileData_->type = type;
    return kDone;
}

_tagFileFormat CAEFile::getFileFormat() const {
    const Recorded note("CAEFile::getFileFormat", *this);
    return fileData_->format;
}

void CAEFile::setFileFormat(_tagFileFormat format) {
    const Recorded note("CAEFile::setFileFormat", *this, format);
    fileData_->format = format;
}

void CAEFile::setGlobalFrameCoordinate(bool isInGlobalFrame) {
    const Recorded note("CAEFile::setGlobalFrameCoordinate", *this, isInGlobalFrame);
    fileData_->isInGlobalFrame = isInGlobalFrame;
}

void CAEFile::SetFileDownloadFlag(bool isDownloaded) {
    const Recorded note("CAEFile::SetFileDownloadFlag", *this, isDownloaded);
    fileData_->isDownloaded = isDownloaded;
}

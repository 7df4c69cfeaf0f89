#pragma once

#include "CAEObject.h"

namespace korvane {
struct FileData;
}

/// A file of a project. Its name is empty until it is set; it does not follow from the path.
class KORVANE_API CAEFile : public CAEObject {
public:
    /// A null path gives a file without one. The file does not have an identifier, name, date or user yet,
    /// and belongs to the caller until a project takes it.
    CAEFile(OuString* path, _tagFileType type, _tagFileFormat format, bool isInGlobalFrame);
    ~CAEFile() override;

    void getFullPathName(OuString& path) const;
    void setFullPathName(const OuString& path);
    _tagFileType getFileType() const;
    int setFileType(_tagFileType type);
    _tagFileFormat getFileFormat() const;
    void setFileFormat(_tagFileFormat format);
    /// Whether the coordinates in the file are in the global frame.
    void setGlobalFrameCoordinate(bool isInGlobalFrame);
    /// Whether the file is on this machine.
    void SetFileDownloadFlag(bool isDownloaded);

    /// Where the file is kept, as free text.
    OuString m_locationType;
    /// The path that the file had when it came into its project.
    OuString m_fullPathCopy;

private:
    friend class korvane::Access;
    CAEFile();
    std::unique_ptr<korvane::FileData> fileData_;
};

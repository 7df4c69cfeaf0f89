#pragma once

#include "CAEObjectJson.h"

/// The converter between a file of the object model and a file record: the object node of the file, continued
/// with "fileType", "fileFormat", "locationType" and "filePath". All values are JSON strings.
class CAEFileJson : public CAEObjectJson {
public:
    /// For export. The file may be null.
    explicit CAEFileJson(CAEFile* file);

    /// For import: over a record, which is shared and not copied, and the file that it is read onto.
    /// Construction is what fills the file: it runs ImportFileRecord. With null nothing happens.
    CAEFileJson(JSONNode node, CAEFile* file);

    /// Writes the record to the end of the node: all that the object converter writes for the file, then the
    /// file's own members; nothing without a file.
    void Export() override;

    ~CAEFileJson() override;

    /// Applies the record's members to the file: first those that every object has, then the file's own, each
    /// by its first occurrence. Absent members leave the file as it is; unknown formats give 0, and a flag is
    /// set only by the text true.
    void ImportFileRecord();

    CAEFile* GetFile() const;

    /// "ASCII", "Binary" or, for every format but these two, "Unknown".
    OuString GetFileFormatName() const;

private:
    CAEFile* file_;
};

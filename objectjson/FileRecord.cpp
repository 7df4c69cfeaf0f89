#include <algorithm>
#include <utility>

#include "CAEFileJson.h"
#include "NodeReading.h"
#include "NodeWriter.h"
#include "Sections.h"
#include "format/Effects.h"
#include "format/MemberNames.h"
#include "format/Values.h"

namespace member = format::member;

namespace {

bool IsTrue(const OuString& text) {
    return IsText(text, format::kTrue);
}

format::FileFormat FormatOfText(const OuString& text) {
    for (const format::FileFormatName& known : format::kFileFormatNames) {
        if (IsText(text, known.name)) {
            return known.format;
        }
    }
    return format::FileFormat::kUnknown;
}

struct FileMemberReader {
    format::MemberName name;
    void (*apply)(CAEFile& file, const OuString& text);
};

/// What a record may say of its file, in the order in which it is read. The two flags are read and never
/// written: only the server sends them.
constexpr FileMemberReader kFileMemberReaders[] = {
    {member::kFilePath, [](CAEFile& file, const OuString& text) { file.setFullPathName(text); }},
    {member::kFileType, [](CAEFile& file, const OuString& text) { file.setFileType(GetCAEFileType(text)); }},
    {member::kLocationType, [](CAEFile& file, const OuString& text) { file.m_locationType = text; }},
    {member::kFileFormat,
     [](CAEFile& file, const OuString& text) { file.setFileFormat(ToFileFormat(FormatOfText(text))); }},
    {member::kIsInCoordinateGlobalFrame,
     [](CAEFile& file, const OuString& text) { file.setGlobalFrameCoordinate(IsTrue(text)); }},
    {member::kIsFileDownloaded,
     [](CAEFile& file, const OuString& text) { file.SetFileDownloadFlag(IsTrue(text)); }},
};
static_assert(std::ranges::all_of(kFileMemberReaders,
                                  [](const FileMemberReader& reader) {
                                      const format::MemberEffect* const known =
                                          format::FindEffect(reader.name.View());
                                      return known != nullptr && known->inRecord != format::Effect::kUnknown;
                                  }),
              "format/Effects.h says what an import does with every member that is read");

}  // namespace

void WriteFileMembers(CAEFile& file, DocumentWriter& out) {
    out.Text(member::kFileType, TextOfModel(CAEGetFileTypeName(static_cast<int>(FileTypeOf(file)))));
    out.Text(member::kFileFormat, format::NameOfFileFormat(FileFormatOf(file)));
    out.Text(member::kLocationType, file.m_locationType);
    out.Text(member::kFilePath, format::kNoFilePath);
}

void ReadFileMembers(CAEFile& file, const JSONNode& record) {
    for (const FileMemberReader& reader : kFileMemberReaders) {
        if (const JSONNode* const found = FindMember(record, reader.name)) {
            reader.apply(file, WideValue(*found));
        }
    }
}

CAEFileJson::CAEFileJson(CAEFile* file) : CAEObjectJson(file), file_(file) {}

CAEFileJson::CAEFileJson(JSONNode node, CAEFile* file) : CAEObjectJson(std::move(node), file), file_(file) {
    ImportFileRecord();
}

CAEFileJson::~CAEFileJson() = default;

CAEFile* CAEFileJson::GetFile() const {
    return file_;
}

OuString CAEFileJson::GetFileFormatName() const {
    const format::FileFormat format = file_ == nullptr ? format::FileFormat::kUnknown : FileFormatOf(*file_);
    return OuString(format::NameOfFileFormat(format), 0);
}

void CAEFileJson::Export() {
    if (file_ == nullptr) {
        return;
    }
    CAEObjectJson::Export();
    NodeWriter out(Node());
    WriteFileMembers(*file_, out);
}

void CAEFileJson::ImportFileRecord() {
    if (file_ == nullptr) {
        return;
    }
    ImportMembers();
    ReadFileMembers(*file_, Node());
}

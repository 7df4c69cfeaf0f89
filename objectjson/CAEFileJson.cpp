#include "CAEFileJson.h"

#include <CAEFile.h>
#include <CAEFunctions.h>

#include <utility>

#include "Members.h"

namespace {

constexpr const char* kFileType = "fileType";
constexpr const char* kFileFormat = "fileFormat";
constexpr const char* kLocationType = "locationType";
constexpr const char* kFilePath = "filePath";
constexpr const char* kIsInCoordinateGlobalFrame = "isInCoordinateGlobalFrame";
constexpr const char* kIsFileDownloaded = "isFileDownloaded";

struct FormatName {
    _tagFileFormat format;
    const wchar_t* name;
};

constexpr FormatName kFormatNames[] = {
    {CAE_FORMAT_ASCII, L"ASCII"},
    {CAE_FORMAT_BINARY, L"Binary"},
};
/// Stands for every other format, so it reads back as 0: this is meant.
constexpr const wchar_t* kUnknownFormat = L"Unknown";

_tagFileFormat FormatFromName(const OuString& name) {
    for (const FormatName& known : kFormatNames) {
        if (name == known.name) {
            return known.format;
        }
    }
    return CAE_FORMAT_UNKNOWN;
}

bool IsTrue(const OuString& text) {
    return text == L"true";
}

struct FileMember {
    const char* name;
    void (*apply)(CAEFile& file, const OuString& text);
};

/// What a record may say of its file, in the order in which it is read. The two flags are read and never
/// written: this is meant.
constexpr FileMember kFileMembers[] = {
    {kFilePath, [](CAEFile& file, const OuString& text) { file.setFullPathName(text); }},
    {kFileType, [](CAEFile& file, const OuString& text) { file.setFileType(GetCAEFileType(text)); }},
    {kLocationType, [](CAEFile& file, const OuString& text) { file.m_locationType = text; }},
    {kFileFormat, [](CAEFile& file, const OuString& text) { file.setFileFormat(FormatFromName(text)); }},
    {kIsInCoordinateGlobalFrame,
     [](CAEFile& file, const OuString& text) { file.setGlobalFrameCoordinate(IsTrue(text)); }},
    {kIsFileDownloaded, [](CAEFile& file, const OuString& text) { file.SetFileDownloadFlag(IsTrue(text)); }},
};

}  // namespace

CAEFileJson::CAEFileJson(CAEFile* file) : CAEObjectJson(file), file_(file) {}

CAEFileJson::CAEFileJson(JSONNode node, CAEFile* file) : CAEObjectJson(std::move(node), file), file_(file) {
    ImportFileRecord();
}

CAEFileJson::~CAEFileJson() = default;

CAEFile* CAEFileJson::GetFile() const {
    return file_;
}

OuString CAEFileJson::GetFileFormatName() const {
    const _tagFileFormat format = file_ == nullptr ? CAE_FORMAT_UNKNOWN : file_->getFileFormat();
    for (const FormatName& known : kFormatNames) {
        if (known.format == format) {
            return known.name;
        }
    }
    return kUnknownFormat;
}

void CAEFileJson::Export() {
    if (file_ == nullptr) {
        return;
    }
    CAEObjectJson::Export();
    ExportFileMembers();
}

void CAEFileJson::ExportFileMembers() {
    Append(StringMember(kFileType, OuString(CAEGetFileTypeName(file_->getFileType()), 0)));
    Append(StringMember(kFileFormat, GetFileFormatName()));
    Append(StringMember(kLocationType, file_->m_locationType));
    // Always empty: the path is built again from the project's directory and the name. This is meant.
    Append(StringMember(kFilePath, OuString()));
}

void CAEFileJson::ImportFileRecord() {
    if (file_ == nullptr) {
        return;
    }
    ImportMembers();
    const JSONNode& record = Node();
    for (const FileMember& member : kFileMembers) {
        if (const auto found = record.find(member.name); found != record.end()) {
            member.apply(*file_, TextOf(*found));
        }
    }
}

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "CAEFileJson.h"
#include "NodeReading.h"
#include "NodeWriter.h"
#include "RepeatedTexts.h"
#include "Sections.h"
#include "format/Effects.h"
#include "format/MemberNames.h"
#include "format/Values.h"

namespace member = format::member;

namespace {

struct FileMemberReader {
    format::MemberName name;
    void (*apply)(CAEFile& file, std::string_view text, RepeatedTexts& texts);
};

/// What a record may say of its file, in the order in which it is read. The two flags are read and never
/// written: only the server sends them.
constexpr FileMemberReader kFileMemberReaders[] = {
    {member::kFilePath,
     [](CAEFile& file, std::string_view text, RepeatedTexts&) { file.setFullPathName(TextFromAnsi(text)); }},
    {member::kFileType, [](CAEFile& file, std::string_view text,
                           RepeatedTexts& texts) { file.setFileType(GetCAEFileType(texts.Of(text))); }},
    {member::kLocationType, [](CAEFile& file, std::string_view text,
                               RepeatedTexts& texts) { file.m_locationType = texts.Of(text); }},
    {member::kFileFormat,
     [](CAEFile& file, std::string_view text, RepeatedTexts&) {
         file.setFileFormat(ToFileFormat(format::FileFormatOfName(text)));
     }},
    {member::kIsInCoordinateGlobalFrame,
     [](CAEFile& file, std::string_view text, RepeatedTexts&) {
         file.setGlobalFrameCoordinate(text == format::kTrue);
     }},
    {member::kIsFileDownloaded, [](CAEFile& file, std::string_view text,
                                   RepeatedTexts&) { file.SetFileDownloadFlag(text == format::kTrue); }},
};

constexpr std::size_t kFileMemberCount = std::size(kFileMemberReaders);

constexpr std::array<format::MemberName, kFileMemberCount> NamesOfFileMembers() {
    return [&]<std::size_t... index>(std::index_sequence<index...>) {
        return std::array{kFileMemberReaders[index].name...};
    }
    (std::make_index_sequence<kFileMemberCount>());
}

void ReadFileMembers(CAEFile& file, ImportPolicy* policy, const JSONNode& record, RepeatedTexts& texts) {
    const ImportTarget target = {&file, nullptr, policy};
    const auto members = FindMembers(record, NamesOfFileMembers());
    for (std::size_t index = 0; index < kFileMemberCount; ++index) {
        if (members[index] != nullptr) {
            const NodeText text = NodeValue(*members[index]);
            const FileMemberReader& reader = kFileMemberReaders[index];
            if (policy == nullptr || policy->SetsMember(target, reader.name, TextFromAnsi(UpToNul(text)))) {
                reader.apply(file, UpToNul(text), texts);
            }
        }
    }
}

static_assert(std::ranges::all_of(kFileMemberReaders,
                                  [](const FileMemberReader& reader) {
                                      const format::MemberEffect* const known =
                                          format::FindEffect(reader.name.View());
                                      return known != nullptr && known->inRecord != format::Effect::kUnknown;
                                  }),
              "format/Effects.h says what an import does with every member that is read");

}  // namespace

void WriteFileMembers(CAEFile& file, DocumentWriter& out) {
    out.Text(member::kFileType, CAEGetFileTypeName(static_cast<int>(FileTypeOf(file))));
    out.Text(member::kFileFormat, format::NameOfFileFormat(FileFormatOf(file)));
    out.Text(member::kLocationType, file.m_locationType);
    out.Text(member::kFilePath, format::kNoFilePath);
}

void ReadFileRecord(CAEFile& file, ImportPolicy* policy, const JSONNode& record, RepeatedTexts& texts) {
    const ImportTarget target = {&file, nullptr, policy};
    // A record is read as if its file had no project yet, also where an update has found it one that has.
    StartImport(target, record);
    ReadMembers(target, record, texts);
    ReadFileMembers(file, policy, record, texts);
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
    RepeatedTexts texts;
    ReadFileMembers(*file_, nullptr, Node(), texts);
}

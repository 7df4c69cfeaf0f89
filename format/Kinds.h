#pragma once

#include <string_view>

/// The kinds of objects and of files as the format numbers and names them. The numbers are the object
/// model's.
namespace format {

enum class Kind : int {
    kPart = 0,
    kSubAssembly = 1,
    kFile = 3,
    kProject = 4,
    kModel = 5,
    kIteration = 6,
    kIterationFolder = 7,
    kIterationModel = 8,
    kAssemblyFolder = 9,
    kLoadCaseViewFolder = 21,
    kLoadCaseView = 22,
    kViewItem = 23,
    /// Never written as a child.
    kSessionObject = 26,
    kTag = 41,
    /// What every name that is not in the table is read as.
    kUnknown = 43,
};

/// How a kind's "type" is written.
enum class Writing {
    /// "CAE" and the object model's name of the kind, in upper case.
    kAsTheModelSays,
    /// The name of the table, whatever the object model calls the kind.
    kAsRead,
    /// The project's additional type in upper case, which may be any text.
    kAsTheProjectSays,
};

/// A "type" that is read as a kind.
// The members are in the order of the columns of the table, which is read more often than it is stored.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct KindName {
    std::string_view name;
    Kind kind;
    Writing writing;
};

/// All that are read. Projects have two names here and are written under a third, because servers answer with
/// either.
inline constexpr KindName kKindNames[] = {
    {"CAEPART", Kind::kPart, Writing::kAsTheModelSays},
    {"CAESUBASSEMBLY", Kind::kSubAssembly, Writing::kAsTheModelSays},
    {"CAEFILE", Kind::kFile, Writing::kAsTheModelSays},
    {"CAEPROJECT", Kind::kProject, Writing::kAsTheProjectSays},
    {"CAEPROGRAM", Kind::kProject, Writing::kAsTheProjectSays},
    {"CAEMODEL", Kind::kModel, Writing::kAsTheModelSays},
    {"CAEITERATION", Kind::kIteration, Writing::kAsRead},
    {"CAEITERATIONFOLDER", Kind::kIterationFolder, Writing::kAsRead},
    {"CAEITERATIONMODEL", Kind::kIterationModel, Writing::kAsRead},
    {"CAEASSEMBLYFOLDER", Kind::kAssemblyFolder, Writing::kAsTheModelSays},
    {"CAELOADCASEVIEWFOLDER", Kind::kLoadCaseViewFolder, Writing::kAsRead},
    {"CAELOADCASEVIEW", Kind::kLoadCaseView, Writing::kAsRead},
    {"CAEVIEWITEM", Kind::kViewItem, Writing::kAsTheModelSays},
    {"CAETAG", Kind::kTag, Writing::kAsTheModelSays},
};

/// What stands before the object model's name of a kind.
inline constexpr const char* kKindPrefix = "CAE";

/// The "type" of a session object, which is only ever a root. It is not in the table: no import makes one.
inline constexpr const char* kSessionObjectType = "CAESESSIONOBJECT";

/// The kind with exactly this name; kUnknown for any other text.
constexpr Kind KindOfType(std::string_view type) {
    for (const KindName& known : kKindNames) {
        if (known.name == type) {
            return known.kind;
        }
    }
    return Kind::kUnknown;
}

/// The first name that is read as the kind; empty for a kind without one.
constexpr std::string_view TypeOfKind(Kind kind) {
    for (const KindName& known : kKindNames) {
        if (known.kind == kind) {
            return known.name;
        }
    }
    return {};
}

/// The types of files that have a role of their own on some objects; every other type is a custom file's.
enum class FileType : int {
    kUnknown = 0,
    kCad = 1,
    kMesh = 2,
    kGraphic = 3,
};

constexpr bool HasRole(FileType type) {
    return type == FileType::kCad || type == FileType::kMesh || type == FileType::kGraphic;
}

enum class FileFormat : int {
    kUnknown = 0,
    kAscii = 1,
    kBinary = 2,
};

struct FileFormatName {
    FileFormat format;
    const char* name;
};

/// The formats that are read; any other text is read as kUnknown.
inline constexpr FileFormatName kFileFormatNames[] = {
    {FileFormat::kAscii, "ASCII"},
    {FileFormat::kBinary, "Binary"},
};

/// Written for every format that is not in the table, so those read back as kUnknown: the format has no more
/// names.
inline constexpr const char* kUnknownFileFormat = "Unknown";

/// The name that is written for a format.
constexpr const char* NameOfFileFormat(FileFormat format) {
    for (const FileFormatName& known : kFileFormatNames) {
        if (known.format == format) {
            return known.name;
        }
    }
    return kUnknownFileFormat;
}

/// The format that a name is read as.
constexpr FileFormat FileFormatOfName(std::string_view name) {
    for (const FileFormatName& known : kFileFormatNames) {
        if (known.name == name) {
            return known.format;
        }
    }
    return FileFormat::kUnknown;
}

}  // namespace format

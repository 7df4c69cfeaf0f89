#pragma once

#include <CAEFile.h>
#include <EmbeddedModel.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// What the program says of files.
namespace host {

/// What files are to an object.
enum class FileRole { Cad, Graphic, ActiveMesh, FeRepresentation, Mesh, Custom };

/// `CAD file`, `active mesh`
std::string_view NameOfRole(FileRole role);

/// The roles of the files that are attached to the object, by their identifiers.
std::map<int, FileRole> RolesOfFiles(const CAEObject& object);

/// Which files are shown.
enum class FilesShown {
    All,
    /// Those that are more to their object than custom files.
    WithRoles,
    None,
};
bool IsShown(FilesShown files, FileRole role);

/// Where a file is.
enum class FilePresence {
    There,
    Missing,
    WithoutPath,
    /// On a server that the user has not named, which was not asked.
    OnServer,
};

struct FileOnDisk {
    FilePresence presence = FilePresence::WithoutPath;
    /// The bytes of a file that is there.
    std::uint64_t size = 0;
};
FileOnDisk LookUpFile(const CAEFile& file);

/// `1.2 kB`, `missing`, `on a server` for a file that was not looked up, or `-` for one without a path.
std::string SizeText(const FileOnDisk& file);

/// The unit of a metadata entry. A document has it as the entry's type, and so has what was imported from
/// one.
const OuString& UnitOf(const korvane::MetadataValues& entry);

/// A metadata value for people. A number of bytes is a size like those of files: `1.2 kB`.
std::string ShownValue(std::string_view value, std::string_view unit);

/// A value of an entry before and after a change, for people. Sizes that would look the same are in bytes.
struct ShownChange {
    std::string from;
    std::string to;
};
ShownChange ShownChangeOf(std::string_view from, std::string_view to, std::string_view unit);

}  // namespace host

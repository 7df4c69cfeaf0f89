#include "FileFacts.h"

#include <charconv>

#include "ObjectTexts.h"
#include "host/system/FileSystem.h"
#include "host/system/ServerPath.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::string_view kBytes = "B";

struct RoleName {
    FileRole role;
    std::string_view name;
};
constexpr RoleName kRoleNames[] = {
    {FileRole::Cad, "CAD file"},
    {FileRole::Graphic, "graphic file"},
    {FileRole::ActiveMesh, "active mesh"},
    {FileRole::FeRepresentation, "FE representation"},
    {FileRole::Mesh, "mesh"},
    {FileRole::Custom, "custom file"},
};

std::string WithUnit(std::string_view value, std::string_view unit) {
    return std::string(value) + (unit.empty() ? "" : " ") + std::string(unit);
}

}  // namespace

std::string_view NameOfRole(FileRole role) {
    for (const RoleName& known : kRoleNames) {
        if (known.role == role) {
            return known.name;
        }
    }
    return {};
}

std::map<int, FileRole> RolesOfFiles(const CAEObject& object) {
    const korvane::FileRoles roles = korvane::GetFileRoles(object);
    std::map<int, FileRole> roleOfFile;
    // A file with several roles has the first of them here.
    roleOfFile.emplace(roles.cadFile, FileRole::Cad);
    roleOfFile.emplace(roles.graphicFile, FileRole::Graphic);
    roleOfFile.emplace(roles.activeMesh, FileRole::ActiveMesh);
    roleOfFile.emplace(roles.feRepresentation, FileRole::FeRepresentation);
    for (const int mesh : roles.meshes) {
        roleOfFile.emplace(mesh, FileRole::Mesh);
    }
    for (const int file : roles.files) {
        roleOfFile.emplace(file, FileRole::Custom);
    }
    roleOfFile.erase(0);
    return roleOfFile;
}

bool IsShown(FilesShown files, FileRole role) {
    return files == FilesShown::All || (files == FilesShown::WithRoles && role != FileRole::Custom);
}

FileOnDisk LookUpFile(const CAEFile& file) {
    const OuString path = PathOf(file);
    Entry entry;
    if (path.IsEmpty()) {
        return {};
    }
    if (IsOnOtherServer(ToPath(path))) {
        return {FilePresence::OnServer, 0};
    }
    if (InspectTarget(ToPath(path), entry)) {
        return {FilePresence::Missing, 0};
    }
    return {FilePresence::There, entry.size};
}

std::string SizeText(const FileOnDisk& file) {
    switch (file.presence) {
        case FilePresence::There:
            return FormatSize(file.size);
        case FilePresence::Missing:
            return "missing";
        case FilePresence::OnServer:
            return "on a server";
        case FilePresence::WithoutPath:
            break;
    }
    return "-";
}

const OuString& UnitOf(const korvane::MetadataValues& entry) {
    return entry.unit.IsEmpty() ? entry.type : entry.unit;
}

std::string ShownValue(std::string_view value, std::string_view unit) {
    std::uint64_t bytes = 0;
    const char* const end = value.data() + value.size();
    const auto [rest, error] = std::from_chars(value.data(), end, bytes);
    if (unit == kBytes && error == std::errc() && rest == end) {
        return FormatSize(bytes);
    }
    return WithUnit(value, unit);
}

ShownChange ShownChangeOf(std::string_view from, std::string_view to, std::string_view unit) {
    ShownChange shown{ShownValue(from, unit), ShownValue(to, unit)};
    if (shown.from == shown.to) {
        shown = {WithUnit(from, unit), WithUnit(to, unit)};
    }
    return shown;
}

}  // namespace host

#include "ProjectPlace.h"

#include <EmbeddedModel.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <unordered_map>

#include "host/document/ProjectObjects.h"
#include "host/system/FileSystem.h"
#include "host/system/ServerPath.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

bool IsSeparator(char character) {
    return character == '/' || character == '\\';
}

/// Whether a directory is written as on Windows, where both slashes part names.
bool IsOfWindows(std::string_view directory) {
    return !directory.starts_with('/') && directory.find('\\') != std::string_view::npos;
}

/// A directory without a slash at its end, which would be an empty component.
path WithoutSlash(const path& directory) {
    return directory.filename().empty() && directory.has_relative_path() ? directory.parent_path()
                                                                         : directory;
}

/// The path of a file after its project's directory has moved; nothing if the file is not in it.
std::optional<std::string> MovedPath(std::string_view file, std::string_view from, std::string_view to) {
    const bool endsWithSeparator = !from.empty() && IsSeparator(from.back());
    if (from.empty() || !file.starts_with(from) || file.size() == from.size() ||
        (!endsWithSeparator && !IsSeparator(file[from.size()]))) {
        return std::nullopt;
    }
    const std::size_t begin = from.size() + (endsWithSeparator ? 0 : 1);
    const char separator = IsOfWindows(to) ? '\\' : '/';
    const bool isPartedByBoth = IsOfWindows(from);
    std::string moved(to);
    if (moved.empty() || !IsSeparator(moved.back())) {
        moved += separator;
    }
    // The project file may have moved from Windows to Linux, or the other way round.
    for (const char character : file.substr(begin)) {
        moved += character == '/' || (character == '\\' && isPartedByBoth) ? separator : character;
    }
    return moved;
}

OuString DirectoryOf(const CAEProject& project) {
    OuString directory;
    project.getDirectory(directory);
    return directory;
}

OuString PathOf(const CAEFile& file) {
    OuString text;
    file.getFullPathName(text);
    return text;
}

/// Calls the work for the files of all projects of the tree, with the project that each belongs to.
template <typename Work>
void ForEachFile(CAEProject& root, const Work& work) {
    VisitProject(root, [&](CAEObject& object, const ObjectPlace&) {
        auto* const file = dynamic_cast<CAEFile*>(&object);
        if (file != nullptr && file->getProject() != nullptr) {
            work(*file, *file->getProject());
        }
    });
}

path PathOfText(const std::string& text) {
    return ToPath(OuString(text.c_str(), 0));
}

bool Exists(const std::string& file) {
    if (IsOnOtherServer(PathOfText(file))) {
        return false;
    }
    std::error_code error;
    const bool isThere = std::filesystem::exists(PathOfText(file), error);
    ThrowIfOutOfMemory(error);
    return isThere;
}

/// Whether the project's directory is found at `to`.
bool IsAt(CAEProject& root, const path& to) {
    if (IsOnOtherServer(to)) {
        return false;
    }
    std::error_code error;
    const bool isDirectory = std::filesystem::is_directory(to, error);
    ThrowIfOutOfMemory(error);
    if (!isDirectory) {
        return false;
    }
    const OuString old = DirectoryOf(root);
    const OuString now = ToOuString(to);
    std::optional<bool> isThere;
    ForEachFile(root, [&](const CAEFile& file, const CAEProject& project) {
        if (isThere || &project != &root) {
            return;
        }
        const OuString before = PathOf(file);
        const std::optional<std::string> moved =
            MovedPath(before.GetAnsiBuffer(), old.GetAnsiBuffer(), now.GetAnsiBuffer());
        if (moved) {
            isThere = Exists(*moved) || !Exists(before.GetAnsiBuffer());
        }
    });
    return isThere.value_or(true);
}

}  // namespace

std::string DirectoryFrom(const path& file, const OuString& directory) {
    const path whole = WithoutSlash(ToPath(directory).lexically_normal());
    const path folder = FolderOf(file);
    if (!whole.is_absolute() || !folder.is_absolute() || whole.root_name() != folder.root_name()) {
        return {};
    }
    const auto [end, endOfFolder] = std::mismatch(whole.begin(), whole.end(), folder.begin(), folder.end());
    // The root has one component, or two with a drive.
    const path root = whole.root_path();
    if (std::distance(whole.begin(), end) <= std::distance(root.begin(), root.end())) {
        return {};
    }
    std::string text = ToOuString(whole.lexically_relative(folder)).GetAnsiBuffer();
#if defined(_WIN32)
    std::ranges::replace(text, '\\', '/');
#endif
    return text;
}

void MoveToPlaces(CAEProject& root, const std::vector<ProjectPlace>& places, const path& file) {
    const path folder = FolderOf(file);
    const auto placeNow = [&](const ProjectPlace& place) {
        return WithoutSlash((folder / PathOfText(place.directoryFromHere)).lexically_normal())
            .make_preferred();
    };
    const auto ofRoot = std::ranges::find(places, &root, &ProjectPlace::project);
    if (ofRoot == places.end() || ofRoot->directoryFromHere.empty()) {
        return;
    }
    const path now = placeNow(*ofRoot);
    if (now == WithoutSlash(ToPath(DirectoryOf(root)).lexically_normal()) || !IsAt(root, now)) {
        return;
    }
    std::unordered_map<const CAEProject*, std::string> before;
    for (const ProjectPlace& place : places) {
        if (!place.directoryFromHere.empty()) {
            before.emplace(place.project, DirectoryOf(*place.project).GetAnsiBuffer());
            korvane::SetDirectory(*place.project, ToOuString(placeNow(place)));
        }
    }
    ForEachFile(root, [&](CAEFile& moving, const CAEProject& project) {
        const auto from = before.find(&project);
        if (from == before.end()) {
            return;
        }
        const std::optional<std::string> moved =
            MovedPath(PathOf(moving).GetAnsiBuffer(), from->second, DirectoryOf(project).GetAnsiBuffer());
        if (moved) {
            moving.setFullPathName(OuString(moved->c_str(), 0));
        }
    });
}

}  // namespace host

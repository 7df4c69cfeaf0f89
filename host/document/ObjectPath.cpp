#include "ObjectPath.h"

#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <algorithm>

#include "ObjectLists.h"
#include "ObjectTexts.h"

namespace host {
namespace {

using korvane::exchange::ToUtf8;

constexpr std::size_t kMostNames = 100;
constexpr std::string_view kLeftOut = ".../";
constexpr std::string_view kRoot = ".";

/// The path with slashes between its names, on every platform.
std::string WithSlashes(std::string path) {
#if defined(_WIN32)
    std::ranges::replace(path, '\\', '/');
#endif
    return path;
}

bool IsDirectory(const CAEObject& object) {
    return object.getType() == CAE_MODEL || object.getType() == CAE_ASSEMBLY_FOLDER;
}

/// What follows the slash behind a directory of that length; nothing if there is none.
std::string_view Behind(std::string_view path, std::size_t directory) {
    if (directory == 0) {
        return path;
    }
    return path.size() > directory + 1 && path[directory] == '/' ? path.substr(directory + 1)
                                                                 : std::string_view();
}

/// What follows the directory and a slash; nothing if the path does not lead into it.
std::string_view Below(std::string_view path, std::string_view directory) {
    return path.starts_with(directory) ? Behind(path, directory.size()) : std::string_view();
}

/// The path from the directory of the project to that of the study, by the deck of its first iteration; empty
/// if it has none.
std::string DirectoryOfStudy(const CAEObject& study, const std::string& directory) {
    for (const CAEObject* const folder : ChildrenOf(study)) {
        const std::vector<CAEObject*> iterations =
            folder->getType() == CAE_ITERATION_FOLDER ? ChildrenOf(*folder) : std::vector<CAEObject*>();
        const std::vector<CAEObject*> models =
            iterations.empty() ? std::vector<CAEObject*>() : ChildrenOf(*iterations.front());
        const CAEFile* const deck =
            models.empty()
                ? nullptr
                : study.getProject()->getFile(korvane::GetFileRoles(*models.front()).feRepresentation);
        if (deck != nullptr) {
            const std::string path = WithSlashes(ToUtf8(PathOf(*deck)));
            const std::string_view file = Below(path, directory);
            // That of a study in the project's own directory is empty as well.
            return std::string(
                file.substr(0, file.find('/') == std::string_view::npos ? 0 : file.rfind('/')));
        }
    }
    return {};
}

}  // namespace

ObjectPath::ObjectPath(const CAEObject& root) {
    if (const CAEProject* const project = root.getProject()) {
        directory_ = WithSlashes(ToUtf8(DirectoryOf(*project)));
        while (directory_.ends_with('/')) {
            directory_.pop_back();
        }
    }
}

void ObjectPath::Enter(const CAEObject& child) {
    const std::size_t before = levels_.empty() ? 0 : levels_.back().endOfDirectory;
    path_ += path_.empty() && levels_.empty() ? "" : "/";
    const std::size_t begin = path_.size();
    path_ += ToUtf8(NameOf(child));
    levels_.push_back({begin, IsDirectory(child) ? path_.size() : before, otherDirectories_.size()});
    if (child.getType() == CAE_MODEL) {
        const std::string path = DirectoryOfStudy(child, directory_);
        const DirectoryPath expected = PathOfDirectory();
        if (!path.empty() && !(path.size() == expected.Size() && expected.IsBeginningOf(path))) {
            otherDirectories_.push_back({path, path_.size()});
            levels_.back().otherDirectories = otherDirectories_.size();
        }
    }
}

bool ObjectPath::DirectoryPath::IsBeginningOf(std::string_view path) const {
    return path.starts_with(other) && path.substr(other.size()).starts_with(names);
}

ObjectPath::DirectoryPath ObjectPath::PathOfDirectory() const {
    const std::size_t end = levels_.empty() ? 0 : levels_.back().endOfDirectory;
    const std::string_view names = std::string_view(path_).substr(0, end);
    if (otherDirectories_.empty()) {
        return {{}, names};
    }
    const OtherDirectory& other = otherDirectories_.back();
    return {other.path, names.substr(other.end)};
}

void ObjectPath::Leave() {
    path_.resize(levels_.back().begin - (levels_.size() > 1 ? 1 : 0));
    levels_.pop_back();
    otherDirectories_.resize(levels_.empty() ? 0 : levels_.back().otherDirectories);
}

std::string_view ObjectPath::LastNames(std::size_t most) const {
    return levels_.size() > most ? std::string_view(path_).substr(levels_[levels_.size() - most].begin)
                                 : std::string_view(path_);
}

std::string ObjectPath::Text() const {
    if (levels_.empty()) {
        return std::string(kRoot);
    }
    return std::string(levels_.size() > kMostNames ? kLeftOut : "") + std::string(LastNames(kMostNames));
}

std::string ObjectPath::TextOfChild(std::string_view name) const {
    if (levels_.empty()) {
        return std::string(name);
    }
    const bool isShortened = levels_.size() + 1 > kMostNames;
    return std::string(isShortened ? kLeftOut : "") + std::string(LastNames(kMostNames - 1)) + "/" +
           std::string(name);
}

std::string ObjectPath::PlaceOf(const CAEFile& file) const {
    const std::string path = WithSlashes(ToUtf8(PathOf(file)));
    // A file that was created from a child in a document has a name, but no path.
    if (path.empty()) {
        return ToUtf8(NameOf(file));
    }
    const std::string_view fromProject = directory_.empty() ? std::string_view() : Below(path, directory_);
    if (fromProject.empty()) {
        return path.substr(path.find_last_of("/\\") + 1);
    }
    const DirectoryPath directory = PathOfDirectory();
    const std::string_view fromStudy =
        directory.IsBeginningOf(fromProject) ? Behind(fromProject, directory.Size()) : std::string_view();
    return std::string(fromStudy.empty() ? fromProject : fromStudy);
}

}  // namespace host

#include "ObjectPath.h"

#include <korvaneexchange/Text.h>

#include <algorithm>

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

/// What follows the directory and a slash; nothing if the path does not lead into it.
std::string_view Below(std::string_view path, std::string_view directory) {
    if (directory.empty()) {
        return path;
    }
    return path.size() > directory.size() + 1 && path.starts_with(directory) && path[directory.size()] == '/'
               ? path.substr(directory.size() + 1)
               : std::string_view();
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
    levels_.push_back({begin, IsDirectory(child) ? path_.size() : before});
}

void ObjectPath::Leave() {
    path_.resize(levels_.back().begin - (levels_.size() > 1 ? 1 : 0));
    levels_.pop_back();
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
    const std::size_t end = levels_.empty() ? 0 : levels_.back().endOfDirectory;
    const std::string_view fromStudy = Below(fromProject, std::string_view(path_).substr(0, end));
    return std::string(fromStudy.empty() ? fromProject : fromStudy);
}

}  // namespace host

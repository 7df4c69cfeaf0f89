#pragma once

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

#include "ObjectOrigins.h"

namespace host {

/// Which objects and files of a project those of a new reading of its directory are.
///
/// A file is the one with the same path in the directory. An object is the one of the same kind that was made
/// from the same files; if there is none, the one of the same kind with the same name in the same directory.
/// A file that an import created, which does not know its path, is the one with the same name that is
/// attached to the same object, or is a child of the project too. Nothing is matched twice.
class ProjectMatching {
public:
    ProjectMatching(const ProjectOrigins& project, const ProjectOrigins& reading);

    /// The place in the project's list of the object or file at this place in the list of the reading.
    const std::vector<std::optional<std::size_t>>& Objects() const { return objects_; }
    const std::vector<std::optional<std::size_t>>& Files() const { return files_; }
    /// Whether something in the project's list was matched.
    bool IsObjectMatched(std::size_t place) const { return isObjectMatched_[place]; }
    bool IsFileMatched(std::size_t place) const { return isFileMatched_[place]; }

private:
    void MatchObjects();
    void MatchFilesByPath();
    void MatchFilesByName();
    void MatchAttachedByName(std::size_t read, std::size_t kept);
    void MatchChildrenByName();
    void Match(std::size_t readFile, std::size_t file);

    const ProjectOrigins& project_;
    const ProjectOrigins& reading_;
    std::vector<std::optional<std::size_t>> objects_;
    std::vector<std::optional<std::size_t>> files_;
    std::vector<bool> isObjectMatched_;
    std::vector<bool> isFileMatched_;
};

}  // namespace host

#pragma once

#include <CAEProject.h>

#include <filesystem>
#include <string>
#include <vector>

/// Where the directories of projects are, seen from the project file.
namespace host {

/// The directory as seen from the folder of the project file, with slashes between names: "../studies", or
/// "." for the folder itself. Empty if the two have no folder in common but the root, or the directory is not
/// a full path: then they do not move together.
std::string DirectoryFrom(const std::filesystem::path& file, const OuString& directory);

/// A project, and its directory as seen from the folder of the project file.
struct ProjectPlace {
    CAEProject* project;
    std::string directoryFromHere;
};

/// Moves the directories of the projects, with the paths of their files, to where they are now, if they have
/// moved together with the project file (ProjectFile.h says how that is told). The place of `root`, to which
/// the other projects belong, decides for all.
void MoveToPlaces(CAEProject& root, const std::vector<ProjectPlace>& places,
                  const std::filesystem::path& file);

}  // namespace host

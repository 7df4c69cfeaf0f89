#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What the objects of a project were made from: files and directories of the project's directory. Two
/// readings of a directory are brought together by it (ProjectMatching.h).
namespace host {

/// Numbers for relative paths: each path has one, however often it is met. A path costs as much as its last
/// name, so that objects below each other can be many.
class PathNumbers {
public:
    static constexpr int kRoot = 0;
    /// The path of a name in the directory with the number.
    int Child(int above, std::string_view name);
    /// A path with slashes between its names.
    int Of(std::string_view relative);

private:
    std::unordered_map<std::string, int> numbers_;
};

/// A kind of objects, and the path that one of them was made from.
struct OriginKey {
    int kind;
    int path;
    bool operator==(const OriginKey&) const = default;
};

/// An object of the tree that is not a file, and what it was made from.
struct ObjectOrigin {
    CAEObject* object = nullptr;
    /// The one above it among the origins; its own place for the project.
    std::size_t above = 0;
    /// The path of the directory of a study or folder; of anything else, that of the study or folder it is
    /// in.
    int directory = PathNumbers::kRoot;
    /// By its files: for a study the directory of its decks, for an iteration its deck, for a part its
    /// geometry, then its meshes.
    std::vector<OriginKey> byFile;
    /// By its name below the directory of what it is in.
    OriginKey byName{};
    /// Whether reading the directory made it: it is of a kind that a reading makes, and it has a file from
    /// the directory, or something below it has.
    bool isFromDirectory = false;
};

/// A file of the project.
struct FileOrigin {
    CAEFile* file = nullptr;
    /// Whether it is a child of the project and not in its list of files.
    bool isChild = false;
    /// Whether it came from the directory, and from where there.
    bool isFromDirectory = false;
    int path = PathNumbers::kRoot;
};

/// The origins of everything in the project, without what is below files and below projects in it.
class ProjectOrigins {
public:
    ProjectOrigins(CAEProject& project, PathNumbers& numbers);

    /// Objects after those that they are below, siblings in their order.
    const std::vector<ObjectOrigin>& Objects() const { return objects_; }
    const std::vector<FileOrigin>& Files() const { return files_; }
    /// The file with the identifier; null if the project does not have it.
    const FileOrigin* FileOf(int identifier) const;

private:
    void CollectFiles(CAEProject& project);
    void CollectObjects(CAEProject& project);
    void AddFile(CAEFile& file, bool isChild, const OuString& directory);
    /// The path of the file, or of the directory that it is in; -1 if it did not come from the directory.
    int PathOfFile(int file) const;
    int DirectoryOfFile(int file) const;
    void FindDecks();
    void SetKeys();
    void SetKeysOf(ObjectOrigin& origin, std::size_t index);
    void MarkFromDirectory();

    PathNumbers& numbers_;
    std::vector<ObjectOrigin> objects_;
    std::vector<FileOrigin> files_;
    std::vector<int> directories_;
    std::unordered_map<int, std::size_t> fileOfIdentifier_;
    /// For each object, a deck that it or something below it runs; 0 for none.
    std::vector<int> decks_;
};

}  // namespace host

template <>
struct std::hash<host::OriginKey> {
    std::size_t operator()(const host::OriginKey& key) const noexcept {
        return std::hash<long long>()((static_cast<long long>(key.path) << 8) ^ key.kind);
    }
};

#pragma once

#include <CAEFile.h>
#include <CAEProject.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The way from the root of a tree to an object, while the tree is walked.
class ObjectPath {
public:
    /// Files are told apart by their path from the directory of the root's project.
    explicit ObjectPath(const CAEObject& root);

    /// Goes down to a child of the object, and back up.
    void Enter(const CAEObject& child);
    void Leave();

    /// The number of levels below the root.
    std::size_t Depth() const { return levels_.size(); }

    /// The names from below the root to the object, with slashes between them; `.` for the root. Of an object
    /// more than a hundred levels deep only the last hundred names are there, behind `.../`.
    std::string Text() const;
    /// The same with the text as the name of one object more.
    std::string TextOfChild(std::string_view name) const;

    /// Where a file of the object lies: its path from the directory of the study or folder that the object is
    /// in, else from the directory of the project, else its name alone. A file without a path has its name.
    std::string PlaceOf(const CAEFile& file) const;

private:
    struct Level {
        /// Where the name begins.
        std::size_t begin;
        /// Where the path of the study or folder ends that the object is or is in.
        std::size_t endOfDirectory;
        /// How many directories with other names than their objects are on the way.
        std::size_t otherDirectories;
    };
    /// A study that a user gave a name is in a directory of another one.
    struct OtherDirectory {
        std::string path;
        /// Where the path of the names ends that this one stands for.
        std::size_t end;
    };
    /// The path from the directory of the project to that of the study or folder that the object is or is in,
    /// in two parts: a path is as long as all names of a deep object together, too long to be put together
    /// for each.
    struct DirectoryPath {
        std::string_view other;
        std::string_view names;

        bool IsBeginningOf(std::string_view path) const;
        std::size_t Size() const { return other.size() + names.size(); }
    };
    DirectoryPath PathOfDirectory() const;
    std::string_view LastNames(std::size_t most) const;

    std::string directory_;
    std::string path_;
    std::vector<Level> levels_;
    std::vector<OtherDirectory> otherDirectories_;
};

}  // namespace host

#pragma once

#include <CAEProject.h>

#include <filesystem>
#include <memory>
#include <unordered_set>

#include "host/system/Console.h"
#include "host/system/Database.h"

/// Project files: one project in one file, a SQLite 3 database that is changed in whole transactions only.
///
/// A file holds everything about the objects of the project and of the projects in it: identifiers (with
/// gaps, and the next one), order, kinds, names, keys, dates and users; directories, display names,
/// additional types and program references of projects; files with paths, types, formats, flags and location
/// types, their roles, and which mesh is active; metadata with values, types and units; what view items show.
/// It does not hold versions of objects, nor objects outside the tree, because this program creates neither.
/// Texts end at their first NUL; one that has more behind it in the file is damage.
///
/// The file is trusted in nothing: it is refused if it has any other table, index, view or trigger than this
/// program creates, or damage. Formats are
///
/// - 1: the tables without a checksum.
/// - 2: also the table "checksum" with a sum over all rows (DatabaseCheck.cpp), written with every save. The
///   number is new because a program that knows only format 1 would leave the old sum.
/// - 3: also the table "place", with the relative paths from the project file to the directories of projects.
///   Files of formats 1 and 2 become files of this format when the whole project is saved.
///
/// Directories and files are kept with their full paths. If there is a directory under the relative path,
/// that is the project's: the two were moved, or copied, together. It does not count if the first file that
/// the project has in its directory is missing there and is still found under its full path, because then the
/// project file alone was copied.
namespace host {

struct ProjectWriting;

/// The project in the file. Throws DatabaseError.
std::unique_ptr<CAEProject> ReadProjectFile(const std::filesystem::path& file, Console& console);

/// A project that is read from its file, to be changed there.
class ProjectFile {
public:
    /// Reads the file. With `forChange` no other program can write to it as long as this object exists;
    /// without it, for a dry run, it throws what it would throw with it. Throws DatabaseError.
    static ProjectFile Open(const std::filesystem::path& file, bool forChange, Console& console);
    ~ProjectFile();
    ProjectFile(ProjectFile&&) noexcept;
    ProjectFile& operator=(ProjectFile&&) noexcept;

    CAEProject& Project() const;
    /// Replaces what the file holds by the project, or by another one, in one transaction. This can be done
    /// once, and only if the file was opened for change. Throws DatabaseError, and then the file is
    /// unchanged.
    void Save(Console& console);
    void Save(CAEProject& project, Console& console);
    /// Saves the project without these files, of which no object has one attached and which have nothing
    /// below them.
    void SaveWithout(std::unordered_set<int> files, Console& console);
    /// The same if only keys of objects and display names of projects have changed since the file was opened.
    void SaveKeys(Console& console);

    /// Gives the project away, after which nothing but destroying this object is possible.
    std::unique_ptr<CAEProject> TakeProject();

private:
    struct State;
    explicit ProjectFile(std::unique_ptr<State> state);
    void Save(const ProjectWriting& writing, Console& console);
    std::unique_ptr<State> state_;
};

/// Throws the DatabaseError of CreateProjectFile if no new file can have this name: it exists, or it is too
/// long.
void RefuseNewName(const std::filesystem::path& file);

/// Writes the project to a new file, which gets its name when it is complete. Throws DatabaseError if the
/// name exists or the file cannot be written.
void CreateProjectFile(const std::filesystem::path& file, CAEProject& project, Console& console);

}  // namespace host

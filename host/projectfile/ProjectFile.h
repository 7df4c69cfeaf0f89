#pragma once

#include <CAEProject.h>

#include <filesystem>
#include <memory>

#include "host/system/Console.h"
#include "host/system/Database.h"

/// Project files: one project in one file, a SQLite 3 database that is changed by whole transactions only.
///
/// A file holds everything that the objects of the project and of the projects in it hold: identifiers (gaps
/// included, and where their sequence stands), order, kinds, names, keys, dates and users; directories,
/// display names, additional types and program references of projects; files with paths, types, formats,
/// flags and location types, their roles and which mesh is active; metadata with values, types and units;
/// what view items show. Versions of objects and objects that hang nowhere are not kept, because nothing in
/// this program makes any. Texts end at their first NUL.
namespace host {

/// The project in the file. Throws DatabaseError.
std::unique_ptr<CAEProject> ReadProjectFile(const std::filesystem::path& file, Console& console);

/// A project that was read from its file, to be changed there.
class ProjectFile {
public:
    /// Reads the file. With `forChange` no other program can write to it until the object is gone. Throws
    /// DatabaseError.
    static ProjectFile Open(const std::filesystem::path& file, bool forChange, Console& console);
    ~ProjectFile();
    ProjectFile(ProjectFile&&) noexcept;
    ProjectFile& operator=(ProjectFile&&) noexcept;

    CAEProject& Project() const;
    /// Puts the project as it is now, or another one, in place of what the file holds, in one transaction;
    /// once, and only for a file that was opened for change. Throws DatabaseError, and the file is as it
    /// was.
    void Save(Console& console);
    void Save(CAEProject& project, Console& console);

private:
    struct State;
    explicit ProjectFile(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

/// Writes the project to a new file, which appears under its name when it is whole. Throws DatabaseError
/// when there is something of that name already, or the file cannot be written.
void CreateProjectFile(const std::filesystem::path& file, CAEProject& project, Console& console);

}  // namespace host

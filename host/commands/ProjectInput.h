#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "Options.h"
#include "host/system/Console.h"

/// The project or document that a command reads.
namespace host {

enum class InputKind { Directory, ProjectFile, Document };

/// Whether the name ends as those of project files do: in .kvp.
bool HasProjectFileName(const std::string& name);

/// A file is a project file if it begins as SQLite databases do, or if its name ends in .kvp. Any other file
/// is a document, and so is - (the standard input). Everything else is a directory, whether it exists or not.
InputKind KindOfInput(const std::string& name);

/// A project in memory, read from a directory or a project file.
struct OpenedProject {
    std::unique_ptr<CAEProject> project;
    /// Entries of the directory that could not be read or named in a document.
    std::size_t unreadableCount = 0;
    /// Entries of descriptions in the directory that were left out.
    std::size_t problemCount = 0;
    /// What the user has left out of the directory.
    Exclusion exclusion = {};
};

/// Whether nothing is chosen of the input, or it is a directory. Otherwise says so.
bool IsSelectionPossible(const InputOptions& options, Console& console);

/// Why nothing can be chosen of two projects that are compared: neither is a directory. Empty if it can.
std::string SelectionComplaint(const Selection& selection, const std::string& first,
                               const std::string& second);

/// The selection for one of two projects that are compared: only directories have one.
Selection SelectionFor(const std::string& name, const Selection& selection);

/// Where one of two projects is a directory of which a part was chosen, and the other is a project file,
/// takes out of that in memory what was not chosen.
struct ComparedProject {
    const std::string& name;
    CAEProject* project;
    const Exclusion& exclusion;
};
void KeepComparedPart(const Selection& selection, const ComparedProject& first,
                      const ComparedProject& second);

/// Reads the project that the options name. Returns nothing, after a message, if the directory or the project
/// file cannot be read. The file `leftOut` of the directory is not read.
std::optional<OpenedProject> OpenProject(const InputOptions& options,
                                         const std::optional<std::filesystem::path>& leftOut,
                                         Console& console);

/// Ends a command: says how many entries could not be read, and returns the exit status that the options ask
/// for.
int Finish(const InputOptions& options, const OpenedProject& opened, Console& console);

/// A document, imported into a project in memory.
struct OpenedDocument {
    std::unique_ptr<CAEProject> project;
    /// The object that the root of the document became.
    CAEObject* root = nullptr;
};

/// Imports the document, and says what was left out. Returns no project, after a message, if the document
/// cannot be read or imported.
OpenedDocument OpenDocument(const std::string& name, Console& console);

/// The full path of the directory of a file. The files of a project that was not read from a directory are
/// expected there.
OuString DirectoryOfFile(const std::filesystem::path& file);

}  // namespace host

#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "Options.h"
#include "host/system/Console.h"

/// What the argument of a command that reads a project stands for.
namespace host {

enum class InputKind { Directory, ProjectFile, Document };

/// A file that begins as SQLite databases do, or whose name ends in .kvp, is taken for a project file; any
/// other file and - (the standard input) for a document; everything else for a directory, whether it is there
/// or not.
InputKind KindOfInput(const std::string& name);

/// A project in memory, read from a directory or from its file.
struct OpenedProject {
    std::unique_ptr<CAEProject> project;
    /// Entries of the directory that could not be read.
    std::size_t unreadableCount = 0;
};

/// Reads the project that the options name. Nothing, after a message, where the directory or the project file
/// cannot be read. `leftOut` is a file of the directory that is not read.
std::optional<OpenedProject> OpenProject(const InputOptions& options,
                                         const std::optional<std::filesystem::path>& leftOut,
                                         Console& console);

/// Ends a command that has done its work: says how much was left out, and gives the exit status that the
/// options ask for then.
int Finish(const InputOptions& options, const OpenedProject& opened, Console& console);

/// A document as an import makes objects of it.
struct OpenedDocument {
    std::unique_ptr<CAEProject> project;
    /// What the document's root became.
    CAEObject* root = nullptr;
};

/// Imports the document into a project that is in memory only. No project, after a message, where it cannot
/// be read or imported; what is left out is said.
OpenedDocument OpenDocument(const std::string& name, Console& console);

/// The whole path of the directory that a file lies in: where the files of a project are looked for that was
/// not read from a directory.
OuString DirectoryOfFile(const std::filesystem::path& file);

}  // namespace host

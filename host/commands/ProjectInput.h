#pragma once

#include <CAEProject.h>

#include <filesystem>
#include <memory>
#include <string>

#include "host/system/Console.h"

/// What the argument of a command that reads a project stands for.
namespace host {

enum class InputKind { Directory, ProjectFile, Document };

/// A file that begins as SQLite databases do, or whose name ends in .kvp, is taken for a project file; any
/// other file and - (the standard input) for a document; everything else for a directory, whether it is there
/// or not.
InputKind KindOfInput(const std::string& name);

/// The project in a project file. Null, after a message, where it cannot be read.
std::unique_ptr<CAEProject> OpenProjectFile(const std::string& name, Console& console);

/// A document as an import makes objects of it.
struct OpenedDocument {
    std::unique_ptr<CAEProject> project;
    /// What the document's root became.
    CAEObject* root = nullptr;
};

/// Imports the document into a project that is in memory only. No project, after a message, where it cannot
/// be read or imported; what is left out is said.
OpenedDocument OpenDocument(const std::string& name, Console& console);

}  // namespace host

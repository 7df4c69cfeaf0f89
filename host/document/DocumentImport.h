#pragma once

#include <CAEProject.h>
#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/ImportDocument.h>
#include <libjson.h>

#include <cstddef>
#include <memory>
#include <string>

#include "host/system/Console.h"

/// Documents and answers onto projects, with progress on the console.
namespace host {

/// Imports the document into the project of the target, as the options say, which this completes.
///
/// If the root of the document is of another kind than the target, it becomes a new object below the target.
/// Any other document is written onto the target itself, for example that of a project onto a project.
korvane::exchange::ImportReport ImportDocument(const JSONNode& document, CAEObject& target,
                                               korvane::exchange::ImportOptions options, Console& console);

/// The "type" of the document's root, if it would become that of the target, which is a project, and is
/// neither the target's own nor one that this program knows; empty otherwise.
std::string UnknownProjectType(const JSONNode& document, CAEObject& target);

/// How many keys of the document's objects and files are keys of the project's.
std::size_t CountKnownKeys(const JSONNode& document, CAEProject& project);

/// A new project in the directory, to import a document into. It has the name of the document if that is the
/// document of a project, otherwise `otherName`.
std::unique_ptr<CAEProject> MakeProjectFor(const JSONNode& document, const OuString& otherName,
                                           const OuString& directory);

/// Sets the keys from the answer on the objects of the project. An answer that fits no object changes
/// nothing.
korvane::exchange::AnswerReport ApplyAnswer(
    const JSONNode& answer, CAEProject& project, Console& console,
    korvane::exchange::KeyChoice keys = korvane::exchange::KeyChoice::kAll);

/// Says what an answer seems to be that fits no object.
void SayUseless(const korvane::exchange::AnswerReport& report, const std::string& file, Console& console);

}  // namespace host

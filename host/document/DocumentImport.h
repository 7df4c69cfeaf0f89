#pragma once

#include <CAEObject.h>
#include <CAEProject.h>
#include <libjson.h>

#include <cstddef>
#include <memory>
#include <string>

#include "host/system/Console.h"
#include "host/system/Notes.h"

/// Importing documents, with a report: the library passes over what it cannot use in silence, so the document
/// is compared with what became of it.
namespace host {

/// What an import did.
struct ImportReport {
    /// Objects that are no files.
    std::size_t objects = 0;
    std::size_t files = 0;
    /// Of the files, those that are attached to an object, and those that are children of one.
    std::size_t attachedFiles = 0;
    std::size_t childFiles = 0;
    std::size_t keys = 0;
    std::size_t viewItems = 0;
    /// Of the view items, those that show an object now.
    std::size_t linkedViewItems = 0;
    /// What was left out or changed on the way.
    Notes notes;

    /// Says it all, the first line beginning with the name of what was changed.
    void Say(const std::string& what, Console& console) const;
};

/// Imports the document into the project of the target.
///
/// A document whose root names another kind than the target's becomes a new object below the target. Any
/// other document, one of a project onto a project for instance, is written onto the target itself. Members
/// "dbkey" that are null are taken out first. Returns the object that the root was written onto, null if
/// there is none.
CAEObject* ImportDocument(JSONNode document, CAEObject& target, ImportReport& report, Console& console);

/// A project for a document to be imported into, which lies in the directory: with the document's own name
/// where that is the document of a project, with `otherName` where it is not.
std::unique_ptr<CAEProject> MakeProjectFor(const JSONNode& document, const OuString& otherName,
                                           const OuString& directory);

}  // namespace host

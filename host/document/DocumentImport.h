#pragma once

#include <CAEObject.h>
#include <CAEProject.h>
#include <libjson.h>

#include <memory>

#include "ImportReport.h"
#include "host/system/Console.h"

/// Importing documents, with a report: the library passes over what it cannot use in silence, so the document
/// is compared with what became of it.
namespace host {

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

#pragma once

#include <CAEObject.h>
#include <CAEProject.h>
#include <libjson.h>

#include <memory>

#include "ImportReport.h"
#include "host/system/Console.h"

/// Importing documents, with a report. The library silently ignores what it cannot use, so the document is
/// compared with what the import created.
namespace host {

/// Imports the document into the project of the target.
///
/// If the root of the document is of another kind than the target, it becomes a new object below the target.
/// Any other document is written onto the target itself, for example that of a project onto a project.
/// Members "dbkey" that are null are removed first. Returns the object that the root was written onto; null
/// if there is none.
CAEObject* ImportDocument(JSONNode document, CAEObject& target, ImportReport& report, Console& console);

/// A new project in the directory, to import a document into. It has the name of the document if that is the
/// document of a project, otherwise `otherName`.
std::unique_ptr<CAEProject> MakeProjectFor(const JSONNode& document, const OuString& otherName,
                                           const OuString& directory);

}  // namespace host

#pragma once

#include <CAEProject.h>

#include <unordered_set>

#include "Selection.h"
#include "UpdateReport.h"

namespace host {

/// What else a reading says.
struct ReadingNotes {
    /// Objects of the reading that have the names that users gave them in the directory.
    std::unordered_set<const CAEObject*> named = {};
    /// What the user has left out.
    Exclusion exclusion = {};
};

/// Brings a project in line with a new reading of its directory (DirectoryReader.h).
///
/// - What is still there (ProjectMatching.h) keeps its identifier, keys, date, creator, name and metadata,
/// except
///   for the entries that a reading sets, which get their new values, and names that a reading gave. A
///   file gets the type, format and date that it has now, and its role on the object that it belongs to now.
/// - What is new is created, and siblings get the order of the reading. What the reading does not know stays
///   behind the one that it was behind.
/// - What is missing stays as it is, or is removed with `isRemoving`. Only what came from the directory can
/// be
///   missing: files in the project's directory that have a creator, and studies, folders, parts and
///   iterations that have such a file, or something below them that has. An object stays if anything else is
///   below it or attached to it, or if a view item shows it.
/// - Files that the reading knows from before only (DirectoryReading) stay as they are.
///
/// With `isListing` the report lists everything that was changed or is missing with its values, and not only
/// the first of each kind. Another order of siblings is not listed.
/// Names that users gave in the directory are given on. What is left out is neither missing nor new.
///
/// The project's directory becomes that of the reading. The time is linear in the number of objects and
/// files, and the depth of nesting needs no stack.
ProjectUpdate UpdateProject(CAEProject& project, CAEProject& reading, bool isRemoving, bool isListing = false,
                            const ReadingNotes& notes = {});

}  // namespace host

#pragma once

#include <libjson.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "Export.h"
#include "Progress.h"
#include "Report.h"

class CAEObject;
class CAEProject;

namespace korvane::exchange {

struct CompareOptions {
    /// Whether dates of creation are left out.
    bool ignoreDates = false;
    /// Whether database keys are left out, as for a tree that no server has seen. Objects with the same key
    /// are compared with each other all the same.
    bool ignoreKeys = false;
    /// What a project is displayed as, in UTF-8, which the object model's interface does not show. An import
    /// reads the name of a project as its display name; so with this function, the name of a project in one
    /// tree may be the name or the display name of the other's. Without it, and where both are documents,
    /// names of projects are not compared.
    std::function<std::string(CAEProject& project)> displayNameOf = {};
    /// How sentences show the value of a metadata entry that has this unit, in UTF-8. The unit is that of the
    /// entry in a tree, or else its type, where an import puts it. Without this function, and where both are
    /// documents, values are texts in quotation marks.
    std::function<std::string(std::string_view value, std::string_view unit)> shownValue = {};
    /// Told of each object and file of the first that is compared with one of the second, by the identifiers
    /// of both, which are 0 in a document. A file that is attached to several objects comes once for each.
    std::function<void(int first, int second)> pairs = {};
    ProgressCallback progress = {};
};

/// What differs: entries with kAdded (only the second has it), kRemoved (only the first), kMoved and
/// kChanged.
///
/// Pointers lead into the second document, those of kRemoved into the first; where a tree is compared, into
/// the document that an export of it would write. An entry with kChanged points to the member or the metadata
/// entry that has changed, whether or not it stands there. `identifier` is that in the second tree, or in the
/// first where the second is a document; that of kRemoved is in the first. `subject` is the path of names
/// from the root, with slashes between them; the middle of a path with more than 40 names is left out. The
/// sentence begins with it.
///
/// An object that was added or removed has one entry, which says how many objects and files below it were
/// added or removed with it.
struct CompareReport : Report {
    /// Objects and files of the first that were compared with one of the second. A file that is attached to
    /// several objects counts once for each.
    std::size_t objects = 0;
    std::size_t files = 0;

    bool IsSame() const {
        return Count(Reason::kAdded) + Count(Reason::kRemoved) + Count(Reason::kMoved) +
                   Count(Reason::kChanged) ==
               0;
    }
};

/// Compares what the format carries of two objects with everything below them, or of an object and a
/// document, or of two documents: kinds, names, dates, keys, metadata and their values, children and files in
/// their order, and types, formats and location types of files. docs/document.md lists the rest under "What
/// the format does not carry". Documents are read as an import reads them: what it leaves out is not
/// compared.
///
/// The two roots are compared with each other, and otherwise:
/// - Objects with the same database key, wherever they are. A key that occurs twice in one of the trees
///   counts for nothing. View items, whose key is that of what they show, have none of their own. File
///   records are told apart from file objects among the children, which may be the same files.
/// - Of what is left below objects that are compared with each other: children of the same kind and name,
///   equal ones in their order. Files with a key that occurs once among those of each of the two objects,
///   then with the same name and type, then with the same name, in the same way.
/// - Of what is left then, what is next to the same sibling: behind it or else before it, and children of the
///   same kind only, in their order. So a changed name is a change. Objects that have different names and
///   different keys are never compared.
///
/// What is compared with an object below another parent was moved. Of children, or files, whose order has
/// changed, as few as possible were moved. Metadata entries are compared with those of the same name, in any
/// letter case; another order of them is one change of "metaData". A "studyTypeName" that differs only
/// because the study has another name is no difference of its own.
///
/// Nothing is changed. Time grows as n log n with the number of objects, files and metadata entries, whatever
/// their depth; no depth needs stack. Where the callback stops the work, the report has what was found until
/// then. Throws std::bad_alloc, and what the object model or a function of the options throws.
KORVANEEXCHANGE_API CompareReport Compare(CAEObject& first, CAEObject& second,
                                          const CompareOptions& options = {});
KORVANEEXCHANGE_API CompareReport Compare(CAEObject& first, const JSONNode& second,
                                          const CompareOptions& options = {});
KORVANEEXCHANGE_API CompareReport Compare(const JSONNode& first, CAEObject& second,
                                          const CompareOptions& options = {});
KORVANEEXCHANGE_API CompareReport Compare(const JSONNode& first, const JSONNode& second,
                                          const CompareOptions& options = {});

/// The report as JSON, as docs/report.schema.json says.
KORVANEEXCHANGE_API std::string ToJson(const CompareReport& report);

}  // namespace korvane::exchange

#pragma once

#include <libjson.h>

#include <cstddef>
#include <string>

#include "Export.h"
#include "Progress.h"
#include "Report.h"

class CAEObject;

namespace korvane::exchange {

enum class Match {
    /// Everything is made anew.
    kNever,
    /// An update: what is there already is brought in line.
    kByKey,
};

enum class Place {
    /// The root of the document is read onto the target, whatever their kinds are.
    kOnTarget,
    /// The root is read onto a target of its kind, and onto any where its kind is not known; otherwise it
    /// becomes a child of the target.
    kByKind,
};

struct ImportOptions {
    Match match = Match::kNever;
    Place place = Place::kOnTarget;
    /// In an update, objects below updated ones that their "children" lack are removed.
    bool remove = false;
    /// In an update, the root is what it is read onto, even if nothing else says so.
    bool sameRoot = false;
    /// Nothing is changed, and the report says what would be.
    bool dryRun = false;
    /// Whether file names may lead out of the project's directory.
    bool allowStrayFiles = false;
    /// Whether the report lists what every document has and no import uses.
    bool listFixed = true;
    ProgressCallback progress = {};
};

/// What an import did, or would do in a dry run. Counts of objects are without files.
struct ImportReport : Report {
    /// Members that had an effect, or whose values were there already.
    std::size_t membersTaken = 0;

    std::size_t objectsAdded = 0;
    std::size_t objectsMatched = 0;
    std::size_t objectsMoved = 0;
    /// With all objects below them. Entries with kRemoved name the topmost ones.
    std::size_t objectsRemoved = 0;
    std::size_t filesAdded = 0;
    std::size_t filesMatched = 0;
    /// Of the files that were added, those that are attached to an object, and those that are children of
    /// one.
    std::size_t filesAttached = 0;
    std::size_t filesAsChildren = 0;
    /// Keys that are on objects now and come from the document, whether they were set or there already. The
    /// key of what a view item shows is none of them.
    std::size_t keys = 0;
    std::size_t viewItems = 0;
    /// Of the view items, those that show an object.
    std::size_t viewItemsLinked = 0;
    /// Elements of "children" and "files" that were met, and those that became an object or a file.
    std::size_t elements = 0;
    std::size_t elementsTaken = 0;
    /// The identifier of the object that the root was read onto; 0 where there is none.
    int root = 0;

    /// Whether there was a root that could be read.
    bool hasRoot = false;
    /// Whether anything of the document fitted: its root and, if it has something below that, any of it.
    bool HasFitted() const { return hasRoot && (elements == 0 || elementsTaken != 0); }
    bool HasChanged() const {
        return Count(Reason::kAdded) + Count(Reason::kChanged) + Count(Reason::kMoved) +
                   Count(Reason::kRemoved) !=
               0;
    }
};

/// Reads the document onto the target, with a report.
///
/// With Match::kNever it does what caerest::json::DeserializeJsonToObject does, in the same order of calls
/// into the object model, except that keys that are null and files whose names lead out of the project's
/// directory are left out, and a document without "type" as a whole.
///
/// With Match::kByKey it updates. An element whose key an object below the target has becomes that object,
/// and moves where it hangs elsewhere; a root that is to become a child of the target stays where it hangs,
/// because a document does not say where that is. Any other element becomes the first object under its parent
/// that has its kind and name, that no element names by key, and that has no other key; else it is made. An
/// inner project is recognised by the "type" that an export writes for it, too. Names, keys, dates, metadata,
/// files and children are brought in line: a value is set only where it differs from what is there and from
/// what an export would write. Files are matched by key, else by name and type, among those of their object;
/// a file with the key that is attached elsewhere is attached here too, and several records of one file that
/// are alike make one file.
///
/// A key is a conflict, and nothing is done for an element with it, where it occurs twice among the elements
/// or in the tree, where file records with it differ, and where it belongs to an object of another kind, to a
/// file and an object, to an object that the element lies below or to one outside the target. So is the key
/// of a root whose target has another. What is in conflict or left out is not removed.
///
/// A root is refused, with an entry, and nothing is done, where it may be of another object than the one that
/// it would be read onto: without that object's key, if that is a project that has another name, and, when
/// objects are to be removed, if the root has "children" and nothing below it is recognised. A root without a
/// name has no other name. ImportOptions::sameRoot says that it is the same.
///
/// The order of objects that are there already stays as it is, and so do metadata entries and files that the
/// document lacks.
///
/// The document's node is never changed. What was done when something is thrown (std::bad_alloc, what the
/// object model or the callback throws) stays done.
KORVANEEXCHANGE_API ImportReport ImportDocument(const JSONNode& document, CAEObject& target,
                                                const ImportOptions& options = {});

/// The report as JSON, as docs/report.schema.json says.
KORVANEEXCHANGE_API std::string ToJson(const ImportReport& report);

}  // namespace korvane::exchange

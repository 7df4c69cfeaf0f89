#pragma once

#include <CAEObject.h>
#include <libjson.h>

#include <cstddef>
#include <string>
#include <vector>

/// Whether two documents are the same, apart from what an import does not carry: this checks a round trip.
namespace host {

/// A document to compare.
struct ComparedDocument {
    JSONNode node;
    /// The object that it was exported from, and that is there while it is compared; null if nobody knows. It
    /// says whether the root is a project, whose type may be any text, and what its projects are displayed
    /// as: an import reads the name of a project as its display name.
    CAEObject* object = nullptr;
};

struct DocumentDifferences {
    /// Objects and files that were compared; files may be children or file records.
    std::size_t objects = 0;
    std::size_t files = 0;
    /// All differences, and the first of them, each on one line.
    std::size_t differenceCount = 0;
    std::vector<std::string> differences;
};

/// Compares what a document carries to the objects that are created from it and back: kinds, names, dates,
/// keys, metadata with their values, children and files in their order, and types, formats and location types
/// of files. docs/document.md lists the rest under "What the format does not carry". The depth of nesting
/// needs no stack.
DocumentDifferences CompareDocuments(const ComparedDocument& first, const ComparedDocument& second);

}  // namespace host

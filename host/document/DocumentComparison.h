#pragma once

#include <libjson.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Whether two documents are the same but for what an import does not take over: the check of a round trip.
namespace host {

/// A document to be compared.
struct ComparedDocument {
    JSONNode node;
    /// The display name of a project of the document by its identifier, where it is known: an import takes a
    /// project's name for its display name.
    std::function<std::string(const std::string& identifier)> displayName;
};

struct DocumentDifferences {
    /// What was compared: objects, and files, be they children or records.
    std::size_t objects = 0;
    std::size_t files = 0;
    /// How many differences there are, and the first of them, each in one line.
    std::size_t differenceCount = 0;
    std::vector<std::string> differences;
};

/// Compares what is carried from a document to the objects that are made of it and back: kinds, names, dates,
/// keys, metadata with their values, children and files in their order, and types, formats and location types
/// of files. Left out is what docs/document.md lists under "What the format does not carry". Needs no stack
/// in proportion to the nesting.
DocumentDifferences CompareDocuments(const ComparedDocument& first, const ComparedDocument& second);

}  // namespace host

#pragma once

#include <CAEObject.h>
#include <CAEProject.h>
#include <libjson.h>

#include <memory>
#include <optional>
#include <string_view>

/// What the fuzzers of documents share: projects, exports, and the trip there and back.

/// A project named "project" in the directory "/studies", whose objects are created at one fixed time.
std::unique_ptr<CAEProject> MakeProject();

/// Adds the objects onto which documents are imported and answers applied: one of each kind that treats files
/// or children in a way of its own, and a file.
void AddTargets(CAEProject& project);

/// Reads the bytes as JSON; nothing where they are not.
std::optional<JSONNode> ReadBytes(std::string_view bytes);

/// The document of the object, which both ways of the serializer write alike.
JSONNode ExportDocument(CAEObject& object);

/// Exports the object, imports the document into another project and exports that: the documents are the same
/// but for what the format does not carry. A second trip then changes nothing at all but identifiers.
void ExpectTrip(CAEObject& object);

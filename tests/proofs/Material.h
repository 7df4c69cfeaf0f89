#pragma once

#include <korvaneexchange/Report.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "support/ModelBuilders.h"

/// What the functions of the library are called with.
struct Material {
    /// Puts objects below the project, which has none before. The first child is the one that has versions.
    std::function<void(TestProject& project)> fill;
    /// A document that is imported onto a project without objects.
    std::string document;
    /// An answer for the objects of `fill`.
    std::string answer;
    /// An array of versions of the first child.
    std::string versions;
    /// Changes a little of what `fill` has put there.
    std::function<void(TestProject& project)> change;
    /// A document that differs a little from the first one.
    std::function<std::string()> otherDocument;
    /// What a function has to report.
    std::function<korvane::exchange::Report()> report;
};

/// Every kind, role and section, a few dozen objects. Every object, metadata record and key has a text so
/// long that libjson takes a block of its own for it: a node that is lost is seen as a block that is not
/// given back.
Material MiddleSized();

/// A middle-sized one that the process makes once.
const Material& TheMaterial();

/// How the levels of a deep tree hang on each other.
enum class Shape {
    /// Objects below objects.
    kChildren,
    /// Arrays in arrays, under every section; in the object model and in answers files of files.
    kArrays,
    /// Objects in the metadata of objects; in the object model, where metadata has no levels, as many
    /// entries.
    kMetadata,
    /// All of them in turn, and children that have all of them.
    kMixed,
};
inline constexpr std::size_t kShapes = 4;

/// Each level has this once for each section that has levels: it is the name of an object, file or metadata
/// entry, a text, or the beginning of a key.
inline constexpr const char* kNameOfLevel = "level";
/// What the innermost level of a document has. Its text is so long that libjson takes a block of its own for
/// it.
const std::string& Innermost();
/// What it has in the other document.
inline constexpr std::string_view kOtherInnermost = R"({"type":"CAETAG"})";

/// Nested that many levels deep.
Material Deep(Shape shape, int levels);

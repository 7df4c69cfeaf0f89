#pragma once

#include <OuString.h>
#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/Compare.h>
#include <korvaneexchange/ImportDocument.h>
#include <libjson.h>

#include <filesystem>
#include <iosfwd>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Material.h"
#include "support/TemporaryDirectory.h"

/// What a function is called with.
enum class Needs {
    /// A project with objects.
    kObjects,
    /// The same, and the first child has a version. Its node is given.
    kObjectsWithVersion,
    /// A document as a node and as text, and a project without objects.
    kDocument,
    /// An answer as a node, and the project with the objects that it is for.
    kAnswer,
    /// An array of versions as a node, and a project with objects.
    kVersions,
    /// A document as text and in a file.
    kFile,
    /// Two projects that differ a little, and the document of each.
    kTwoTrees,
    /// Two documents that differ a little.
    kTwoDocuments,
    /// A report of each kind; one that is deep is long.
    kReports,
    /// A document as text alone.
    kText,
};

/// One call's arguments and results.
struct Scene {
    Scene(const Material& material, Needs needs);

    /// Notes what is there before a call that adds something.
    void Begin();
    /// The first child, which has the versions.
    CAEObject& Subject() const;
    /// The nodes that no call may change, as text.
    std::string NodesAsText() const;

    TestProject project;
    json_string text;
    JSONNode node;
    /// What the first ones are compared with.
    TestProject otherProject;
    JSONNode otherNode;
    std::optional<TemporaryDirectory> folder;
    std::filesystem::path file;
    korvane::exchange::ImportReport importReport;
    korvane::exchange::AnswerReport answerReport;
    korvane::exchange::CompareReport compareReport;

    JSONNode given;
    OuString givenText;
    json_string givenJson;
    std::string givenUtf8;
    std::map<std::string, std::string> givenKeys;
    korvane::exchange::CompareReport givenReport;
    std::vector<std::pair<int, int>> givenPairs;

    std::size_t childrenBefore = 0;
    std::size_t filesBefore = 0;
};

/// Whether a function asks the object model anything.
enum class Asks { kObjectModel, kNobody };

/// How many of the names of levels are in what a call gave.
struct Reach {
    int ofEachLevel;
    /// Besides those, however many levels there are.
    int ofAll = 0;
};
/// The same for each shape, in their order.
struct Reaches {
    Reach ofShapes[kShapes];
};

/// A function of the libraries or of libjson.
struct Function {
    const char* name;
    /// How its declaration begins among the names that a library exports; null for what neither exports.
    const char* exported;
    Asks asks;
    Needs needs;
    void (*call)(Scene& scene);
    /// What the call gave, as a text that is the same for every call that did all its work.
    std::string (*outcome)(Scene& scene);
    Reaches reaches;
    /// For a call whose outcome has no levels: fails the test unless the call reaches the innermost ones.
    void (*expectInnermost)(Scene& scene) = nullptr;
    /// A call that failed half-way may be made again and then does all its work.
    bool isRepeatable = true;
    /// A call throws on its way to its outcome. Exceptions may take their memory where it is counted, and
    /// from a reserve if there is none.
    bool throwsOnItsWay = false;
};

/// For messages of GoogleTest.
void PrintTo(const Function& function, std::ostream* out);

/// The functions that the proofs go through; a new one is a line more in the table behind this.
std::span<const Function> Functions();

/// Fails the test unless the trees of the scene's projects are whole, as below.
void ExpectWhole(Scene& scene);
/// Fails the test unless the tree of the project can be walked, every object is found where it says that it
/// hangs, and the whole can be written.
void ExpectWhole(TestProject& project);

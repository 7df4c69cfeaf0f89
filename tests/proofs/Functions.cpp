#include "Functions.h"

#include <gtest/gtest.h>
#include <korvaneexchange/ParseDocument.h>
#include <korvaneexchange/PrintableText.h>
#include <korvaneexchange/Text.h>
#include <korvaneexchange/WriteDocument.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <initializer_list>
#include <ostream>
#include <utility>
#include <vector>

#include "Allocations.h"
#include "objectjson/CAEObjectJson.h"
#include "platform/korvane/Ask.h"

namespace exchange = korvane::exchange;

namespace {

std::string Text(const json_string& text) {
    return {text.data(), text.size()};
}

std::string_view View(const json_string& text) {
    return {text.data(), text.size()};
}

/// The text without the values of "id", which differ from one import to the next.
std::string WithoutIdentifiers(const std::string& document) {
    constexpr std::string_view kMember = R"("id":")";
    std::string text;
    std::size_t copied = 0;
    for (std::size_t at = document.find(kMember); at != std::string::npos;
         at = document.find(kMember, copied)) {
        text.append(document, copied, at + kMember.size() - copied);
        copied = document.find('"', at + kMember.size());
    }
    return text.append(document, copied);
}

std::string Written(CAEObject& object) {
    return Text(JsonSerializer(&object).GetJson().write());
}

std::string GivenDocument(Scene& scene) {
    return Text(scene.given.write());
}

std::string GivenJson(Scene& scene) {
    return Text(scene.givenJson);
}

std::string GivenText(Scene& scene) {
    return scene.givenText.GetAnsiBuffer();
}

std::string GivenUtf8(Scene& scene) {
    return scene.givenUtf8;
}

std::string GivenKeys(Scene& scene) {
    std::string text;
    for (const auto& [id, key] : scene.givenKeys) {
        text.append(id).append("=").append(key).append("\n");
    }
    return text;
}

/// What the last call put below the project, and what it set on the project itself.
std::string Added(Scene& scene) {
    CAEProject& project = *scene.project;
    std::string text = NameOf(project) + "\n" + CreatedDateOf(project) + "\n";
    text += Text(CAEObjectJson(&project).ExportMetadata().write()) + "\n";
    const std::vector<CAEObject*> children = ChildrenOf(project);
    for (std::size_t index = scene.childrenBefore; index < children.size(); ++index) {
        text += Written(*children[index]) + "\n";
    }
    const std::vector<int> files = FileIdsOf(project);
    for (std::size_t index = scene.filesBefore; index < files.size(); ++index) {
        text += Written(*project.getFile(files[index])) + "\n";
    }
    return WithoutIdentifiers(text);
}

/// Of files, too, which no walk over the children meets.
std::string KeysOfObjects(Scene& scene) {
    std::string text = TextOf(korvane::GetDisplayName(*scene.project)) + "\n";
    for (int id = 1; CAEObject* const object = scene.project->getCAEObject(id); ++id) {
        const OuString key = object->getDBKey();
        text.append(std::to_string(id)).append("=").append(key.GetAnsiBuffer()).append("\n");
    }
    return text;
}

std::string WholeProject(Scene& scene) {
    std::string text = WithoutIdentifiers(Written(*scene.project));
    for (const auto& [majorNumber, minorNumber] : VersionsOf(scene.Subject())) {
        text += std::to_string(majorNumber) + "." + std::to_string(minorNumber) + "\n";
    }
    return text;
}

/// What a comparison found, and a line for each pair with the names of both. An object of a document has no
/// identifier by which its name could be found: there each pair stands for a level.
std::string GivenComparison(Scene& scene) {
    const auto name = [](TestProject& project, int id) {
        return id == 0 ? std::string() : NameOf(*project->getCAEObject(id));
    };
    std::string text = ToJson(scene.givenReport) + "\n";
    for (const auto& [first, second] : scene.givenPairs) {
        text += first == 0 && second == 0
                    ? kNameOfLevel
                    : name(scene.project, first) + "=" + name(scene.otherProject, second);
        text += "\n";
    }
    return text;
}

/// Compares with all that the options can ask for.
template <typename First, typename Second>
void Compare(Scene& scene, First& first, Second& second) {
    scene.givenPairs.clear();
    scene.givenReport = exchange::Compare(
        first, second,
        {.displayNameOf = [](CAEProject& project) { return TextOf(korvane::GetDisplayName(project)); },
         .shownValue = [](std::string_view value,
                          std::string_view unit) { return std::string(value).append(unit); },
         .pairs = [&](int one, int other) { scene.givenPairs.emplace_back(one, other); },
         .progress = [](const exchange::Progress&) { return true; }});
}

void Write(Scene& scene, exchange::Layout layout) {
    scene.givenUtf8.clear();
    exchange::WriteDocument(*scene.project,
                            {.layout = layout, .progress = [](const exchange::Progress&) { return true; }},
                            [&](std::string_view page) { scene.givenUtf8 += page; });
}

/// Why the text is not a document, and where.
std::string FaultOf(std::string_view text) {
    try {
        exchange::ParseDocument(text);
    } catch (const exchange::DocumentError& error) {
        return std::string(error.what()) + ", offset " + std::to_string(error.Offset()) + " of " +
               std::to_string(text.size());
    }
    return "no fault";
}

/// The node of a version as a driver gives it, with the member that the converter then takes away.
JSONNode NodeOfVersion(CAEObject* version) {
    JSONNode node = CAEObjectJson(version).GetJsonNode();
    node.push_back(JSONNode("versions", ""));
    return node;
}

/// A member of its own, so that the section counts as a document.
JSONNode Holding(const JSONNode& section) {
    JSONNode holder(JSON_NODE);
    holder.push_back(section);
    return holder;
}

/// The texts of documents that are like the scene's, but for one of their innermost levels.
std::vector<json_string> WithOtherInnermost(const Scene& scene, std::string_view other) {
    std::vector<json_string> texts;
    const std::string whole = Text(scene.text);
    for (std::size_t at = whole.find(Innermost()); at != std::string::npos;
         at = whole.find(Innermost(), at + 1)) {
        std::string changed = whole;
        changed.replace(at, Innermost().size(), other);
        texts.emplace_back(changed.data(), changed.size());
    }
    EXPECT_FALSE(texts.empty());
    return texts;
}

void ExpectInnermostChecked(Scene& scene) {
    for (const json_string& text : WithOtherInnermost(scene, R"({"type":"CAEPART",})")) {
        EXPECT_FALSE(libjson::is_valid(text));
    }
}

void ExpectInnermostFaultFound(Scene& scene) {
    constexpr std::string_view kFault = R"({"type":"CAEPART",})";
    for (const json_string& text : WithOtherInnermost(scene, kFault)) {
        try {
            exchange::ParseDocument(View(text));
            ADD_FAILURE() << "there is no fault";
        } catch (const exchange::DocumentError& error) {
            const std::size_t place = error.Offset() + 1;
            EXPECT_EQ(View(text).substr(place - kFault.size(), kFault.size()), kFault);
        }
    }
}

void ExpectInnermostCompared(Scene& scene) {
    for (const json_string& text : WithOtherInnermost(scene, R"({"type":"CAETAG"})")) {
        EXPECT_FALSE(scene.node == libjson::parse(text));
    }
}

void ExpectInnermostFreed(Scene& scene) {
    const std::size_t before = allocations::InUse(allocations::Source::kLibjson);
    JSONNode node = libjson::parse(scene.text);
    const std::size_t innermost = WithOtherInnermost(scene, "").size();
    EXPECT_GE(allocations::InUse(allocations::Source::kLibjson), before + innermost);
    node.clear();
    EXPECT_EQ(allocations::InUse(allocations::Source::kLibjson), before);
}

constexpr Reaches kAllLevels = {{{1}, {1}, {1}, {1}}};
/// The document has arrays and mixtures in four sections.
constexpr Reaches kAllSections = {{{1}, {4}, {1}, {4}}};
/// Arrays in the place of objects become nothing. Metadata is read one level deep, and so are file records,
/// because their file is not in a project yet.
constexpr Reaches kImported = {{{1}, {0}, {0, 1}, {1, 1}}};
/// The same, and the project has every level besides.
constexpr Reaches kImportedBesideObjects = {{{2}, {1}, {1, 1}, {2, 1}}};
/// Answers are for objects, and metadata has none.
constexpr Reaches kAnswered = {{{1}, {1}, {0, 1}, {1}}};
/// A document that is compared is read as it is imported, and so is the one that an object would have. Each
/// pair of objects has two names, and the innermost, where it is reached, is reported as different, with a
/// path of forty names twice. Of metadata each entry is reported with four names, but the object has one
/// level less.
constexpr Reaches kComparedObjects = {{{2, 2 * 39}, {0, 4}, {4, 2 - 4}, {0, 4}}};
/// The same with one name for each pair.
constexpr Reaches kComparedWithDocument = {{{1, 2 * 39}, {0, 2}, {4, 1 - 4}, {0, 2}}};
/// The root and its file are pairs as well, and so is the file of each level. The innermost is reported as
/// removed and as added, each with such a path twice, in which it and the root have other names.
constexpr Reaches kComparedDocuments = {{{1, 1 + 4 * 38}, {0, 2}, {0, 1}, {2, 2 + 4 * 38}}};
/// Each entry has it in its subject and in its sentence.
constexpr Reaches kReported = {{{2}, {2}, {2}, {2}}};
constexpr Reaches kNotSeen = {};
constexpr const char* kNotExported = nullptr;

constexpr Function kFunctions[] = {
    {"GetJson", "JsonSerializer::GetJson(", Asks::kObjectModel, Needs::kObjects,
     [](Scene& s) { s.given = JsonSerializer(&*s.project).GetJson(); }, GivenDocument, kAllLevels},
    {"GetJsonString", "JsonSerializer::GetJsonString(", Asks::kObjectModel, Needs::kObjects,
     [](Scene& s) { s.givenText = JsonSerializer(&*s.project).GetJsonString(); }, GivenText, kAllLevels},
    {"ExportVersions", kNotExported, Asks::kObjectModel, Needs::kObjectsWithVersion,
     [](Scene& s) { s.given = Holding(CAEObjectJson(s.node, &s.Subject()).ExportVersions(NodeOfVersion)); },
     GivenDocument, kAllLevels},
    {"DeserializeJsonToObject", "caerest::json::DeserializeJsonToObject(", Asks::kObjectModel,
     Needs::kDocument, [](Scene& s) { caerest::json::DeserializeJsonToObject(s.node, &*s.project); }, Added,
     kImported},
    {"ImportDocument", "korvane::exchange::ImportDocument(", Asks::kObjectModel, Needs::kDocument,
     [](Scene& s) { exchange::ImportDocument(s.node, *s.project); }, Added, kImported},
    {"ImportDocument_Update", "korvane::exchange::ImportDocument(", Asks::kObjectModel, Needs::kDocument,
     [](Scene& s) {
         exchange::ImportDocument(s.node, *s.project, {.match = exchange::Match::kByKey, .remove = true});
     },
     Added, kImported,
     // An object that was made and got no name is not recognised.
     nullptr, false},
    {"ApplyAnswer", "korvane::exchange::ApplyAnswer(", Asks::kObjectModel, Needs::kAnswer,
     [](Scene& s) { exchange::ApplyAnswer(s.node, *s.project); }, KeysOfObjects, kAnswered},
    {"ImportVersions", kNotExported, Asks::kObjectModel, Needs::kVersions,
     [](Scene& s) { CAEObjectJson(JSONNode(), &s.Subject()).ImportVersions(s.node); }, WholeProject,
     kImportedBesideObjects,
     // What stands in the object's place when a record fails stays there.
     nullptr, false},
    {"ApplyJsonResponseOnObject", "caerest::json::ApplyJsonResponseOnObject(", Asks::kObjectModel,
     Needs::kAnswer, [](Scene& s) { caerest::json::ApplyJsonResponseOnObject(s.node, &*s.project); },
     KeysOfObjects, kAnswered},
    {"ParseNode", "caerest::json::util::ParseNode(", Asks::kNobody, Needs::kAnswer,
     [](Scene& s) { caerest::json::util::ParseNode(s.node, s.givenKeys); }, GivenKeys, kAnswered},
    {"WriteDocument", "korvane::exchange::WriteDocument(", Asks::kObjectModel, Needs::kObjects,
     [](Scene& s) { Write(s, exchange::Layout::kCompact); }, GivenUtf8, kAllLevels},
    {"WriteDocument_Indented", "korvane::exchange::WriteDocument(", Asks::kObjectModel, Needs::kObjects,
     [](Scene& s) { Write(s, exchange::Layout::kIndented); }, GivenUtf8, kAllLevels},
    {"Compare_Objects", "korvane::exchange::Compare(CAEObject&, CAEObject&,", Asks::kObjectModel,
     Needs::kTwoTrees, [](Scene& s) { Compare(s, *s.project, *s.otherProject); }, GivenComparison,
     kComparedObjects},
    {"Compare_ObjectWithDocument", "korvane::exchange::Compare(CAEObject&, JSONNode const&,",
     Asks::kObjectModel, Needs::kTwoTrees, [](Scene& s) { Compare(s, *s.project, s.otherNode); },
     GivenComparison, kComparedWithDocument},
    {"Compare_DocumentWithObject", "korvane::exchange::Compare(JSONNode const&, CAEObject&,",
     Asks::kObjectModel, Needs::kTwoTrees, [](Scene& s) { Compare(s, s.node, *s.otherProject); },
     GivenComparison, kComparedWithDocument},
    {"Compare_Documents", "korvane::exchange::Compare(JSONNode const&, JSONNode const&,", Asks::kNobody,
     Needs::kTwoDocuments, [](Scene& s) { Compare(s, s.node, s.otherNode); }, GivenComparison,
     kComparedDocuments},
    {"ParseDocument", "korvane::exchange::ParseDocument(", Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = exchange::ParseDocument(View(s.text)); }, GivenDocument, kAllSections},
    {"ParseDocument_Fault", "korvane::exchange::ParseDocument(", Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.givenUtf8 = FaultOf(View(s.text).substr(0, s.text.size() - 1)); }, GivenUtf8, kNotSeen,
     ExpectInnermostFaultFound, true, true},
    {"ReadDocument", "korvane::exchange::ReadDocument(", Asks::kNobody, Needs::kFile,
     [](Scene& s) { s.given = exchange::ReadDocument(s.file); }, GivenDocument, kAllSections},
    {"ToJson_Import", "korvane::exchange::ToJson(korvane::exchange::ImportReport const&", Asks::kNobody,
     Needs::kReports, [](Scene& s) { s.givenUtf8 = ToJson(s.importReport); }, GivenUtf8, kReported},
    {"ToJson_Answer", "korvane::exchange::ToJson(korvane::exchange::AnswerReport const&", Asks::kNobody,
     Needs::kReports, [](Scene& s) { s.givenUtf8 = ToJson(s.answerReport); }, GivenUtf8, kReported},
    {"ToJson_Compare", "korvane::exchange::ToJson(korvane::exchange::CompareReport const&", Asks::kNobody,
     Needs::kReports, [](Scene& s) { s.givenUtf8 = ToJson(s.compareReport); }, GivenUtf8, kReported},
    {"FromUtf8", "korvane::exchange::FromUtf8(", Asks::kNobody, Needs::kText,
     [](Scene& s) { s.givenText = exchange::FromUtf8(View(s.text)); }, GivenText, kAllSections},
    {"ToUtf8", "korvane::exchange::ToUtf8(", Asks::kNobody, Needs::kText,
     [](Scene& s) { s.givenUtf8 = exchange::ToUtf8(OuString(s.text.c_str(), 0)); }, GivenUtf8, kAllSections},
    {"Printable", "korvane::exchange::Printable(", Asks::kNobody, Needs::kText,
     [](Scene& s) { s.givenUtf8 = exchange::Printable(View(s.text)); }, GivenUtf8, kAllSections},
    {"parse", kNotExported, Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = libjson::parse(s.text); }, GivenDocument, kAllSections},
    {"is_valid", kNotExported, Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = Holding(JSONNode("valid", libjson::is_valid(s.text))); }, GivenDocument,
     kNotSeen, ExpectInnermostChecked},
    {"write", kNotExported, Asks::kNobody, Needs::kDocument, [](Scene& s) { s.givenJson = s.node.write(); },
     GivenJson, kAllSections},
    {"write_formatted", kNotExported, Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.givenJson = s.node.write_formatted(); }, GivenJson, kAllSections},
    {"duplicate", kNotExported, Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = s.node.duplicate(); }, GivenDocument, kAllSections},
    {"operator_equal", kNotExported, Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = Holding(JSONNode("same", s.node == libjson::parse(s.text))); }, GivenDocument,
     kNotSeen, ExpectInnermostCompared},
    {"as_array_as_node", kNotExported, Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = Holding(s.node.as_array().as_node().as_array()); }, GivenDocument,
     kAllSections},
    {"clear", kNotExported, Asks::kNobody, Needs::kDocument,
     [](Scene& s) {
         JSONNode copy = s.node.duplicate();
         copy.clear();
         s.given = copy;
     },
     GivenDocument, kNotSeen, ExpectInnermostFreed},
};

const std::string& InputOf(const Material& material, Needs needs) {
    static const std::string nothing = "{}";
    switch (needs) {
        case Needs::kDocument:
        case Needs::kFile:
        case Needs::kTwoDocuments:
        case Needs::kText:
            return material.document;
        case Needs::kAnswer:
            return material.answer;
        case Needs::kVersions:
            return material.versions;
        default:
            return nothing;
    }
}

bool HasObjects(Needs needs) {
    switch (needs) {
        case Needs::kObjects:
        case Needs::kObjectsWithVersion:
        case Needs::kAnswer:
        case Needs::kVersions:
        case Needs::kTwoTrees:
            return true;
        default:
            return false;
    }
}

}  // namespace

Scene::Scene(const Material& material, Needs needs) {
    if (HasObjects(needs)) {
        material.fill(project);
    }
    const std::string& input = InputOf(material, needs);
    text.assign(input.data(), input.size());
    if (needs != Needs::kText) {
        node = libjson::parse(text);
    }
    switch (needs) {
        case Needs::kObjectsWithVersion:
            EXPECT_EQ(Subject().createNewVersion(1, 0, true, false), 0);
            // Its files are those of every version.
            node = JsonSerializer(&Subject()).GetJson();
            break;
        case Needs::kFile:
            file = folder.emplace().Write("document.json", input);
            break;
        case Needs::kTwoTrees:
            material.fill(otherProject);
            material.change(otherProject);
            node = JsonSerializer(&*project).GetJson();
            otherNode = JsonSerializer(&*otherProject).GetJson();
            break;
        case Needs::kTwoDocuments:
            otherNode = exchange::ParseDocument(material.otherDocument());
            break;
        case Needs::kReports:
            for (exchange::Report* const report :
                 std::initializer_list<exchange::Report*>{&importReport, &answerReport, &compareReport}) {
                *report = material.report();
            }
            break;
        default:
            break;
    }
}

void Scene::Begin() {
    childrenBefore = ChildrenOf(*project).size();
    filesBefore = FileIdsOf(*project).size();
}

CAEObject& Scene::Subject() const {
    return *project->getCAEObject(2);
}

std::string Scene::NodesAsText() const {
    return Text(node.write()) + "\n" + Text(otherNode.write());
}

void PrintTo(const Function& function, std::ostream* out) {
    *out << function.name;
}

std::span<const Function> Functions() {
    return kFunctions;
}

void ExpectWhole(Scene& scene) {
    ExpectWhole(scene.project);
    ExpectWhole(scene.otherProject);
}

void ExpectWhole(TestProject& project) {
    std::vector<CAEObject*> above;
    int misplaced = 0;
    korvane::VisitTree(*project, [&](CAEObject& object, int depth) {
        above.resize(static_cast<std::size_t>(depth));
        CAEProject* const owner = object.getProject();
        misplaced += owner == nullptr || owner->getCAEObject(object.getID()) != &object ? 1 : 0;
        misplaced += !above.empty() && object.getParent() != above.back() ? 1 : 0;
        above.push_back(&object);
    });
    EXPECT_EQ(misplaced, 0);
    const JSONNode document = JsonSerializer(&*project).GetJson();
    EXPECT_TRUE(libjson::parse(document.write()) == document);
}

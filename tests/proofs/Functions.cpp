#include "Functions.h"

#include <gtest/gtest.h>
#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/ImportDocument.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <ostream>
#include <utility>
#include <vector>

#include "Allocations.h"
#include "objectjson/CAEObjectJson.h"
#include "platform/korvane/Ask.h"

namespace {

std::string Text(const json_string& text) {
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
constexpr Reaches kNotSeen = {};

constexpr Function kFunctions[] = {
    {"GetJson", Asks::kObjectModel, Needs::kObjects,
     [](Scene& s) { s.given = JsonSerializer(&*s.project).GetJson(); }, GivenDocument, kAllLevels},
    {"GetJsonString", Asks::kObjectModel, Needs::kObjects,
     [](Scene& s) { s.givenText = JsonSerializer(&*s.project).GetJsonString(); }, GivenText, kAllLevels},
    {"ExportVersions", Asks::kObjectModel, Needs::kObjectsWithVersion,
     [](Scene& s) { s.given = Holding(CAEObjectJson(s.node, &s.Subject()).ExportVersions(NodeOfVersion)); },
     GivenDocument, kAllLevels},
    {"DeserializeJsonToObject", Asks::kObjectModel, Needs::kDocument,
     [](Scene& s) { caerest::json::DeserializeJsonToObject(s.node, &*s.project); }, Added, kImported},
    {"ImportDocument", Asks::kObjectModel, Needs::kDocument,
     [](Scene& s) { korvane::exchange::ImportDocument(s.node, *s.project); }, Added, kImported},
    {"ImportDocument_Update", Asks::kObjectModel, Needs::kDocument,
     [](Scene& s) {
         korvane::exchange::ImportDocument(s.node, *s.project,
                                           {.match = korvane::exchange::Match::kByKey, .remove = true});
     },
     Added, kImported,
     // An object that was made and got no name is not recognised.
     false},
    {"ApplyAnswer", Asks::kObjectModel, Needs::kAnswer,
     [](Scene& s) { korvane::exchange::ApplyAnswer(s.node, *s.project); }, KeysOfObjects, kAnswered},
    {"ImportVersions", Asks::kObjectModel, Needs::kVersions,
     [](Scene& s) { CAEObjectJson(JSONNode(), &s.Subject()).ImportVersions(s.node); }, WholeProject,
     kImportedBesideObjects,
     // What stands in the object's place when a record fails stays there.
     false},
    {"ApplyJsonResponseOnObject", Asks::kObjectModel, Needs::kAnswer,
     [](Scene& s) { caerest::json::ApplyJsonResponseOnObject(s.node, &*s.project); }, KeysOfObjects,
     kAnswered},
    {"ParseNode", Asks::kNobody, Needs::kAnswer,
     [](Scene& s) { caerest::json::util::ParseNode(s.node, s.givenKeys); }, GivenKeys, kAnswered},
    {"parse", Asks::kNobody, Needs::kDocument, [](Scene& s) { s.given = libjson::parse(s.text); },
     GivenDocument, kAllSections},
    {"is_valid", Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = Holding(JSONNode("valid", libjson::is_valid(s.text))); }, GivenDocument,
     kNotSeen, true, ExpectInnermostChecked},
    {"write", Asks::kNobody, Needs::kDocument, [](Scene& s) { s.givenJson = s.node.write(); }, GivenJson,
     kAllSections},
    {"write_formatted", Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.givenJson = s.node.write_formatted(); }, GivenJson, kAllSections},
    {"duplicate", Asks::kNobody, Needs::kDocument, [](Scene& s) { s.given = s.node.duplicate(); },
     GivenDocument, kAllSections},
    {"operator_equal", Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = Holding(JSONNode("same", s.node == libjson::parse(s.text))); }, GivenDocument,
     kNotSeen, true, ExpectInnermostCompared},
    {"as_array_as_node", Asks::kNobody, Needs::kDocument,
     [](Scene& s) { s.given = Holding(s.node.as_array().as_node().as_array()); }, GivenDocument,
     kAllSections},
    {"clear", Asks::kNobody, Needs::kDocument,
     [](Scene& s) {
         JSONNode copy = s.node.duplicate();
         copy.clear();
         s.given = copy;
     },
     GivenDocument, kNotSeen, true, ExpectInnermostFreed},
};

const std::string& InputOf(const Material& material, Needs needs) {
    static const std::string nothing = "{}";
    switch (needs) {
        case Needs::kDocument:
            return material.document;
        case Needs::kAnswer:
            return material.answer;
        case Needs::kVersions:
            return material.versions;
        default:
            return nothing;
    }
}

}  // namespace

Scene::Scene(const Material& material, Needs needs) {
    if (needs != Needs::kDocument) {
        material.fill(project);
    }
    if (needs == Needs::kObjectsWithVersion) {
        EXPECT_EQ(Subject().createNewVersion(1, 0, true, false), 0);
    }
    const std::string& input = InputOf(material, needs);
    text.assign(input.data(), input.size());
    node = libjson::parse(text);
    if (needs == Needs::kObjectsWithVersion) {
        // Its files are those of every version.
        node = JsonSerializer(&Subject()).GetJson();
    }
}

void Scene::Begin() {
    childrenBefore = ChildrenOf(*project).size();
    filesBefore = FileIdsOf(*project).size();
}

CAEObject& Scene::Subject() const {
    return *project->getCAEObject(2);
}

void PrintTo(const Function& function, std::ostream* out) {
    *out << function.name;
}

std::span<const Function> Functions() {
    return kFunctions;
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

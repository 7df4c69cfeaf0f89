#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <string>

#include "platform/korvane/Ask.h"
#include "support/Documents.h"
#include "support/ModelBuilders.h"
#include "support/TextUnits.h"

// The round trip of a host: export, text, an answer with keys, import into another project, export again.

namespace {

std::string MemberText(const JSONNode& node, const char* name) {
    const auto member = node.find(name);
    return member == node.end() ? std::string() : std::string(member->as_string().c_str());
}

std::string Document(CAEObject& object) {
    std::string text = JsonSerializer(&object).GetJsonString().GetAnsiBuffer();
    SaveDocument(text);
    return text;
}

void Import(const std::string& text, CAEObject& object) {
    JSONNode node = libjson::parse(text.c_str());
    caerest::json::DeserializeJsonToObject(node, &object);
}

/// Where a node stands in its document.
enum class Place { kRoot, kChild, kFile };

/// Whether an import gives the member back as it was exported.
bool IsCarried(const std::string& member, const std::string& type, Place place) {
    if (member == "id" || member == "createdBy") {
        return false;
    }
    if (member == "name") {
        // A project takes it as its display name, and a file among the children has no path to be named by.
        return place == Place::kFile || (place == Place::kChild && type != "CAEPROJECT" && type != "CAEFILE");
    }
    // A view item takes it as its link.
    return member != "dbkey" || type != "CAEVIEWITEM";
}

/// The metadata without its units, which are read as types.
JSONNode CarriedMetadata(const JSONNode& section) {
    JSONNode carried(JSON_NODE);
    carried.set_name(section.name());
    for (const JSONNode& record : section) {
        carried.push_back(JSONNode(record.name(), record.find("value")->as_string()));
    }
    return carried;
}

/// The document without what the format does not carry.
JSONNode Carried(const JSONNode& node, Place place = Place::kRoot) {
    JSONNode carried(JSON_NODE);
    carried.set_name(node.name());
    const std::string type = MemberText(node, "type");
    for (const JSONNode& member : node) {
        const std::string name = member.name().c_str();
        if (name == "metaData") {
            carried.push_back(CarriedMetadata(member));
        } else if (name == "children" || name == "files") {
            JSONNode array(JSON_ARRAY);
            array.set_name(member.name());
            for (const JSONNode& element : member) {
                array.push_back(Carried(element, name == "files" ? Place::kFile : Place::kChild));
            }
            carried.push_back(array);
        } else if (IsCarried(name, type, place)) {
            carried.push_back(member);
        }
    }
    return carried;
}

std::string CarriedText(const std::string& document) {
    return Carried(libjson::parse(document.c_str())).write_formatted().c_str();
}

/// The server's answer to a document: the same tree of identifiers, each with the key "K" and its number.
JSONNode Answer(const JSONNode& node) {
    JSONNode answer(JSON_NODE);
    answer.push_back(JSONNode("id", MemberText(node, "id").c_str()));
    answer.push_back(JSONNode("dbkey", ("K" + MemberText(node, "id")).c_str()));
    for (const char* section : {"children", "files"}) {
        JSONNode array(JSON_ARRAY);
        array.set_name(section);
        for (const JSONNode& element : *node.find(section)) {
            array.push_back(Answer(element));
        }
        answer.push_back(array);
    }
    return answer;
}

void ApplyAnswerTo(const std::string& document, CAEObject& object) {
    const std::string text = Answer(libjson::parse(document.c_str())).write().c_str();
    const JSONNode answer = libjson::parse(text.c_str());
    caerest::json::ApplyJsonResponseOnObject(answer, &object);
}

/// A project with an object of every kind, files in all roles, metadata and dates; 24 objects and files.
void Fill(TestProject& project) {
    SetMetadata(*project, L"Description", L"front \u00E4 crash");
    SetMetadata(*project, L"Mass", L"1250", L"kg", L"double");
    SetMetadata(*project, L"Reference To Program", L"No");
    CAEObject& study = project.Add(CAE_MODEL, L"study \"1\" / a\\b");
    CAEObject& assembly = project.Add(study, CAE_SUBASSEMBLY, L"body");
    project.AddFile(assembly, L"body.step", CAE_FILE_CAD);
    project.AddFile(assembly, L"body.msh", CAE_FILE_MESH, CAE_FORMAT_BINARY);
    CAEObject& part = project.Add(assembly, CAE_PART, L"Tr\u00E4ger");
    SetMetadata(part, L"Length", L"4.2", L"m");
    project.AddFile(part, L"Tr\u00E4ger.step", CAE_FILE_CAD, CAE_FORMAT_UNKNOWN);
    project.AddFile(part, L"coarse.msh", CAE_FILE_MESH);
    project.AddFile(part, L"fine.msh", CAE_FILE_MESH).m_locationType = L"vault";
    project.AddFile(part, L"part.png", CAE_FILE_GRAPHIC, CAE_FORMAT_BINARY);
    SetMetadata(project.AddFile(part, L"notes.txt", CAE_FILE_REPORT), L"Author", L"x");
    CAEObject& folder = project.Add(study, CAE_ITERATION_FOLDER, L"Iterations");
    CAEObject& iteration = project.Add(folder, CAE_ITERATION, L"run 1");
    CAEObject& run = project.Add(iteration, CAE_ITERATION_MODEL, L"run assembly");
    project.AddFile(run, L"deck.inp", CAE_FILE_DECK);
    project.AddFile(run, L"result.dat", CAE_FILE_RESULT, CAE_FORMAT_BINARY);
    CAEObject& views = project.Add(study, CAE_LOADCASE_VIEW_FOLDER, L"Views");
    CAEObject& view = project.Add(views, CAE_LOADCASE_VIEW, L"view");
    project.Add(view, CAE_VIEW_ITEM, L"item");
    project.Add(study, CAE_ASSEMBLY_FOLDER, L"");
    project.Add(study, CAE_TAG, L"tag").setCreatedDate(L"");
    project.Add(study, CAE_FILE, L"file among the children");
    CAEObject& inner = project.Add(CAE_PROJECT, L"inner");
    dynamic_cast<CAEProject&>(inner).setAdditionalType(L"CAEProject");
    project.AddFile(project.Add(inner, CAE_PART, L"inner part"), L"table.csv", CAE_FILE_TABLE);
}

constexpr int kLastId = 25;

/// With UTF-8 as text units and without: the trip is the same.
class RoundTrip : public testing::TestWithParam<bool> {
protected:
    RoundTrip() { Fill(project_); }

    UnitsFor units_{GetParam() ? libjson::text_units::utf8 : libjson::text_units::bytes};
    TestProject project_;
    TestProject rebuilt_{L"other"};
};

}  // namespace

TEST_P(RoundTrip, RebuiltProjectHasTheSameDocument) {
    const std::string first = Document(*project_);
    ApplyAnswerTo(first, *project_);
    for (int id = 1; id <= kLastId; ++id) {
        ASSERT_NE(project_->getCAEObject(id), nullptr) << id;
        EXPECT_EQ(TextOf(project_->getCAEObject(id)->getDBKey()), "K" + std::to_string(id));
    }
    EXPECT_EQ(project_->getCAEObject(kLastId + 1), nullptr);

    const std::string second = Document(*project_);
    Import(second, *rebuilt_);
    const std::string third = Document(*rebuilt_);
    EXPECT_EQ(CarriedText(third), CarriedText(second));
    // What the answer brought is all that sets the first two apart.
    EXPECT_NE(CarriedText(second), CarriedText(first));
    EXPECT_NE(third.find(R"("dbkey":"K6")"), std::string::npos);
}

TEST_P(RoundTrip, RebuiltProjectIsWhatTheFirstOneWas) {
    Import(Document(*project_), *rebuilt_);
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*rebuilt_)), "Project");
    EXPECT_EQ(NameOf(*rebuilt_), "other");
    EXPECT_EQ(TextOf(rebuilt_->getAdditionalType()), "SIMULATION");
    EXPECT_FALSE(korvane::GetProgramReference(*rebuilt_));
    std::vector<std::pair<int, int>> kinds;
    korvane::VisitTree(*project_,
                       [&](CAEObject& object, int depth) { kinds.emplace_back(object.getType(), depth); });
    std::vector<std::pair<int, int>> rebuiltKinds;
    korvane::VisitTree(
        *rebuilt_, [&](CAEObject& object, int depth) { rebuiltKinds.emplace_back(object.getType(), depth); });
    EXPECT_EQ(rebuiltKinds, kinds);

    CAEObject& study = *ChildrenOf(*rebuilt_).at(0);
    EXPECT_EQ(NameOf(study), "study \"1\" / a\\b");
    CAEObject& part = *ChildrenOf(*ChildrenOf(study).at(0)).at(0);
    EXPECT_EQ(NameOf(part), "Tr\xC3\xA4ger");
    EXPECT_EQ(CreatedDateOf(part), "2026-03-01T09:30:00Z");
    EXPECT_EQ(MetadataValueOf(part, L"Length"), "4.2");
    const std::vector<int> files = FileIdsOf(part);
    ASSERT_EQ(files.size(), 5U);
    const korvane::FileRoles roles = korvane::GetFileRoles(part);
    EXPECT_EQ(roles.cadFile, files[0]);
    EXPECT_EQ(roles.meshes, (std::vector<int>{files[1], files[2]}));
    EXPECT_EQ(roles.activeMesh, files[2]);
    EXPECT_EQ(roles.graphicFile, files[3]);
    EXPECT_EQ(roles.customFiles, (std::vector<int>{files[4]}));
    EXPECT_EQ(TextOf(rebuilt_->getFile(files[2])->m_locationType), "vault");
    OuString path;
    rebuilt_->getFile(files[0])->getFullPathName(path);
    EXPECT_STREQ(path.GetBuffer(), L"/studies/Tr\u00E4ger.step");
}

TEST_P(RoundTrip, FetchedObjectIsRebuiltUnderAnyTarget) {
    CAEObject& study = *ChildrenOf(*project_).at(0);
    const std::string document = Document(study);
    CAEObject& target = rebuilt_.Add(CAE_MODEL, L"target");
    Import(document, target);
    EXPECT_EQ(CarriedText(Document(target)), CarriedText(document));
    EXPECT_EQ(NameOf(target), NameOf(study));
    EXPECT_EQ(TextOf(rebuilt_->getAdditionalType()), "Simulation");
}

TEST_P(RoundTrip, SecondTripChangesNothingMore) {
    Import(Document(*project_), *rebuilt_);
    const std::string second = Document(*rebuilt_);
    TestProject again(L"other");
    Import(second, *again);
    EXPECT_EQ(CarriedText(Document(*again)), CarriedText(second));
}

TEST_P(RoundTrip, ComparisonSeesWhatTheFormatCarries) {
    Import(Document(*project_), *rebuilt_);
    const std::string same = CarriedText(Document(*rebuilt_));
    ASSERT_EQ(same, CarriedText(Document(*project_)));
    CAEObject& study = *ChildrenOf(*rebuilt_).at(0);
    CAEObject& part = *ChildrenOf(*ChildrenOf(study).at(0)).at(0);
    part.setName(L"other");
    EXPECT_NE(CarriedText(Document(*rebuilt_)), same);
    part.setName(L"Tr\u00E4ger");
    part.setMetadataValue(L"Length", L"4.3");
    EXPECT_NE(CarriedText(Document(*rebuilt_)), same);
    part.setMetadataValue(L"Length", L"4.2");
    rebuilt_->getFile(FileIdsOf(part)[1])->setFileType(CAE_FILE_CAD);
    EXPECT_NE(CarriedText(Document(*rebuilt_)), same);
    rebuilt_->getFile(FileIdsOf(part)[1])->setFileType(CAE_FILE_MESH);
    EXPECT_EQ(CarriedText(Document(*rebuilt_)), same);
    ASSERT_EQ(Detach(study, *ChildrenOf(study).back()), 0);
    EXPECT_NE(CarriedText(Document(*rebuilt_)), same);
}

INSTANTIATE_TEST_SUITE_P(Units, RoundTrip, testing::Bool(), [](const testing::TestParamInfo<bool>& tested) {
    return tested.param ? "Utf8" : "Bytes";
});

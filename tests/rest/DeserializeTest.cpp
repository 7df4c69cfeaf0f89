#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"

namespace {

void Deserialize(const std::string& text, CAEObject* object) {
    JSONNode node = libjson::parse(text.c_str());
    caerest::json::DeserializeJsonToObject(node, object);
}

std::string DocumentOf(CAEObject& object) {
    return JsonSerializer(&object).GetJsonString().GetAnsiBuffer();
}

constexpr const char* kDocument =
    R"({"id":"40","name":"Crash","createdDate":"2026-03-01T09:30:00Z","createdBy":"server","type":"SIMULATION",)"
    R"("dbkey":"P-1","metaData":{"Mass":{"value":"3","metaDataType":"kg"}},"children":[{"id":"41","name":"frame",)"
    R"("createdDate":"2026-03-01T09:30:00Z","type":"CAEPART","dbkey":"F-1","files":[{"id":"42","name":"frame.msh",)"
    R"("createdDate":"2026-03-01T09:30:00Z","type":"CAEFILE","fileType":"Mesh","fileFormat":"ASCII",)"
    R"("locationType":"vault","filePath":""}]},{"type":"CAETAG","createdDate":"2026-03-01T09:30:00Z",)"
    R"("name":"tag"}],"files":[],"subType":"SDM"})";

}  // namespace

TEST(Deserialize, DocumentBecomesTheProjectsTree) {
    TestProject project;
    korvane::SetCreation(*project, kTestDate, kTestUser);
    Deserialize(kDocument, &*project);
    korvane::SetCreatedUserName(*project->getFile(3), kTestUser);
    EXPECT_EQ(
        DocumentOf(*project),
        ObjectNodeText({.id = "1",
                        .name = "Project",
                        .type = "SIMULATION",
                        .databaseKey = "P-1",
                        .metaData = R"({"Mass":{"value":"3","metaDataType":""}})",
                        .children = ObjectNodeText({.id = "2",
                                                    .name = "frame",
                                                    .type = "CAEPART",
                                                    .databaseKey = "F-1",
                                                    .files = ObjectNodeText(
                                                        {.id = "3",
                                                         .name = "frame.msh",
                                                         .type = "CAEFILE",
                                                         .tail = RecordTail("Mesh", "ASCII", "vault")})}) +
                                    "," + ObjectNodeText({.id = "4", .name = "tag", .type = "CAETAG"}),
                        .tail = kRootTail}));
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "Crash");
    EXPECT_EQ(korvane::GetFileRoles(*project->getCAEObject(2)).activeMesh, 3);
}

TEST(Deserialize, CallersNodeIsSharedAndLeftUnchanged) {
    TestProject project;
    JSONNode node = libjson::parse(kDocument);
    const std::string text = node.write().c_str();
    const JSONNode children = node.at("children");
    caerest::json::DeserializeJsonToObject(node, &*project);
    EXPECT_EQ(node.write(), text.c_str());
    EXPECT_EQ(children.size(), 2U);
    // And is good for another import.
    caerest::json::DeserializeJsonToObject(node, &*project);
    EXPECT_EQ(ChildrenOf(*project).size(), 4U);
}

TEST(Deserialize, NullObjectDoesNothing) {
    Deserialize(kDocument, nullptr);
    Deserialize("{}", nullptr);
}

TEST(Deserialize, ObjectWithoutProjectTakesNothing) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"old");
    ASSERT_EQ(Detach(*project, part), 0);
    Deserialize(kDocument, &part);
    EXPECT_EQ(NameOf(part), "old");
    EXPECT_EQ(TextOf(part.getDBKey()), "");
    EXPECT_TRUE(ChildrenOf(part).empty());
}

TEST(Deserialize, WithoutATypeOnlyTheAdditionalTypeOfAProjectIsEmptied) {
    TestProject project(L"old");
    Deserialize(R"({"name":"new","displayName":"new","children":[{"type":"CAETAG"}],"files":[{}]})",
                &*project);
    EXPECT_EQ(TextOf(project->getAdditionalType()), "");
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "old");
    EXPECT_EQ(NameOf(*project), "old");
    EXPECT_TRUE(ChildrenOf(*project).empty());
    EXPECT_TRUE(korvane::GetProjectFiles(*project).empty());
}

TEST(Deserialize, TargetMayBeAnyObjectOfTheProject) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"old");
    Deserialize(kDocument, &model);
    EXPECT_EQ(NameOf(model), "Crash");
    EXPECT_EQ(TextOf(model.getDBKey()), "P-1");
    EXPECT_EQ(ChildIdsOf(model), (std::vector<int>{3, 5}));
    EXPECT_EQ(model.getType(), CAE_MODEL);
    EXPECT_EQ(TextOf(project->getAdditionalType()), "Simulation");
}

namespace {

/// An object that cannot be named.
class NamelessFile : public CAEFile {
public:
    NamelessFile() : CAEFile(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false) {}
    void setName(const OuString&) override { throw std::runtime_error("no"); }
};

}  // namespace

TEST(Deserialize, ExceptionOfTheObjectModelPassesAndWhatWasDoneStays) {
    TestProject project;
    auto owned = std::make_unique<NamelessFile>();
    CAEFile& file = *owned;
    ASSERT_EQ(project->assignID(owned.get()), 2);
    ASSERT_EQ(project->addFile(owned.get()), 0);
    static_cast<void>(owned.release());
    JSONNode node =
        libjson::parse(R"({"type":"CAEFILE","dbkey":"K","children":[{"type":"CAETAG"}],"name":"x",)"
                       R"("createdDate":"never","children":[{"type":"CAETAG"}]})");
    const std::string text = node.write().c_str();
    EXPECT_THROW(caerest::json::DeserializeJsonToObject(node, &file), std::runtime_error);
    EXPECT_EQ(TextOf(file.getDBKey()), "K");
    EXPECT_EQ(ChildIdsOf(file), (std::vector<int>{3}));
    EXPECT_NE(CreatedDateOf(file), "never");
    EXPECT_EQ(node.write(), text.c_str());
}

#include <CAEFunctions.h>
#include <EmbeddedOddAnswers.h>
#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>

#include <optional>
#include <string>
#include <vector>

#include "ConverterSupport.h"
#include "RecordingSupport.h"
#include "objectjson/CAEFileJson.h"
#include "objectjson/ExportMode.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

// What the object model never does when all is well: the safe way out each time, and nothing crashes.

namespace {

using korvane::OddAnswer;

/// A project with a part, identifier 2, that says it is of another kind for as long as the test lasts.
class PartOfAnotherKind : public testing::Test {
protected:
    void SayKind(_tagCAEObjectType kind) {
        kind_.emplace("CAEObject::getType(#2)", korvane::Answer{.type = kind}, OddAnswer::kAlways);
    }
    std::string RecordingOfFile(const std::string& fileType) {
        return RecordingOf(
            [&] { ImportText(R"({"type":"X","files":[{"fileType":")" + fileType + R"("}]})", part); });
    }

    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");

private:
    std::optional<OddAnswer> kind_;
};

}  // namespace

TEST_F(PartOfAnotherKind, IsWrittenAsAFileWithoutPath) {
    SayKind(CAE_FILE);
    EXPECT_EQ(MemberText(CAEObjectJson(&part).GetJsonNode(), "name"), "");
    EXPECT_EQ(MemberText(CAEObjectJson(&part).GetJsonNode(), "type"), "CAEFILE");
}

TEST_F(PartOfAnotherKind, IsWrittenAsAProjectWithoutAdditionalType) {
    SayKind(CAE_PROJECT);
    EXPECT_EQ(MemberText(CAEObjectJson(&part).GetJsonNode(), "type"), "");
    EXPECT_EQ(MemberText(CAEObjectJson(&part).GetJsonNode(), "name"), "frame");
}

TEST_F(PartOfAnotherKind, TakesNoAdditionalTypeAndNoDisplayName) {
    SayKind(CAE_PROJECT);
    const std::string notes =
        RecordingOf([&] { ImportText(R"({"type":"CAEPROJECT","name":"door"})", part); });
    EXPECT_EQ(notes.find("setAdditionalType"), std::string::npos) << notes;
    EXPECT_EQ(notes.find("SetDisplayName"), std::string::npos) << notes;
    EXPECT_EQ(NameOf(part), "frame");
}

TEST_F(PartOfAnotherKind, TakesNoDisplayNameFromAnAnswer) {
    SayKind(CAE_PROJECT);
    const std::string notes = RecordingOf([&] {
        caerest::json::ApplyJsonResponseOnObject(libjson::parse(R"({"name":"door","id":"2","dbkey":"K"})"),
                                                 &part);
    });
    EXPECT_EQ(notes.find("SetDisplayName"), std::string::npos) << notes;
    EXPECT_EQ(TextOf(part.getDBKey()), "K");
}

TEST_F(PartOfAnotherKind, TakesNoFileInARoleOfAnotherClass) {
    for (const _tagCAEObjectType kind : {CAE_SUBASSEMBLY, CAE_ITERATION_MODEL}) {
        SayKind(kind);
        for (const char* const type : {"CAD", "Mesh", "Graphic"}) {
            const std::string notes = RecordingOfFile(type);
            EXPECT_NE(notes.find("CAEProject::addFile"), std::string::npos) << notes;
            EXPECT_TRUE(notes.ends_with("CAEFile::getFileType(#" +
                                        std::to_string(korvane::GetProjectFiles(*project).back()->getID()) +
                                        ")\n"))
                << notes;
        }
    }
    EXPECT_TRUE(FileIdsOf(part).empty());
}

TEST(OddAnswers, ViewItemsKeyOfAPartResolvesNothing) {
    TestProject project;
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"axle");
    assembly.setDBKey(L"K");
    CAEObject& part = project.Add(CAE_PART, L"frame");
    part.setLinkDBKey(L"K");
    CAEObjectJson parent(JSONNode(JSON_NODE), &*project);
    const std::string notes = RecordingOf([&] { parent.ResolveViewItemReference(&part); });
    EXPECT_NE(notes.find("getMasterAssemblyCAEIDByITEMID"), std::string::npos) << notes;
    EXPECT_EQ(notes.find("setReferencedCAEObject"), std::string::npos) << notes;
}

TEST(OddAnswers, AssembliesThatSayTheyArePartsTakeNoFileInARole) {
    TestProject project;
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"axle");
    const OddAnswer kind("CAEObject::getType(#2)", {.type = CAE_PART}, OddAnswer::kAlways);
    ImportText(R"({"type":"X","files":[{"fileType":"CAD"},{"fileType":"Mesh"},{"fileType":"Graphic"}]})",
               assembly);
    EXPECT_EQ(korvane::GetProjectFiles(*project).size(), 3U);
    EXPECT_TRUE(FileIdsOf(assembly).empty());
}

TEST(OddAnswers, NewIdentifierThatMeansNoObjectSkipsTheElement) {
    TestProject project;
    const OddAnswer nobody("CAEProject::getCAEObject", {.object = nullptr});
    ImportText(R"({"type":"X","children":[{"type":"CAEPART","name":"a","children":[{"type":"CAETAG"}]},)"
               R"({"type":"CAEPART","name":"b"}]})",
               *project);
    EXPECT_EQ(nobody.TimesGiven(), 1);
    // The object was made and stays as it was made; nothing of the element came onto it.
    const std::vector<CAEObject*> children = ChildrenOf(*project);
    ASSERT_EQ(children.size(), 2U);
    EXPECT_EQ(NameOf(*children[0]), "");
    EXPECT_EQ(NameOf(*children[1]), "b");
}

TEST(OddAnswers, CreationThatWritesNoIdentifierSkipsTheElementWhateverItsStatus) {
    for (const int status : {0, 1}) {
        TestProject project;
        const OddAnswer nothing("createCAEObject", {.status = status});
        ImportText(R"({"type":"X","children":[{"type":"CAEPART","name":"a"},{"type":"CAEPART","name":"b"}]})",
                   *project);
        EXPECT_EQ(nothing.TimesGiven(), 1);
        const std::vector<CAEObject*> children = ChildrenOf(*project);
        ASSERT_EQ(children.size(), 1U);
        EXPECT_EQ(NameOf(*children[0]), "b");
    }
}

TEST(OddAnswers, CreationThatWritesAnIdentifierCountsWhateverItsStatus) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const OddAnswer failed("createCAEObject", {.status = 1, .identifier = part.getID()});
    ImportText(R"({"type":"X","children":[{"type":"CAEPART","name":"a"}]})", *project);
    EXPECT_EQ(failed.TimesGiven(), 1);
    EXPECT_EQ(NameOf(part), "a");
}

TEST(OddAnswers, MetadataLookUpThatFailsLeavesItsTextEmptyAndTheOthersWhole) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    SetMetadata(part, L"Mass", L"1250", L"kg");
    SetMetadata(part, L"Speed", L"56", L"m/s");
    const auto written = [&] { return TextOfSection(CAEObjectJson(&part).ExportMetadata()); };
    const std::string speed = R"("Speed":{"value":"56","metaDataType":"m\/s"}}})";
    {
        const OddAnswer failure("CAEObject::getMetadataValue(#2, \"Mass\")", {.status = 1});
        EXPECT_EQ(written(), R"({"metaData":{"Mass":{"value":"","metaDataType":"kg"},)" + speed);
    }
    {
        const OddAnswer failure("CAEObject::getMetadataUnitString(#2, \"Mass\")", {.status = 1});
        EXPECT_EQ(written(), R"({"metaData":{"Mass":{"value":"1250","metaDataType":""},)" + speed);
    }
    {
        const OddAnswer failure("CAEObject::getMetadataType(#2, \"Mass\")", {.status = 1});
        EXPECT_EQ(written(), R"({"metaData":{"Mass":{"value":"1250","metaDataType":"kg"},)" + speed);
        EXPECT_EQ(failure.TimesGiven(), 1);
    }
}

TEST(OddAnswers, NullNameOfAKindIsNoName) {
    const OddAnswer null("CAEObject::getTypeName", {.text = nullptr}, OddAnswer::kAlways);
    EXPECT_EQ(TextOf(CAEObjectJson::ObjectTypeName(CAE_PART)), "CAE");
    EXPECT_EQ(TextOf(CAEObjectJson::ObjectTypeName(CAE_ITERATION)), "CAEITERATION");
    EXPECT_EQ(null.TimesGiven(), 2);
}

TEST(OddAnswers, NameOfAKindIsWrittenAsTheObjectModelSays) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"part");
    CAEObject& iteration = project.Add(CAE_ITERATION, L"iteration");
    const auto typeOf = [](CAEObject& object) {
        return MemberText(CAEObjectJson(&object).GetJsonNode(), "type");
    };
    const struct {
        const char* name;
        const char* type;
    } kNames[] = {{"pART", "CAEPART"}, {"Parts", "CAEPARTS"}, {"Par", "CAEPAR"},
                  {"", "CAE"},         {nullptr, "CAE"},      {"P\xC3\xA4rt 2", "CAEP\xC3\x84RT 2"}};
    for (const auto& known : kNames) {
        const OddAnswer odd("CAEObject::getTypeName", {.text = known.name}, OddAnswer::kAlways);
        EXPECT_EQ(typeOf(part), known.type);
        // The format fixes this one, whatever the object model says.
        EXPECT_EQ(typeOf(iteration), "CAEITERATION");
        EXPECT_EQ(odd.TimesGiven(), 2);
    }
}

TEST(OddAnswers, NullNameOfAFileTypeIsWrittenEmpty) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"a.inp", CAE_FILE_DECK);
    const OddAnswer null("CAEGetFileTypeName", {.text = nullptr});
    EXPECT_EQ(MemberText(CAEFileJson(&file).GetJsonNode(), "fileType"), "");
    EXPECT_EQ(null.TimesGiven(), 1);
}

TEST(OddAnswers, NullEntriesInTheListOfChildrenAreSkippedInEveryMode) {
    TestProject project;
    CAEObject& file = project.Add(CAE_FILE, L"a");
    for (const wchar_t* const mode : {L"", L"PROJECT", L"STUDY"}) {
        ModuleExportMode() = mode;
        const OddAnswer children("CAEObject::getChildrenList(#1)", {.children = {nullptr, &file, nullptr}});
        EXPECT_EQ(CAEObjectJson(&*project).ExportChildren().size(), 1U);
        EXPECT_EQ(children.TimesGiven(), 1);
    }
    ModuleExportMode() = L"";
}

TEST(OddAnswers, IterationWithoutParentIsOfTheGenericStudy) {
    TestProject project;
    CAEObject& iteration = project.Add(CAE_ITERATION, L"run");
    const OddAnswer orphan("CAEObject::getParent(#2)", {.object = nullptr});
    EXPECT_EQ(MemberText(CAEObjectJson(&iteration).GetJsonNode(), "studyTypeName"), "Generic");
    EXPECT_EQ(orphan.TimesGiven(), 1);
}

TEST(OddAnswers, AnswerStopsWhereTheObjectHasNoProjectAnyMore) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEObject& door = project.Add(CAE_PART, L"door");
    const OddAnswer homeless("CAEObject::getProject(#2)", {.object = nullptr});
    caerest::json::ApplyJsonResponseOnObject(
        libjson::parse(R"([{"id":"2","dbkey":"A"},{"id":"3","dbkey":"B"}])"), &part);
    EXPECT_EQ(homeless.TimesGiven(), 1);
    EXPECT_TRUE(part.getDBKey().IsEmpty());
    EXPECT_TRUE(door.getDBKey().IsEmpty());
}

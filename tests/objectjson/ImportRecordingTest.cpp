#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>

#include <new>
#include <string>
#include <vector>

#include "ConverterSupport.h"
#include "RecordingSupport.h"
#include "objectjson/CAEFileJson.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

// The order in which an import and an answer change the object model shows from outside: whole recordings are
// compared.

namespace {

std::string RecordingOfImport(const std::string& text, CAEObject& object) {
    JSONNode node = libjson::parse(text.c_str());
    return RecordingOf([&] { caerest::json::DeserializeJsonToObject(node, &object); });
}

std::string RecordingOfAnswer(const std::string& text, CAEObject* object) {
    const JSONNode node = libjson::parse(text.c_str());
    return RecordingOf([&] { caerest::json::ApplyJsonResponseOnObject(node, object); });
}

/// What comes before the members of an object that is not a project.
Notes Start(const std::string& object) {
    return {"CAEObject::getType(" + object + ")", "CAEObject::getProject(" + object + ")",
            "CAEObject::getProject(" + object + ")"};
}

/// What comes before the members of a project.
Notes StartOfProject(const std::string& project, const std::string& type) {
    return {"CAEObject::getType(" + project + ")",
            "CAEProject::setAdditionalType(" + project + ", \"" + type + "\")",
            "CAEObject::getProject(" + project + ")", "CAEObject::getProject(" + project + ")"};
}

Notes Name(const std::string& object, const std::string& name) {
    return {"CAEObject::getType(" + object + ")", "CAEObject::setName(" + object + ", \"" + name + "\")"};
}

Notes Key(const std::string& object, const std::string& key) {
    return {"CAEObject::getType(" + object + ")", "CAEObject::setDBKey(" + object + ", \"" + key + "\")"};
}

/// The creation of a child below the project #1 or one of its objects.
Notes Created(int parent, int type, int child) {
    return {"CAEObjectIdentification::getID(#" + std::to_string(parent) + ")",
            "createCAEObject(#1, " + std::to_string(parent) + ", " + std::to_string(type) + ")",
            "CAEProject::getCAEObject(#1, " + std::to_string(child) + ")"};
}

/// What follows the members of a child.
Notes End(const std::string& child) {
    return {"CAEObject::getType(" + child + ")"};
}

Notes Directory() {
    return {"CAEProject::getDirectory(#1)"};
}

/// A new file before the members of its record.
Notes MadeFile() {
    return {"CAEFile::CAEFile(null, 0, 0, false)", "CAEObject::getType(#0)", "CAEObject::getProject(#0)"};
}

/// What follows the record: the path, the project, and what the roles are decided by.
Notes Added(const std::string& path, int file, const std::string& object) {
    const std::string id = "#" + std::to_string(file);
    return {"CAEObjectIdentification::getName(#0)", "CAEFile::setFullPathName(#0, \"" + path + "\")",
            "CAEProject::assignID(#1, #0)",         "CAEProject::addFile(#1, " + id + ")",
            "CAEObject::getType(" + object + ")",   "CAEFile::getFileType(" + id + ")"};
}

/// A record with nothing but a name and a file type.
Notes File(const std::string& name, const std::string& typeName, int type, int file,
           const std::string& object) {
    return MadeFile() + Name("#0", name) +
           Notes{"GetCAEFileType(\"" + typeName + "\")",
                 "CAEFile::setFileType(#0, " + std::to_string(type) + ")"} +
           Added("/studies/" + name, file, object);
}

constexpr const char* kFourFiles = R"("files":[{"name":"m","fileType":"Mesh"},{"name":"c","fileType":"CAD"},)"
                                   R"({"name":"g","fileType":"Graphic"},{"name":"d","fileType":"Deck"}])";

/// The recording of the four files onto the object #2, each followed by its own calls.
Notes FourFiles(const Notes& mesh, const Notes& cad, const Notes& graphic, const Notes& custom) {
    return Directory() + File("m", "Mesh", 2, 3, "#2") + mesh + File("c", "CAD", 1, 4, "#2") + cad +
           File("g", "Graphic", 3, 5, "#2") + graphic + File("d", "Deck", 4, 6, "#2") + custom;
}

const Notes kCustom = {"CAEObject::attachCustomFile(#2, 6, null)"};

}  // namespace

TEST(ImportRecording, ProjectWithEveryMember) {
    TestProject project;
    EXPECT_EQ(RecordingOfImport(
                  R"({"id":"1","name":"Shown","studyTypeName":"x","createdDate":"then","createdBy":"you",)"
                  R"("type":"CRASH","dbkey":"P-1","metaData":{"Mass":{"value":"3","metaDataType":"kg"},)"
                  R"("Reference To Program":{"value":"no","metaDataType":""}},"children":[],"files":[],)"
                  R"("displayName":"Called","projectId":"7","status":"s","checkOut":"c","startDate":"d",)"
                  R"("objectName":"o","isBaseObject":"b","projectType":"p","category":"c","models":[{}],)"
                  R"("versions":[{}],"version":"1.0","subType":"SDM"})",
                  *project),
              Lines(StartOfProject("#1", "CRASH") +
                    Notes{"CAEObject::getType(#1)", "CAEProject::SetDisplayName(#1, \"Shown\")",
                          "CAEObject::setCreatedDate(#1, \"then\")", "CAEObject::getCreatedUserName(#1)"} +
                    Key("#1", "P-1") +
                    Notes{"CAEObject::setMetadataType(#1, \"Mass\", \"kg\")",
                          "CAEObject::setMetadataValue(#1, \"Mass\", \"3\")",
                          "CAEProject::SetProgramReference(#1, false)",
                          "CAEObject::setMetadataType(#1, \"Reference To Program\", \"\")",
                          "CAEObject::setMetadataValue(#1, \"Reference To Program\", \"no\")"} +
                    Directory() + Notes{"CAEObject::setName(#1, \"Called\")"}));
}

TEST(ImportRecording, MembersComeInTheOrderOfTheDocument) {
    TestProject project;
    project.Add(CAE_MODEL, L"model");
    EXPECT_EQ(
        RecordingOfImport(R"({"files":[{}],"displayName":"a","dbkey":"1","children":[{"type":"CAETAG"}],)"
                          R"("metaData":{"m":{}},"name":"b","createdDate":"d","dbkey":"2","type":"T",)"
                          R"("files":{}})",
                          *project->getCAEObject(2)),
        Lines(Start("#2") + Directory() + MadeFile() + Added("/studies/", 3, "#2") +
              Notes{"CAEObject::attachCustomFile(#2, 3, null)", "CAEObject::setName(#2, \"a\")"} +
              Key("#2", "1") + Created(2, 41, 4) + Start("#4") + End("#4") +
              Notes{"CAEObject::setMetadataType(#2, \"m\", \"\")",
                    "CAEObject::setMetadataValue(#2, \"m\", \"\")"} +
              Name("#2", "b") + Notes{"CAEObject::setCreatedDate(#2, \"d\")"} + Key("#2", "2") +
              Directory()));
}

TEST(ImportRecording, PartWithAllKindsOfFiles) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    EXPECT_EQ(
        RecordingOfImport(std::string(R"({"type":"CAEPART","name":"door",)") + kFourFiles + "}", part),
        Lines(Start("#2") + Name("#2", "door") +
              FourFiles({"CAEPart::attachNewMeshOrMeshingRequest(#2, 3)", "CAEPart::setActiveMesh(#2, 3)"},
                        {"CAEPart::setCADFile(#2, 4)"}, {"CAEPart::setGraphicFile(#2, 5)"}, kCustom)));
}

TEST(ImportRecording, SubAssemblyWithAllKindsOfFiles) {
    TestProject project;
    CAEObject& assembly = project.Add(CAE_SUBASSEMBLY, L"body");
    EXPECT_EQ(RecordingOfImport(std::string(R"({"type":"CAESUBASSEMBLY",)") + kFourFiles + "}", assembly),
              Lines(Start("#2") + FourFiles({"CAESubAssembly::attachNewRepresentationOrMeshingReq(#2, 3)",
                                             "CAESubAssembly::setActiveMesh(#2, 3)"},
                                            {"CAESubAssembly::setCADFile(#2, 4)"},
                                            {"CAESubAssembly::setGraphicFile(#2, 5)"}, kCustom)));
}

TEST(ImportRecording, RunAssemblyWithAllKindsOfFiles) {
    TestProject project;
    CAEObject& run = project.Add(CAE_ITERATION_MODEL, L"run");
    EXPECT_EQ(
        RecordingOfImport(std::string(R"({"type":"CAEITERATIONMODEL",)") + kFourFiles + "}", run),
        Lines(Start("#2") + FourFiles({"CAERunAssembly::setFERepresentationFile(#2, 3)"},
                                      {"CAERunAssembly::setFERepresentationFile(#2, 4)"},
                                      {"CAERunAssembly::setFERepresentationFile(#2, 5)"},
                                      Notes{"CAERunAssembly::setFERepresentationFile(#2, 6)"} + kCustom)));
}

TEST(ImportRecording, AnyOtherObjectWithAllKindsOfFiles) {
    for (const _tagCAEObjectType kind :
         {CAE_MODEL, CAE_ITERATION, CAE_LOADCASE_VIEW, CAE_VIEW_ITEM, CAE_FILE, CAE_TAG}) {
        TestProject project;
        CAEObject& object = project.Add(kind, L"object");
        EXPECT_EQ(RecordingOfImport(std::string(R"({"type":"X",)") + kFourFiles + "}", object),
                  Lines(Start("#2") + FourFiles({}, {}, {}, kCustom)));
    }
}

TEST(ImportRecording, FileRecordWithEveryMember) {
    TestProject project;
    EXPECT_EQ(RecordingOfImport(
                  R"({"type":"X","files":[{"isFileDownloaded":true,"isInCoordinateGlobalFrame":"false",)"
                  R"("filePath":"/there/a","fileFormat":"Binary","locationType":"vault","fileType":"Report",)"
                  R"("files":[{}],"children":[{"type":"CAETAG"}],"metaData":{"Reference To Program":)"
                  R"({"value":"No","metaDataType":"t"}},"dbkey":"F","type":"CAEFILE","createdBy":"you",)"
                  R"("createdDate":"then","name":"a","id":"7"}]})",
                  *project),
              Lines(StartOfProject("#1", "X") + Directory() + MadeFile() +
                    Notes{"CAEObject::setMetadataType(#0, \"Reference To Program\", \"t\")",
                          "CAEObject::setMetadataValue(#0, \"Reference To Program\", \"No\")"} +
                    Key("#0", "F") +
                    Notes{"CAEObject::getCreatedUserName(#0)", "CAEObject::setCreatedDate(#0, \"then\")"} +
                    Name("#0", "a") +
                    Notes{"CAEFile::setFullPathName(#0, \"/there/a\")", "GetCAEFileType(\"Report\")",
                          "CAEFile::setFileType(#0, 7)", "CAEFile::setFileFormat(#0, 2)",
                          "CAEFile::setGlobalFrameCoordinate(#0, false)",
                          "CAEFile::SetFileDownloadFlag(#0, true)"} +
                    Added("/studies/a", 2, "#1") + Notes{"CAEObject::attachCustomFile(#1, 2, null)"}));
}

TEST(ImportRecording, RecordWithoutMembersAsksForNone) {
    CAEFile file(nullptr, CAE_FILE_UNKNOWN, CAE_FORMAT_UNKNOWN, false);
    const JSONNode record = libjson::parse("{}");
    EXPECT_EQ(RecordingOf([&] { const CAEFileJson converter(record, &file); }),
              "CAEObject::getType(#0)\nCAEObject::getProject(#0)\n");
}

TEST(ImportRecording, FilesThatAreNoContainerAskForTheDirectoryOnly) {
    for (const char* files : {R"("a")", "1", "true", "null", "[]", "{}"}) {
        TestProject project;
        project.Add(CAE_PART, L"frame");
        EXPECT_EQ(RecordingOfImport(std::string(R"({"type":"X","files":)") + files + "}",
                                    *project->getCAEObject(2)),
                  Lines(Start("#2") + Directory()))
            << files;
    }
}

TEST(ImportRecording, ViewItemOfAMasterAssembly) {
    TestProject project;
    CAEObject& master = project.Add(CAE_SUBASSEMBLY, L"master");
    master.setDBKey(L"ITEM-1");
    project.Add(CAE_LOADCASE_VIEW, L"view");
    EXPECT_EQ(
        RecordingOfImport(R"({"type":"CAELOADCASEVIEW","children":[{"name":"a","dbkey":"ITEM-1",)"
                          R"("type":"CAEVIEWITEM","children":[{"type":"CAETAG"}]},{"type":)"
                          R"("CAEVIEWITEM","dbkey":"none"},{"type":"CAEVIEWITEM"}]})",
                          *project->getCAEObject(3)),
        Lines(
            Start("#3") + Created(3, 23, 4) + Start("#4") + Name("#4", "a") +
            Notes{"CAEObject::getType(#4)", "CAEObjectDBManagement::setLinkDBKey(#4, \"ITEM-1\")"} +
            Created(4, 41, 5) + Start("#5") + End("#5") + End("#4") +
            Notes{"CAEObjectDBManagement::getLinkDBKey(#4)", "getMasterAssemblyCAEIDByITEMID(#1, \"ITEM-1\")",
                  "CAEViewItem::setReferencedCAEObject(#4, 2)"} +
            Created(3, 23, 6) + Start("#6") +
            Notes{"CAEObject::getType(#6)", "CAEObjectDBManagement::setLinkDBKey(#6, \"none\")"} + End("#6") +
            Notes{"CAEObjectDBManagement::getLinkDBKey(#6)", "getMasterAssemblyCAEIDByITEMID(#1, \"none\")"} +
            Created(3, 23, 7) + Start("#7") + End("#7") +
            Notes{"CAEObjectDBManagement::getLinkDBKey(#7)", "getMasterAssemblyCAEIDByITEMID(#1, \"\")"}));
}

TEST(ImportRecording, ViewItemThatIsTheTargetIsNotResolved) {
    TestProject project;
    project.Add(CAE_VIEW_ITEM, L"item");
    EXPECT_EQ(RecordingOfImport(R"({"type":"CAEVIEWITEM","dbkey":"K"})", *project->getCAEObject(2)),
              Lines(Start("#2") +
                    Notes{"CAEObject::getType(#2)", "CAEObjectDBManagement::setLinkDBKey(#2, \"K\")"}));
}

TEST(ImportRecording, NestedTree) {
    TestProject project;
    EXPECT_EQ(
        RecordingOfImport(
            R"({"type":"P","children":[)"
            R"({"name":"a","type":"CAEMODEL","children":[{"type":"CAEPART","files":[{"name":"f"}],)"
            R"("name":"b"},{"name":"no type","children":[{"type":"CAETAG"}]},{"type":"NOTHING"},)"
            R"({"type":"CAETAG"}],"dbkey":"K"},"text",)"
            R"({"type":"CAEITERATIONFOLDER","children":{"x":{"type":"CAEITERATION","name":"c"}}}]})",
            *project),
        Lines(StartOfProject("#1", "P") + Created(1, 5, 2) + Start("#2") + Name("#2", "a") +
              Created(2, 0, 3) + Start("#3") + Directory() + MadeFile() + Name("#0", "f") +
              Added("/studies/f", 4, "#3") + Notes{"CAEObject::attachCustomFile(#3, 4, null)"} +
              Name("#3", "b") + End("#3") +
              Notes{"CAEObjectIdentification::getID(#2)", "createCAEObject(#1, 2, 43)"} + Created(2, 41, 5) +
              Start("#5") + End("#5") + Key("#2", "K") + End("#2") + Created(1, 7, 6) + Start("#6") +
              Created(6, 6, 7) + Start("#7") + Name("#7", "c") + End("#7") + End("#6")));
}

TEST(ImportRecording, NestedProjectIsTheProjectOfWhatIsUnderIt) {
    TestProject project;
    EXPECT_EQ(
        RecordingOfImport(R"({"type":"P","children":[{"type":"CAEPROGRAM","name":"inner","children":)"
                          R"([{"type":"CAEVIEWITEM","dbkey":"K"}],"files":[{}]}]})",
                          *project),
        Lines(StartOfProject("#1", "P") + Created(1, 4, 2) + StartOfProject("#2", "CAEPROGRAM") +
              Notes{"CAEObject::getType(#2)", "CAEProject::SetDisplayName(#2, \"inner\")",
                    "CAEObjectIdentification::getID(#2)", "createCAEObject(#2, 2, 23)",
                    "CAEProject::getCAEObject(#2, 3)"} +
              Start("#3") +
              Notes{"CAEObject::getType(#3)", "CAEObjectDBManagement::setLinkDBKey(#3, \"K\")"} + End("#3") +
              Notes{"CAEObjectDBManagement::getLinkDBKey(#3)", "getMasterAssemblyCAEIDByITEMID(#2, \"K\")",
                    "CAEProject::getDirectory(#2)"} +
              MadeFile() +
              Notes{"CAEObjectIdentification::getName(#0)", "CAEFile::setFullPathName(#0, \"/studies/\")",
                    "CAEProject::assignID(#2, #0)", "CAEProject::addFile(#2, #4)", "CAEObject::getType(#2)",
                    "CAEFile::getFileType(#4)", "CAEObject::attachCustomFile(#2, 4, null)"} +
              End("#2")));
}

TEST(ImportRecording, WithoutATypeOnlyTheConstructionAsks) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const std::string text = R"({"name":"x","children":[{"type":"CAETAG"}],"files":[{}]})";
    EXPECT_EQ(RecordingOfImport(text, part), "CAEObject::getType(#2)\nCAEObject::getProject(#2)\n");
    EXPECT_EQ(RecordingOfImport(text, *project),
              "CAEObject::getType(#1)\nCAEProject::setAdditionalType(#1, "
              "\"\")\nCAEObject::getProject(#1)\n");
}

TEST(ImportRecording, WithoutAProjectNothingIsChanged) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ASSERT_EQ(Detach(*project, part), 0);
    EXPECT_EQ(RecordingOfImport(R"({"type":"CAEPART","name":"x"})", part), Lines(Start("#2")));
}

TEST(ImportRecording, NullObjectAsksNothing) {
    JSONNode node =
        libjson::parse(R"({"type":"X","id":"1","dbkey":"K","name":"x","children":[{"type":"Y"}]})");
    EXPECT_EQ(RecordingOf([&] { caerest::json::DeserializeJsonToObject(node, nullptr); }), "");
    EXPECT_EQ(RecordingOf([&] { caerest::json::ApplyJsonResponseOnObject(node, nullptr); }), "");
}

TEST(ImportRecording, ProgramReferenceWithAnyOtherValueIsAnOrdinaryEntry) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    EXPECT_EQ(
        RecordingOfImport(R"({"type":"X","metaData":{"Reference To Program":{"value":"Yes",)"
                          R"("metaDataType":"a"},"reference to program":{"value":"No",)"
                          R"("metaDataType":"b"}}})",
                          part),
        Lines(Start("#2") + Notes{"CAEObject::setMetadataType(#2, \"Reference To Program\", \"a\")",
                                  "CAEObject::setMetadataValue(#2, \"Reference To Program\", \"Yes\")",
                                  "CAEObject::setMetadataType(#2, \"reference to program\", \"b\")",
                                  "CAEObject::setMetadataValue(#2, \"reference to program\", \"No\")"}));
}

TEST(ImportRecording, AnswerForAProject) {
    TestProject project;
    project.Add(CAE_PART, L"2");
    project.Add(CAE_VIEW_ITEM, L"3");
    for (int id = 4; id < 10; ++id) {
        project.Add(CAE_TAG, L"tag");
    }
    project.AddFile(*project, L"10", CAE_FILE_DECK);
    // In the order of the identifiers' texts, whatever the order of the answer; 99 is not an object.
    EXPECT_EQ(
        RecordingOfAnswer(R"({"files":[{"id":"10","dbkey":"K10"}],"children":[{"id":9,"dbkey":"K9"},)"
                          R"({"id":"99","dbkey":"K99"},{"id":"3","dbkey":"K3","children":[{"id":2,)"
                          R"("dbkey":""}]},{"id":"4"}],"name":"P","displayName":"D","dbkey":"K1","id":"1"})",
                          &*project),
        Lines(Notes{
            "CAEObject::getType(#1)", "CAEProject::SetDisplayName(#1, \"P\")", "CAEObject::getProject(#1)",
            "CAEProject::getCAEObject(#1, 1)", "CAEObject::setDBKey(#1, \"K1\")", "CAEObject::getProject(#1)",
            "CAEProject::getCAEObject(#1, 10)", "CAEObject::setDBKey(#10, \"K10\")",
            "CAEObject::getProject(#1)", "CAEProject::getCAEObject(#1, 2)", "CAEObject::setDBKey(#2, \"\")",
            "CAEObject::getProject(#1)", "CAEProject::getCAEObject(#1, 3)", "CAEObject::setDBKey(#3, \"K3\")",
            "CAEObject::getProject(#1)", "CAEProject::getCAEObject(#1, 9)", "CAEObject::setDBKey(#9, \"K9\")",
            "CAEObject::getProject(#1)", "CAEProject::getCAEObject(#1, 99)"}));
}

TEST(ImportRecording, AnswerForAPartChangesNoDisplayName) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    EXPECT_EQ(RecordingOfAnswer(R"({"id":"1","name":"P","dbkey":"K1"})", &part),
              "CAEObject::getType(#2)\nCAEObject::getProject(#2)\nCAEProject::getCAEObject(#1, 1)\n"
              "CAEObject::setDBKey(#1, \"K1\")\n");
}

TEST(ImportRecording, AnswerWithoutEntriesAsksForTheKindOnly) {
    TestProject project;
    for (const char* answer : {"{}", "[]", R"([{"name":"P"}])", R"("text")", "1", "null", R"({"id":"1"})",
                               R"([[{"id":"1","dbkey":"K"}]])"}) {
        EXPECT_EQ(RecordingOfAnswer(answer, &*project), "CAEObject::getType(#1)\n") << answer;
    }
}

TEST(ImportRecording, AnExceptionPassesThroughTheWalkAndWhatWasMadeStays) {
    TestProject project;
    const korvane::OddAnswer noMemory("CAEObject::setDBKey", {.throws = true});
    const std::string recording = RecordingOf([&] {
        JSONNode node = libjson::parse(R"({"type":"T","children":[{"type":"CAEMODEL","name":"study",)"
                                       R"("children":[{"type":"CAEPART","dbkey":"K","name":"x"}]},)"
                                       R"({"type":"CAETAG"}]})");
        EXPECT_THROW(caerest::json::DeserializeJsonToObject(node, &*project), std::bad_alloc);
    });
    EXPECT_TRUE(recording.ends_with("CAEObject::setDBKey(#3, \"K\")\n")) << recording;
    EXPECT_EQ(NameOf(*project->getCAEObject(2)), "study");
    EXPECT_EQ(ChildIdsOf(*project->getCAEObject(2)), std::vector<int>{3});
    EXPECT_EQ(project->getCAEObject(4), nullptr);
}

TEST(ImportRecording, AnExceptionInARecordLeavesItsFileOutOfTheProject) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const korvane::OddAnswer noMemory("CAEFile::setFileType", {.throws = true});
    RecordingOf([&] {
        JSONNode node = libjson::parse(R"({"type":"CAEPART","files":[{"name":"a","fileType":"CAD"}]})");
        EXPECT_THROW(caerest::json::DeserializeJsonToObject(node, &part), std::bad_alloc);
    });
    EXPECT_TRUE(korvane::GetProjectFiles(*project).empty());
    EXPECT_TRUE(FileIdsOf(part).empty());
}

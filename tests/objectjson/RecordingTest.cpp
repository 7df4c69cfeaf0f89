#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <new>
#include <string>

#include "ConverterSupport.h"
#include "RecordingSupport.h"
#include "objectjson/CAEFileJson.h"
#include "objectjson/ExportMode.h"
#include "support/ModelBuilders.h"

// The order in which the object model is asked shows from outside: whole recordings are compared.

namespace {

class Recording : public testing::Test {
public:
    ~Recording() override { ModuleExportMode() = OuString(); }
};

/// What every object but files, projects and iterations is asked before its children, when it has no
/// metadata.
Notes OwnMembers(const std::string& object, int type) {
    return {"CAEObjectIdentification::getID(" + object + ")",
            "CAEObject::getType(" + object + ")",
            "CAEObjectIdentification::getName(" + object + ")",
            "CAEObject::getCreatedDate(" + object + ")",
            "CAEObject::getCreatedUserName(" + object + ")",
            "CAEObject::getTypeName(" + std::to_string(type) + ")",
            "CAEObjectDBManagement::getDBKey(" + object + ")",
            "CAEObject::getAllMetadata(" + object + ")"};
}

Notes FileOwnMembers(const std::string& file) {
    Notes notes = OwnMembers(file, 3);
    notes[2] = "CAEFile::getFullPathName(" + file + ")";
    return notes;
}

Notes ListedChildren(const std::string& object) {
    return {"CAEObject::getChildrenList(" + object + ")"};
}

Notes Files(const std::string& object) {
    return {"CAEObject::GetFiles(" + object + ")", "CAEObject::getProject(" + object + ")"};
}

Notes FileMembers(const std::string& file, int type) {
    return {"CAEFile::getFileType(" + file + ")", "CAEGetFileTypeName(" + std::to_string(type) + ")",
            "CAEFile::getFileFormat(" + file + ")"};
}

}  // namespace

TEST_F(Recording, ProjectWithChildrenFilesAndMetadata) {
    TestProject project;
    SetMetadata(*project, L"Mass", L"1250", L"kg", L"double");
    SetMetadata(*project, L"Description", L"front crash");
    CAEObject& part = project.Add(CAE_PART, L"frame");
    project.AddFile(part, L"frame.step", CAE_FILE_CAD);
    part.attachCustomFile(99, nullptr);
    project.Add(CAE_SESSION_OBJECT, L"session");
    project.Add(CAE_TAG, L"tag");
    EXPECT_EQ(RecordingOf([&] { CAEObjectJson(&*project).Export(); }),
              Lines(Notes{"CAEObjectIdentification::getID(#1)", "CAEObject::getType(#1)",
                          "CAEObjectIdentification::getName(#1)", "CAEObject::getCreatedDate(#1)",
                          "CAEObject::getCreatedUserName(#1)", "CAEObject::getTypeName(4)",
                          "CAEProject::getAdditionalType(#1)", "CAEObjectDBManagement::getDBKey(#1)",
                          "CAEObject::getAllMetadata(#1)", "CAEObject::getMetadataType(#1, \"Mass\")",
                          "CAEObject::getMetadataUnitString(#1, \"Mass\")",
                          "CAEObject::getMetadataValue(#1, \"Mass\")",
                          "CAEObject::getMetadataType(#1, \"description\")",
                          "CAEObject::getMetadataUnitString(#1, \"description\")",
                          "CAEObject::getMetadataValue(#1, \"description\")"} +
                    ListedChildren("#1") + Notes{"CAEObject::getType(#2)"} + OwnMembers("#2", 0) +
                    ListedChildren("#2") + Files("#2") + Notes{"CAEProject::getFile(#1, 3)"} +
                    FileOwnMembers("#3") + ListedChildren("#3") + Files("#3") + FileMembers("#3", 1) +
                    Notes{"CAEProject::getFile(#1, 99)"} + Notes{"CAEObject::getType(#4)"} +
                    Notes{"CAEObject::getType(#5)"} + OwnMembers("#5", 41) + ListedChildren("#5") +
                    Files("#5") + Files("#1")));
}

TEST_F(Recording, DepthFirstBeforeTheNextSiblingAndFilesAfterAllChildren) {
    TestProject project;
    CAEObject& first = project.Add(CAE_MODEL, L"first");
    CAEObject& below = project.Add(first, CAE_PART, L"below");
    project.Add(CAE_MODEL, L"second");
    project.AddFile(first, L"a", CAE_FILE_DECK);
    CAEFile& file = project.AddFile(below, L"b", CAE_FILE_MESH);
    project.Add(file, CAE_TAG, L"below the file");
    EXPECT_EQ(
        RecordingOf([&] { CAEObjectJson(&*project).ExportChildren(); }),
        Lines(ListedChildren("#1") + Notes{"CAEObject::getType(#2)"} + OwnMembers("#2", 5) +
              ListedChildren("#2") + Notes{"CAEObject::getType(#3)"} + OwnMembers("#3", 0) +
              ListedChildren("#3") + Files("#3") + Notes{"CAEProject::getFile(#1, 6)"} +
              FileOwnMembers("#6") + ListedChildren("#6") + Notes{"CAEObject::getType(#7)"} +
              OwnMembers("#7", 41) + ListedChildren("#7") + Files("#7") + Files("#6") + FileMembers("#6", 2) +
              Files("#2") + Notes{"CAEProject::getFile(#1, 5)"} + FileOwnMembers("#5") +
              ListedChildren("#5") + Files("#5") + FileMembers("#5", 4) + Notes{"CAEObject::getType(#4)"} +
              OwnMembers("#4", 5) + ListedChildren("#4") + Files("#4")));
}

TEST_F(Recording, IterationAsksItsGrandparentForTheName) {
    TestProject project;
    CAEObject& folder = project.Add(project.Add(CAE_MODEL, L"study"), CAE_ITERATION_FOLDER, L"Iterations");
    CAEObject& iteration = project.Add(folder, CAE_ITERATION, L"run");
    Notes notes = OwnMembers("#4", 6);
    const Notes study{"CAEObject::getParent(#4)", "CAEObject::getParent(#3)",
                      "CAEObjectIdentification::getName(#2)"};
    notes.insert(notes.begin() + 3, study.begin(), study.end());
    EXPECT_EQ(RecordingOf([&] { CAEObjectJson(&iteration).Export(); }),
              Lines(notes + ListedChildren("#4") + Files("#4")));
}

TEST_F(Recording, ModesAskForTheKindBeforeTheTestThatHoldsInEveryMode) {
    TestProject project;
    project.Add(CAE_ITERATION_MODEL, L"model");
    project.Add(CAE_SESSION_OBJECT, L"session");
    project.Add(CAE_TAG, L"tag");
    ModuleExportMode() = L"STUDY";
    EXPECT_EQ(RecordingOf([&] { CAEObjectJson(&*project).ExportChildren(); }),
              Lines(ListedChildren("#1") +
                    Notes{"CAEObject::getType(#2)", "CAEObject::getType(#3)", "CAEObject::getType(#3)",
                          "CAEObject::getType(#4)", "CAEObject::getType(#4)"} +
                    OwnMembers("#4", 41) + ListedChildren("#4") + Files("#4")));
    ModuleExportMode() = L"PROJECT";
    EXPECT_EQ(RecordingOf([&] { CAEObjectJson(&*project).ExportChildren(); }),
              Lines(ListedChildren("#1") +
                    Notes{"CAEObject::getType(#2)", "CAEObject::getType(#3)", "CAEObject::getType(#4)"}));
}

TEST_F(Recording, FilesAreListedBeforeTheProjectIsAsked) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    EXPECT_EQ(RecordingOf([&] { CAEObjectJson(&part).ExportFiles(); }), Lines(Files("#2")));
    CAEFile file(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    file.attachCustomFile(3, nullptr);
    EXPECT_EQ(RecordingOf([&] { CAEObjectJson(&file).ExportFiles(); }), Lines(Files("#0")));
}

TEST_F(Recording, ConstructionForExportAsksNothing) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"a", CAE_FILE_DECK);
    EXPECT_EQ(RecordingOf([&] {
                  const CAEObjectJson object(&*project);
                  const CAEFileJson record(&file);
              }),
              "");
}

TEST_F(Recording, ConstructionOverANodeAsksForTheProject) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const JSONNode node = libjson::parse(R"({"type":"CRASH"})");
    EXPECT_EQ(RecordingOf([&] { const CAEObjectJson converter(node, &part); }),
              "CAEObject::getType(#2)\nCAEObject::getProject(#2)\n");
    EXPECT_EQ(
        RecordingOf([&] { const CAEObjectJson converter(node, &*project); }),
        "CAEObject::getType(#1)\nCAEProject::setAdditionalType(#1, \"CRASH\")\nCAEObject::getProject(#1)\n");
    EXPECT_EQ(RecordingOf([&] { const CAEObjectJson converter(node, nullptr); }), "");
}

TEST_F(Recording, RecordAsksForTheFileMembersAfterTheObjectNode) {
    TestProject project;
    CAEFile& file = project.AddFile(*project, L"a", CAE_FILE_RESULT);
    EXPECT_EQ(RecordingOf([&] { CAEFileJson(&file).Export(); }),
              Lines(FileOwnMembers("#2") + ListedChildren("#2") + Files("#2") + FileMembers("#2", 6)));
}

TEST_F(Recording, TypeNameIsAskedForAlsoWhereTheNameIsFixed) {
    EXPECT_EQ(RecordingOf([] { CAEObjectJson::ObjectTypeName(CAE_ITERATION); }),
              "CAEObject::getTypeName(6)\n");
    EXPECT_EQ(RecordingOf([] { CAEObjectJson::ObjectTypeFromName("CAEITERATION"); }), "");
}

TEST_F(Recording, SerializerAsksWhatItsConverterAsks) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    EXPECT_EQ(RecordingOf([&] { JsonSerializer(&*project).GetJsonString(); }),
              RecordingOf([&] { CAEObjectJson(&*project).GetJsonNode(); }));
}

TEST_F(Recording, AnExceptionPassesThroughTheWalkAndTheNextDocumentIsWhole) {
    TestProject project;
    CAEObject& study = project.Add(CAE_MODEL, L"study");
    project.AddFile(project.Add(study, CAE_PART, L"frame"), L"frame.step", CAE_FILE_CAD);
    JsonSerializer serializer(&*project);
    const std::string whole = TextOfNode(serializer.GetJson());
    for (const char* operation :
         {"CAEObject::getCreatedDate", "CAEObject::getChildrenList", "CAEObject::GetFiles",
          "CAEFile::getFullPathName", "CAEFile::getFileType"}) {
        const korvane::OddAnswer noMemory(operation, {.throws = true});
        RecordingOf([&] { EXPECT_THROW(serializer.GetJson(), std::bad_alloc) << operation; });
        EXPECT_EQ(TextOfNode(serializer.GetJson()), whole) << operation;
    }
}

#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include "host/HostSupport.h"
#include "host/document/DocumentImport.h"
#include "host/document/ReportText.h"
#include "host/document/TreePrinter.h"
#include "support/LongRun.h"
#include "support/SmallStack.h"

namespace host {
namespace {

class DocumentImportTest : public testing::Test {
protected:
    CAEObject* Import(const std::string& text, CAEObject& target) {
        report = ImportDocument(Parse(text), target, {}, kept.console);
        return project->getCAEObject(report.root);
    }
    CAEObject* Import(const std::string& text) { return Import(text, *project); }
    std::string Said() {
        kept.said.clear();
        SayImport(report, "p", kept.console);
        return kept.said;
    }
    std::string Tree() const { return PrintTree(*project, {false, false}); }
    /// Imports into a new project what stands between the braces of a document's root, and gives what is said
    /// behind the first line.
    std::string NotesOf(const std::string& members) {
        project = korvane::CreateProject(L"Demo", L"/nowhere");
        Import(R"({"type":"X",)" + members + "}");
        const std::string said = Said();
        return said.substr(said.find('\n') + 1);
    }

    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"Demo", L"/nowhere");
    KeptConsole kept;
    ImportReport report;
};

TEST_F(DocumentImportTest, SaysWhatWasMade) {
    CAEObject* const root = Import(
        R"({"name":"P","type":"SIMULATION","dbkey":"K1","children":[)"
        R"({"name":"A","type":"CAESUBASSEMBLY","dbkey":"K2","files":[{"name":"a.msh","fileType":"Mesh","dbkey":"K3"}]},)"
        R"({"name":"V","type":"CAEVIEWITEM","dbkey":"K2"},{"name":"c.txt","type":"CAEFILE"}]})");
    EXPECT_EQ(root, project.get());
    EXPECT_EQ(Said(),
              "korvane-json: p: 2 objects and 2 files created, 1 of the files attached and 1 as children, "
              "3 keys set, 1 of 1 view item linked\n");
    EXPECT_EQ(Tree(),
              "Demo         Project      #1  SIMULATION  key K1\n"
              "|- A         SubAssembly  #2  key K2\n"
              "|  `- a.msh  active mesh  #3  Mesh     Unknown  missing  key K3\n"
              "|- V         ViewItem     #4  -> #2\n"
              "`- c.txt     File         #5  Unknown  Unknown        -\n"
              "\n"
              "1 sub-assembly, 2 files (0 B)\n");
}

TEST_F(DocumentImportTest, SaysWhatWasLeftOut) {
    EXPECT_EQ(NotesOf(R"("children":[{"name":"n","id":"7"},5,{"type":""}])"),
              "korvane-json: p: left out with everything below it, because it has no \"type\" (3): 'n' (id "
              "'7'); an element that is not an object; ''\n");
    EXPECT_EQ(
        NotesOf(R"("children":[{"name":"n","type":"CAEFOO","children":[{"type":"CAETAG"}]},)"
                R"({"type":"caepart"},{"type":"CAETAG"}])"),
        "korvane-json: p: left out with everything below it, because its \"type\" is not known (2): 'n' of "
        "type 'CAEFOO'; '' of type 'caepart'\n");
    EXPECT_EQ(report.objectsAdded, 1U);
}

TEST_F(DocumentImportTest, SaysWhichFilesHangOnNothing) {
    EXPECT_EQ(NotesOf(R"("name":"P","files":[{"name":"a","fileType":"CAD"},{"name":"b","fileType":"Deck"}])"),
              "korvane-json: p: file that is attached to no object, because its type has no role there "
              "(1): 'a' at 'P'\n");
    EXPECT_EQ(report.filesAdded, 2U);
    EXPECT_EQ(report.filesAttached, 1U);
}

TEST_F(DocumentImportTest, SaysWhichNamesLeadOutOfTheDirectory) {
    EXPECT_EQ(NotesOf(R"("files":[{"name":"../a"},{"name":".."},{"name":"b\\c"},{"name":"d..e"}])"),
              "korvane-json: p: file left out, because its name leads out of the project's directory (3): "
              "'../a'; '..'; 'b\\c'\n");
    EXPECT_EQ(report.filesAdded, 1U);
}

TEST_F(DocumentImportTest, SaysWhichMembersAreNotRecognisedOrWithoutEffect) {
    EXPECT_EQ(NotesOf(R"("id":"1","createdBy":"u","status":"x","Name":"n","foo":{},)"
                      R"("files":[{"id":"2","foo":1,"filePath":"/x","type":"CAEFILE","fileType":"Deck"}])"),
              "korvane-json: p: members without effect (1): 'status'\n"
              "korvane-json: p: members that are not recognised (3): 'Name'; 'foo' 2 times\n");
    // What a file record has is nothing for an object.
    EXPECT_EQ(NotesOf(R"("fileType":"CAD")"),
              "korvane-json: p: members that are not recognised (1): 'fileType'\n");
}

TEST_F(DocumentImportTest, SaysWhichValuesAreNotWhatTheyShouldBe) {
    EXPECT_EQ(NotesOf(R"("name":{},"displayName":null,"createdDate":"a\u0000b")"),
              "korvane-json: p: object or array read as an empty text (1): 'name' of ''\n"
              "korvane-json: p: null read as the text 'null' (1): 'displayName' of ''\n"
              "korvane-json: p: text cut at a NUL character (1): 'createdDate' of ''\n");
    EXPECT_EQ(NotesOf(R"("children":"x","files":3,"metaData":true)"),
              "korvane-json: p: ignored, because it is neither an array nor an object (3): 'children' of ''; "
              "'files' "
              "of ''; 'metaData' of ''\n");
    EXPECT_EQ(NotesOf(R"("name":"a","name":"b")"),
              "korvane-json: p: member that occurs more than once (1): 'name' of 'a'\n");
    EXPECT_EQ(NotesOf(R"("metaData":{"m":{"value":"1","unit":"kg"},"n":{"value":"1","metaDataType":""}})"),
              "korvane-json: p: members that are not recognised (1): 'unit'\n"
              "korvane-json: p: metadata entry without \"value\" or \"metaDataType\", which is read as empty "
              "(1): 'm' of ''\n");
    EXPECT_EQ(NotesOf(R"("files":[7,{"files":[{}],"children":[{"type":"CAETAG"}]}])"),
              "korvane-json: p: file record that is not an object: a file without a name was created (1): an "
              "element that is not an object\n"
              "korvane-json: p: nothing imported below a file record (2): 'files' of ''; 'children' of ''\n");
    EXPECT_EQ(report.filesAdded, 2U);
    EXPECT_EQ(report.objectsAdded, 0U);
}

TEST_F(DocumentImportTest, SaysWhichMetadataEntriesBecomeOne) {
    const std::string merged =
        "korvane-json: p: metadata entry merged with an earlier one, because their names differ at most in "
        "letter case ";
    const auto entry = [](const std::string& name) {
        return '"' + name + R"(":{"value":"1","metaDataType":""})";
    };
    EXPECT_EQ(NotesOf("\"metaData\":{" + entry("Mass") + "," + entry("mass") + "," + entry("Masse") + "," +
                      entry("MASS") + "}"),
              merged + "(2): 'mass' of ''; 'MASS' of ''\n");
    EXPECT_EQ(NotesOf("\"metaData\":{" + entry("m") + "," + entry("m\\u0000n") + "}"),
              merged + "(1): 'm' of ''\n");
    EXPECT_EQ(NotesOf(R"("metaData":[{"value":"1","metaDataType":""},{"value":"2","metaDataType":""}])"),
              merged + "(1): '' of ''\n");
    // Entries of different objects have nothing to do with each other.
    EXPECT_EQ(NotesOf("\"metaData\":{" + entry("m") + R"(},"children":[{"type":"CAETAG","metaData":{)" +
                      entry("M") + "}}]"),
              "");
}

TEST_F(DocumentImportTest, ANullKeyGivesNoKey) {
    EXPECT_EQ(NotesOf(R"("dbkey":null,"children":[{"name":"t","type":"CAETAG","dbkey":null,"dbkey":"K"}],)"
                      R"("files":[{"name":"f","dbkey":null}])"),
              "korvane-json: p: \"dbkey\" ignored, because it is null (3): ''; 't'; 'f'\n");
    EXPECT_EQ(report.keys, 1U);
    EXPECT_TRUE(project->getDBKey().IsEmpty());
    EXPECT_EQ(std::string(project->getCAEObject(2)->getDBKey().GetAnsiBuffer()), "K");
}

TEST_F(DocumentImportTest, SaysWhichViewItemsShowNothing) {
    EXPECT_EQ(
        NotesOf(R"("children":[{"name":"v","type":"CAEVIEWITEM","dbkey":"I"},)"
                R"({"type":"CAESUBASSEMBLY","dbkey":"I"},{"type":"CAEVIEWITEM","dbkey":"I"}])"),
        "korvane-json: p: view item that shows nothing, because no assembly with its key came before it "
        "(1): 'v' with the key 'I'\n");
    EXPECT_EQ(report.viewItems, 2U);
    EXPECT_EQ(report.viewItemsLinked, 1U);
}

TEST_F(DocumentImportTest, SaysOfAConflictOnceWhatItIs) {
    Import(R"({"type":"X","children":[{"type":"CAEPART","name":"p1","dbkey":"K"},)"
           R"({"type":"CAEPART","name":"p2","dbkey":"K"}]})");
    const JSONNode document =
        Parse(R"({"type":"X","children":[{"type":"CAEPART","name":"p1","dbkey":"K"}]})");
    report = ImportDocument(document, *project, {.match = korvane::exchange::Match::kByKey}, kept.console);
    kept.said.clear();
    SayUpdate(report, "p", kept.console);
    EXPECT_EQ(
        kept.said,
        "korvane-json: p: nothing has changed\n"
        "korvane-json: p: in conflict (1): 'p1' is left out with everything below it: the key 'K' belongs "
        "to several objects\n");
}

TEST_F(DocumentImportTest, NamesTheFirstTenOfAKind) {
    std::string children;
    for (int number = 0; number < 12; ++number) {
        children += (number == 0 ? "" : ",") + std::string("{\"name\":\"n") + std::to_string(number) + "\"}";
    }
    const std::string notes = NotesOf("\"children\":[" + children + "]");
    EXPECT_NE(notes.find("(12): 'n0'; 'n1'"), std::string::npos) << notes;
    EXPECT_NE(notes.find("'n9'; and 2 more\n"), std::string::npos) << notes;
}

TEST_F(DocumentImportTest, ADocumentOfAnotherKindBecomesANewObjectBelowTheTarget) {
    project->setAdditionalType(L"Simulation");
    CAEObject* const study =
        Import(R"({"name":"S","type":"CAEMODEL","children":[{"type":"CAEPART","name":"A"}]})");
    ASSERT_NE(study, nullptr);
    EXPECT_EQ(study->getID(), 2);
    EXPECT_EQ(report.objectsAdded, 2U);
    CAEObject* const part =
        Import(R"({"name":"B","type":"CAEPART","files":[{"name":"b","fileType":"CAD"}]})", *study);
    EXPECT_EQ(part->getParent(), study);
    EXPECT_EQ(report.filesAttached, 1U);
    // Of the same kind it is the target itself.
    EXPECT_EQ(Import(R"({"name":"T","type":"CAEMODEL","children":[{"type":"CAETAG"}]})", *study), study);
    EXPECT_EQ(report.objectsAdded, 1U);
    EXPECT_EQ(Tree(),
              "Demo        Project   #1  Simulation\n"
              "`- T        Model     #2\n"
              "   |- A     Part      #3\n"
              "   |- B     Part      #4\n"
              "   |  `- b  CAD file  #5  CAD  Unknown  missing\n"
              "   `-       Tag       #6\n"
              "\n"
              "1 study, 2 parts, 1 tag, 1 file (0 B)\n");
}

TEST_F(DocumentImportTest, AViewItemThatIsADocumentIsLinkedToo) {
    Import(R"({"type":"X","children":[{"type":"CAEITERATIONMODEL","dbkey":"I"}]})");
    auto* const item = dynamic_cast<CAEViewItem*>(Import(R"({"type":"CAEVIEWITEM","dbkey":"I"})"));
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(korvane::GetReferencedObject(*item), 2);
    EXPECT_EQ(std::string(project->getAdditionalType().GetAnsiBuffer()), "X");
}

TEST_F(DocumentImportTest, TellsNewFilesFromOldOnes) {
    Import(R"({"type":"X","files":[{"name":"old","fileType":"CAD"},{"name":"older","fileType":"Deck"}]})");
    Import(
        R"({"type":"X","files":[{"name":"new","fileType":"Deck"}],"children":[{"type":"CAEPROJECT","files":[{"name":"in","fileType":"Mesh"}]}]})");
    EXPECT_EQ(report.filesAdded, 2U);
    EXPECT_EQ(report.filesAttached, 1U);
    EXPECT_EQ(report.objectsAdded, 1U);
}

TEST_F(DocumentImportTest, NeedsNoStackForNesting) {
    constexpr int kDepth = kIsSanitized ? 20'000 : 100'000;
    std::string text = R"({"type":"X")";
    for (int depth = 0; depth < kDepth; ++depth) {
        text += R"(,"children":[{"type":"CAEMODEL","dbkey":null)";
    }
    for (int depth = 0; depth < kDepth; ++depth) {
        text += "}]";
    }
    OnSmallStack([&] { Import(text + "}"); });
    EXPECT_EQ(report.objectsAdded, static_cast<std::size_t>(kDepth));
    EXPECT_EQ(report.keys, 0U);
}

TEST(MakeProjectFor, TakesTheNameOfAProjectsDocument) {
    const auto nameOf = [](const std::string& document) {
        OuString name;
        MakeProjectFor(Parse(document), L"other", L"/d")->getName(name);
        return std::string(name.GetAnsiBuffer());
    };
    EXPECT_EQ(nameOf(R"({"type":"SIMULATION","name":"P"})"), "P");
    EXPECT_EQ(nameOf(R"({"type":"CAEPROJECT","name":"P"})"), "P");
    EXPECT_EQ(nameOf(R"({"type":"CAEMODEL","name":"P"})"), "other");
    EXPECT_EQ(nameOf(R"({"type":"SIMULATION"})"), "other");
}

}  // namespace
}  // namespace host

#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "ImportSupport.h"
#include "support/LongRun.h"
#include "support/SmallStack.h"

// What an import says of a document, and what it does beside what the library's own does.

namespace {

using korvane::exchange::Place;
using korvane::exchange::Progress;

constexpr const char* kProject = R"("type":"SIMULATION")";

std::string Repeat(std::string_view text, int count) {
    std::string repeated;
    for (int index = 0; index < count; ++index) {
        repeated += text;
    }
    return repeated;
}

/// A document of many parts in folders, every object with a key of its own.
std::string ManyObjects(int count) {
    std::string text = R"({"type":"SIMULATION","children":[)";
    for (int index = 0; index < count; ++index) {
        const std::string number = std::to_string(index);
        text += index == 0 ? "" : index % 100 == 0 ? "]}," : ",";
        if (index % 100 == 0) {
            text += R"({"type":"CAEMODEL","name":"folder )" + number + R"(","dbkey":"F-)" + number +
                    R"(","children":[{"type":"CAETAG","name":"first"},)";
        }
        text +=
            R"({"id":"7","type":"CAEPART","name":"part )" + number + R"(","dbkey":"K-)" + number + R"("})";
    }
    return text + "]}]}";
}

}  // namespace

class ImportDocumentTest : public ExchangeImportTest {
protected:
    /// All that the report says of the document, onto a project with nothing in it.
    std::string Said(const std::string& members, ImportOptions options = {}) {
        const TestProject project;
        const JSONNode document = libjson::parse(("{" + members + "}").c_str());
        return Whole(korvane::exchange::ImportDocument(document, *project, options));
    }
    std::string SaidOfProject(const std::string& members, ImportOptions options = {}) {
        return Said(kProject + ("," + members), options);
    }
};

TEST_F(ImportDocumentTest, UnknownMember) {
    EXPECT_EQ(SaidOfProject(R"("Name":"x")"),
              "/Name unknown-member #1 'Name': 'Name' of '' is not recognised\n");
    EXPECT_EQ(
        SaidOfProject(R"("children":[{"type":"CAEPART","name":"frame","id":"7","a/b~c":1}])",
                      {.listFixed = false}),
        "/children/0/a~1b~0c unknown-member #2 'a/b~c': 'a/b~c' of 'frame' (id '7') is not recognised\n");
    EXPECT_EQ(
        SaidOfProject(R"("metaData":{"Mass":{"value":"1","metaDataType":"","unit":"kg"}})"),
        "/metaData/Mass/unit unknown-member #1 'unit': 'unit' of the metadata entry 'Mass' of '' is not "
        "recognised\n");
}

TEST_F(ImportDocumentTest, WithoutEffect) {
    EXPECT_EQ(SaidOfProject(R"("name":"p","status":"released")"),
              "/status without-effect #1 'status': 'status' of 'p' has no effect\n");
}

TEST_F(ImportDocumentTest, Fixed) {
    EXPECT_EQ(SaidOfProject(R"("name":"p","createdBy":"you")"),
              "/createdBy fixed #1 'createdBy': 'createdBy' of 'p' changes nothing: every document has it\n");
    const TestProject project;
    const ImportReport report = Import(R"({"type":"SIMULATION","createdBy":"you"})", {.listFixed = false});
    EXPECT_EQ(Whole(report), "");
    EXPECT_EQ(report.Count(Reason::kFixed), 1U);
    EXPECT_EQ(report.unlisted, 0U);
}

TEST_F(ImportDocumentTest, RepeatedMember) {
    EXPECT_EQ(SaidOfProject(R"("name":"p","name":"q")"),
              "/name repeated-member #1 'name' of 'p': 'name' of 'p' occurs again; the last one counts\n");
    EXPECT_EQ(SaidOfProject(R"("name":"p","type":"CRASH")"),
              "/type repeated-member #1 'type' of 'p': 'type' of 'p' occurs again; the first one counts\n");
    EXPECT_EQ(
        SaidOfProject(R"("metaData":{"Mass":{"value":"1","metaDataType":"","value":"2"}})"),
        "/metaData/Mass/value repeated-member #1 'Mass.value' of '': 'Mass.value' of '' occurs again; the "
        "first one counts\n");
    EXPECT_EQ(
        SaidOfProject(R"("children":[{"type":"CAEPART","name":"p",)"
                      R"("metaData":{"Mass":{"value":"1","metaDataType":"","value":"2"}}}])"),
        "/children/0/metaData/Mass/value repeated-member #2 'Mass.value' of 'p': 'Mass.value' of 'p' occurs "
        "again; the first one counts\n");
}

TEST_F(ImportDocumentTest, WrongKind) {
    EXPECT_EQ(
        SaidOfProject(R"("children":"none","files":3,"metaData":null)"),
        "/children wrong-kind #1 'children' of '': 'children' of '' is neither an array nor an object\n"
        "/files wrong-kind #1 'files' of '': 'files' of '' is neither an array nor an object\n"
        "/metaData wrong-kind #1 'metaData' of '': 'metaData' of '' is neither an array nor an object\n");
}

TEST_F(ImportDocumentTest, NoType) {
    EXPECT_EQ(
        SaidOfProject(R"("children":[{"name":"frame"},7,{"type":""}])"),
        "/children/0 no-type #0 'frame': 'frame' is left out with everything below it, because it has no "
        "\"type\"\n"
        "/children/1 no-type #0 an element that is not an object: an element that is not an object is "
        "left out with everything below it, because it has no \"type\"\n"
        "/children/2 no-type #0 '': '' is left out with everything below it, because it has no \"type\"\n");
}

TEST_F(ImportDocumentTest, UnknownType) {
    EXPECT_EQ(
        SaidOfProject(R"("children":{"a":{"type":"CAECAR","name":"frame"}})"),
        "/children/a unknown-type #0 'frame' of type 'CAECAR': 'frame' of type 'CAECAR' is left out with "
        "everything below it: its \"type\" is not known\n");
}

TEST_F(ImportDocumentTest, Refused) {
    const korvane::OddAnswer none("createCAEObject", {.status = 1});
    EXPECT_EQ(
        SaidOfProject(R"("children":[{"type":"CAEPART","name":"frame"},{"type":"CAEPART"}])"),
        "/children/0 refused #0 'frame': 'frame' is left out with everything below it, because the object "
        "was not created\n");
    EXPECT_EQ(none.TimesGiven(), 1);
}

TEST_F(ImportDocumentTest, BelowFileRecord) {
    EXPECT_EQ(
        SaidOfProject(R"("files":[{"name":"a.inp","children":[{"type":"CAETAG"}],"files":[{}]}])"),
        "/files/0/children below-file-record #0 'children' of 'a.inp': 'children' of 'a.inp': nothing is "
        "imported below a file record\n"
        "/files/0/files below-file-record #0 'files' of 'a.inp': 'files' of 'a.inp': nothing is imported "
        "below a file record\n");
}

TEST_F(ImportDocumentTest, LeadsOut) {
    EXPECT_EQ(
        SaidOfProject(R"("files":[{"name":"../a.inp"}])"),
        "/files/0 leads-out #0 '../a.inp': the file '../a.inp' is left out, because its name leads out of "
        "the project's directory\n");
    for (const char* const name :
         {"../a", "a/b", "/a", R"(..\\a)", R"(C:\\a)", "..", ".", R"(\\\\server\\a)"}) {
        const std::string text = R"({"type":"SIMULATION","files":[{"displayName":"fine","name":")" +
                                 std::string(name) + R"("}],"children":[{"type":"CAEFILE","name":"x"}]})";
        const TestProject project;
        const ImportReport report = Import(text, *project);
        EXPECT_EQ(report.Count(Reason::kLeadsOut), 1U) << name;
        EXPECT_EQ(korvane::GetProjectFiles(*project).size(), 0U) << name;
        const ImportReport allowed = Import(text, *project, {.allowStrayFiles = true});
        EXPECT_EQ(allowed.Count(Reason::kLeadsOut), 0U) << name;
        EXPECT_EQ(allowed.filesAdded, 2U) << name;
    }
    for (const char* const name : {"...", "..a", "a..", ".a", "a", "", " ", R"(..\u0000)"}) {
        const bool isStray = std::string_view(name).ends_with("0000");
        const TestProject project;
        const ImportReport report =
            Import(R"({"type":"SIMULATION","files":[{"name":")" + std::string(name) + R"("}]})", *project);
        EXPECT_EQ(report.Count(Reason::kLeadsOut), isStray ? 1U : 0U) << name;
    }
    // The last name counts.
    EXPECT_EQ(Import(R"({"type":"SIMULATION","files":[{"name":"../a","displayName":"a"}]})")
                  .Count(Reason::kLeadsOut),
              0U);
}

TEST_F(ImportDocumentTest, NullKey) {
    const ImportReport report =
        Import(R"({"type":"SIMULATION","dbkey":null,"children":[{"type":"CAEPART","name":"p","dbkey":null}],)"
               R"("files":[{"name":"a","dbkey":null}]})");
    EXPECT_EQ(Whole(report),
              "/dbkey null-key #1 '': the key of '' is null, and is left out\n"
              "/children/0/dbkey null-key #2 'p': the key of 'p' is null, and is left out\n"
              "/files/0/dbkey null-key #0 'a': the key of 'a' is null, and is left out\n");
    EXPECT_EQ(report.keys, 0U);
    EXPECT_EQ(Outline(*project_), "#1 Project [#3 a]\n  #2 p\n");
}

TEST_F(ImportDocumentTest, ReadAsEmptyAsNullAndCut) {
    EXPECT_EQ(SaidOfProject(R"("name":{"a":1},"displayName":null,"createdDate":"now\u0000then")"),
              "/name read-as-empty #1 'name' of '': 'name' of '' is an object or an array, and is read as an "
              "empty text\n"
              "/displayName read-as-null #1 'displayName' of '': 'displayName' of '' is null, and is read as "
              "the text 'null'\n"
              "/createdDate cut-at-nul #1 'createdDate' of '': 'createdDate' of '' is cut at its NUL "
              "character\n");
    EXPECT_EQ(SaidOfProject(R"("files":[7])"),
              "/files/0 nameless-file #0 an element that is not an object: an element that is not an object "
              "stands for a file: a file without a name is made\n");
}

TEST_F(ImportDocumentTest, Merged) {
    EXPECT_EQ(SaidOfProject(R"("metaData":{"Mass":{"value":"1","metaDataType":""},)"
                            R"("MASS":{"value":"2","metaDataType":""}})"),
              "/metaData/MASS merged #1 'MASS' of '': the metadata entry 'MASS' of '' takes the place of an "
              "earlier one, because their names differ at most in letter case\n");
}

TEST_F(ImportDocumentTest, Incomplete) {
    EXPECT_EQ(
        SaidOfProject(R"("metaData":{"Mass":{"value":"1"}})"),
        "/metaData/Mass incomplete #1 'Mass' of '': the metadata entry 'Mass' of '' has no \"value\" or no "
        "\"metaDataType\", which is read as empty\n");
}

TEST_F(ImportDocumentTest, Unattached) {
    EXPECT_EQ(
        SaidOfProject(R"("name":"p","files":[{"name":"a.msh","fileType":"Mesh"}])"),
        "/files/0 unattached #2 'a.msh' at 'p': the file 'a.msh' at 'p' is attached to no object, because "
        "its type has no role there\n");
}

TEST_F(ImportDocumentTest, NoMasterAssembly) {
    EXPECT_EQ(
        SaidOfProject(R"("children":[{"type":"CAEVIEWITEM","name":"v","dbkey":"ITEM"},)"
                      R"({"type":"CAEVIEWITEM","name":"w"}])"),
        "/children/0 no-master-assembly #2 'v' with the key 'ITEM': 'v' with the key 'ITEM' shows nothing, "
        "because no assembly with its key came before it\n"
        "/children/1 no-master-assembly #3 'w': 'w' shows nothing, because it has no key\n");
}

TEST_F(ImportDocumentTest, OnlyAnAssemblyIsAMaster) {
    EXPECT_EQ(
        SaidOfProject(R"("children":[{"type":"CAEPART","name":"p","dbkey":"ITEM"},)"
                      R"({"type":"CAEVIEWITEM","name":"v","dbkey":"ITEM"}])"),
        "/children/1 no-master-assembly #3 'v' with the key 'ITEM': 'v' with the key 'ITEM' shows nothing, "
        "because no assembly with its key came before it\n");
}

TEST_F(ImportDocumentTest, TextsOfEntriesAreOnOneLineAndPrintable) {
    EXPECT_EQ(SaidOfProject(R"("name":"a\nb\u202Ec","x\ty":1)"),
              "/x\ty unknown-member #1 'x\\ty': 'x\\ty' of 'a\\nb\\u202Ec' is not recognised\n");
    const std::string longName(1000, 'n');
    for (const auto& entry :
         Import(R"({"type":"SIMULATION","name":")" + longName + R"(","Name":1})").entries) {
        EXPECT_LT(entry.sentence.size(), 200U);
    }
}

TEST_F(ImportDocumentTest, Counts) {
    const ImportReport report = Import(
        R"({"type":"SIMULATION","dbkey":"P","children":[)"
        R"({"type":"CAESUBASSEMBLY","name":"a","dbkey":"ITEM","files":[{"name":"m","fileType":"Mesh"}]},)"
        R"({"type":"CAEVIEWITEM","dbkey":"ITEM"},{"type":"CAEVIEWITEM"},)"
        R"({"type":"CAEFILE","name":"f"},{"type":"CAEMODEL","dbkey":""}],)"
        R"("files":[{"name":"m","fileType":"Mesh"},{"name":"d","dbkey":"F"}]})");
    EXPECT_TRUE(report.hasRoot);
    EXPECT_EQ(report.root, 1);
    EXPECT_EQ(report.objectsAdded, 4U);
    EXPECT_EQ(report.objectsMatched, 0U);
    EXPECT_EQ(report.objectsMoved, 0U);
    EXPECT_EQ(report.objectsRemoved, 0U);
    EXPECT_EQ(report.filesAdded, 4U);
    EXPECT_EQ(report.filesMatched, 0U);
    EXPECT_EQ(report.filesAttached, 2U);
    EXPECT_EQ(report.filesAsChildren, 1U);
    // Not that of what a view item shows.
    EXPECT_EQ(report.keys, 3U);
    EXPECT_EQ(report.viewItems, 2U);
    EXPECT_EQ(report.viewItemsLinked, 1U);
    EXPECT_EQ(report.Count(Reason::kAdded), 8U);
    EXPECT_TRUE(report.HasChanged());
}

TEST_F(ImportDocumentTest, NothingFitsWhereNothingBelowTheRootDoes) {
    struct Case {
        const char* members;
        std::size_t elements;
        std::size_t taken;
        bool hasFitted;
    };
    for (const Case& tried : {
             Case{R"("name":"Project")", 0, 0, true},
             Case{R"("children":[],"files":{},"metaData":{"Mass":{}})", 0, 0, true},
             Case{R"("children":null,"files":null)", 0, 0, true},
             Case{R"("children":[{"type":"NOPE"},{"name":"p"},7])", 3, 0, false},
             Case{R"("metaData":{"Mass":{"value":"1"}},"children":[{"type":"NOPE"}])", 1, 0, false},
             Case{R"("files":[{"name":"../a"}])", 1, 0, false},
             Case{R"("children":"none")", 1, 0, false},
             Case{R"("children":[{"type":"NOPE","children":[{"type":"CAETAG"}]},{"type":"CAETAG"}])", 2, 1,
                  true},
             Case{R"("children":[{"type":"CAEPART","files":[{"name":"../a"},{"name":"b"}]}])", 3, 2, true},
             Case{R"("children":[{"type":"NOPE"}],"files":[{"name":"b"}])", 2, 1, true},
         }) {
        const std::string text = std::string(R"({"type":"SIMULATION",)") + tried.members + "}";
        for (const Match match : {Match::kNever, Match::kByKey, Match::kByKey}) {
            const ImportReport report = Import(text, {.match = match});
            EXPECT_TRUE(report.hasRoot) << text;
            EXPECT_EQ(report.elements, tried.elements) << text;
            EXPECT_EQ(report.elementsTaken, tried.taken) << text;
            EXPECT_EQ(report.HasFitted(), tried.hasFitted) << text;
        }
    }
    // The root that becomes a child is none of them, and a file in conflict is left out.
    for (const Match match : {Match::kNever, Match::kByKey, Match::kByKey}) {
        const ImportReport report = Import(
            R"({"type":"CAEMODEL","name":"m","files":[{"name":"a","dbkey":"F"},{"name":"b","dbkey":"F"}]})",
            {.match = match, .place = Place::kByKind});
        EXPECT_TRUE(report.hasRoot);
        EXPECT_EQ(report.elements, 2U);
        EXPECT_EQ(report.elementsTaken, match == Match::kNever ? 2U : 0U);
        EXPECT_EQ(report.HasFitted(), match == Match::kNever);
    }
    EXPECT_FALSE(Import(R"({"name":"Project"})").HasFitted());
}

TEST_F(ImportDocumentTest, DoesWhatTheLibraryDoesButNullKeysAndStrayFiles) {
    const std::string text =
        R"({"type":"CRASH","name":"n","displayName":"d","dbkey":"P","createdDate":"then","metaData":{)"
        R"("Mass":{"value":"1","metaDataType":"kg"},"Reference To Program":{"value":"No"}},"children":[)"
        R"({"type":"CAEPART","name":"p","files":[{"name":"a","fileType":"Mesh"},{"name":"b"}]},)"
        R"({"type":"CAEVIEWITEM","dbkey":"P"},{"name":"none"}],"files":[7]})";
    JSONNode document = libjson::parse(text.c_str());
    const TestProject other;
    const std::string expected =
        ChangesBy([&] { caerest::json::DeserializeJsonToObject(document, &*other); });
    EXPECT_EQ(ChangesBy([&] { Import(text); }), expected);
    EXPECT_EQ(Outline(*project_), Outline(*other));
}

TEST_F(ImportDocumentTest, ADocumentWithoutTypeChangesNothing) {
    for (const char* const text :
         {R"({"name":"n","children":[{"type":"CAEPART"}]})", R"({"type":"","name":"n"})", "{}", "[]",
          R"([{"type":"SIMULATION"}])", R"("text")", "7", "null"}) {
        for (const Match match : {Match::kNever, Match::kByKey}) {
            for (const Place place : {Place::kOnTarget, Place::kByKind}) {
                ImportReport report;
                EXPECT_EQ(ChangesBy([&] { report = Import(text, {.match = match, .place = place}); }), "")
                    << text;
                EXPECT_FALSE(report.hasRoot) << text;
                EXPECT_EQ(report.root, 0) << text;
                EXPECT_EQ(report.membersTaken, 0U) << text;
                EXPECT_EQ(Listed(report), " no-type #0\n") << text;
            }
        }
    }
    EXPECT_EQ(project_->getAdditionalType(), L"Simulation");
}

TEST_F(ImportDocumentTest, AnObjectWithoutAProjectGetsNothing) {
    OuString* const noPath = nullptr;
    CAEFile file(noPath, CAE_FILE_DECK, CAE_FORMAT_ASCII, false);
    for (const Match match : {Match::kNever, Match::kByKey}) {
        ImportReport report;
        EXPECT_EQ(ChangesBy([&] {
                      report = Import(R"({"type":"CAEFILE","name":"n","children":[{"type":"CAEPART"}]})",
                                      file, {.match = match});
                  }),
                  "");
        OuString name;
        file.getName(name);
        EXPECT_TRUE(name.IsEmpty());
        EXPECT_FALSE(report.hasRoot);
        EXPECT_EQ(report.membersTaken, 0U);
        EXPECT_EQ(Listed(report), " refused #0\n");
    }
}

TEST_F(ImportDocumentTest, ByKindTheRootOfAnotherKindBecomesAChild) {
    CAEObject& model = project_.Add(CAE_MODEL, L"m");
    const ImportReport report =
        Import(R"({"type":"CAEPART","name":"p","Name":1})", model, {.place = Place::kByKind});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 m\n    #3 p\n");
    EXPECT_EQ(report.root, 3);
    EXPECT_TRUE(report.hasRoot);
    EXPECT_EQ(report.objectsAdded, 1U);
    EXPECT_EQ(Listed(report), "/Name unknown-member #3\n");
}

TEST_F(ImportDocumentTest, ByKindTheRootOfTheSameOrNoKindIsTheTarget) {
    CAEObject& model = project_.Add(CAE_MODEL, L"m");
    EXPECT_EQ(Import(R"({"type":"CAEMODEL","name":"a"})", model, {.place = Place::kByKind}).root, 2);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 a\n");
    EXPECT_EQ(Import(R"({"type":"WHATEVER","name":"b"})", model, {.place = Place::kByKind}).root, 2);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 b\n");
    EXPECT_EQ(Import(R"({"type":"CAEPART","name":"c"})", model).root, 2);
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 c\n");
}

TEST_F(ImportDocumentTest, ByKindAnUpdateFindsTheRootAmongTheChildren) {
    project_.Add(CAE_PART, L"p");
    ImportReport report = Update(R"({"type":"CAEPART","name":"p","dbkey":"K"})", {.place = Place::kByKind});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 p K\n");
    EXPECT_EQ(report.root, 2);
    report =
        Update(R"({"type":"CAEPART","name":"q","dbkey":"K"})", {.place = Place::kByKind, .remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 q K\n");
    EXPECT_EQ(report.root, 2);
}

TEST_F(ImportDocumentTest, ByKindARootWithTheKeyOfAnObjectStaysWhereThatHangs) {
    CAEObject& folder = project_.Add(CAE_ASSEMBLY_FOLDER, L"CAD");
    folder.setDBKey(L"F");
    CAEObject& study = project_.Add(folder, CAE_MODEL, L"s");
    study.setDBKey(L"S");
    project_.Add(study, CAE_PART, L"old");
    project_.Add(CAE_PART, L"elsewhere").setDBKey(L"P");
    const ImportReport report =
        Update(R"({"type":"CAEMODEL","name":"t","dbkey":"S","children":[{"type":"CAETAG","name":"new"},)"
               R"({"type":"CAEPART","name":"elsewhere","dbkey":"P"},)"
               R"({"type":"CAEASSEMBLYFOLDER","name":"CAD","dbkey":"F"}]})",
               {.place = Place::kByKind, .remove = true});
    EXPECT_EQ(Outline(*project_), "#1 Project\n  #2 CAD F\n    #3 t S\n      #6 new\n      #5 elsewhere P\n");
    EXPECT_EQ(report.root, 3);
    EXPECT_EQ(ListedChanges(report),
              "/name changed #3\n/children/0 added #6\n/children/1 moved #5\n/children removed #4\n");
    // What the root lies below does not move below it.
    EXPECT_EQ(Listed(report, [](auto reason) { return reason == Reason::kConflict; }),
              "/children/2 conflict #2\n");
}

TEST_F(ImportDocumentTest, ADryRunChangesNothingAndSaysTheSame) {
    const std::string text = ManyObjects(150);
    ImportReport said;
    EXPECT_EQ(ChangesBy([&] { said = Import(text, {.dryRun = true}); }), "");
    EXPECT_EQ(Outline(*project_), "#1 Project\n");
    const ImportReport done = Import(text);
    EXPECT_EQ(Unnumbered(Whole(said)), Unnumbered(Whole(done)));
    EXPECT_EQ(Numbers(said), Numbers(done));
}

TEST_F(ImportDocumentTest, TellsHowFarItIs) {
    for (const Match match : {Match::kNever, Match::kByKey, Match::kByKey}) {
        std::vector<Progress> calls;
        const ImportReport report =
            Import(ManyObjects(1000), {.match = match, .progress = [&](const Progress& progress) {
                                           calls.push_back(progress);
                                           return true;
                                       }});
        ASSERT_GT(calls.size(), 3U);
        for (std::size_t index = 1; index < calls.size(); ++index) {
            EXPECT_GT(calls[index].objects, calls[index - 1].objects);
            EXPECT_EQ(calls[index].total, 1020U);
            EXPECT_LE(calls[index].objects, 1020U);
        }
        EXPECT_FALSE(report.isStopped);
    }
}

TEST_F(ImportDocumentTest, StopsBetweenObjects) {
    for (const Match match : {Match::kNever, Match::kByKey}) {
        const TestProject project;
        int calls = 0;
        const ImportReport report = Import(
            ManyObjects(1000), *project,
            {.match = match, .remove = true, .progress = [&](const Progress&) { return ++calls < 3; }});
        EXPECT_TRUE(report.isStopped);
        EXPECT_EQ(calls, 3);
        std::size_t objects = 0;
        korvane::VisitTree(*project, [&](CAEObject&, int) { ++objects; });
        EXPECT_EQ(report.objectsAdded, objects - 1);
        EXPECT_GT(report.objectsAdded, 100U);
        EXPECT_LT(report.objectsAdded, 1000U);
        const ImportReport rest = Import(ManyObjects(1000), *project, {.match = Match::kByKey});
        EXPECT_EQ(rest.objectsAdded,
                  match == Match::kByKey ? 1020 - report.objectsAdded : 1020 - objects + 1);
    }
}

TEST_F(ImportDocumentTest, AStoppedUpdateRemovesNothing) {
    for (int count = 0; count < 300; ++count) {
        project_.Add(CAE_PART, L"old");
    }
    int calls = 0;
    const ImportReport report =
        Import(ManyObjects(1000),
               {.match = Match::kByKey, .remove = true, .sameRoot = true, .progress = [&](const Progress&) {
                    return ++calls < 3;
                }});
    EXPECT_TRUE(report.isStopped);
    EXPECT_EQ(report.objectsRemoved, 0U);
    EXPECT_NE(project_->getCAEObject(300), nullptr);
}

TEST_F(ImportDocumentTest, WhatTheCallbackThrowsComesThrough) {
    for (const Match match : {Match::kNever, Match::kByKey}) {
        EXPECT_THROW(Import(ManyObjects(1000), {.match = match,
                                                .progress = [](const Progress& progress) -> bool {
                                                    return progress.objects < 500
                                                               ? true
                                                               : throw std::out_of_range("enough");
                                                }}),
                     std::out_of_range);
        EXPECT_NE(Outline(*project_), "#1 Project\n");
        EXPECT_NO_THROW(JsonSerializer(&*project_).GetJson());
    }
}

TEST_F(ImportDocumentTest, WhatTheObjectModelThrowsComesThrough) {
    for (const Match match : {Match::kNever, Match::kByKey}) {
        for (int after = 0; after < 200; ++after) {
            const TestProject project;
            project->setDBKey(L"P");
            const std::string text = ManyObjects(3);
            bool isThrown = false;
            {
                const korvane::OddAnswer bad("", {.throws = true, .after = after});
                const JSONNode document = libjson::parse(text.c_str());
                const json_string before = document.write();
                try {
                    korvane::exchange::ImportDocument(document, *project, {.match = match});
                } catch (const std::bad_alloc&) {
                    isThrown = true;
                }
                EXPECT_EQ(isThrown, bad.TimesGiven() == 1);
                EXPECT_EQ(document.write(), before);
            }
            EXPECT_NO_THROW(Outline(*project));
            if (!isThrown) {
                EXPECT_GT(after, 20);
                break;
            }
        }
    }
}

TEST_F(ImportDocumentTest, DepthNeedsNoStack) {
    const int depth = DeepLevels();
    const std::string text = Repeat(R"({"type":"CAEMODEL","id":"3","name":"m","children":[)", depth) +
                             R"({"type":"CAEPART"})" + Repeat("]}", depth);
    const JSONNode document = libjson::parse(text.c_str());
    OnSmallStack([&] {
        TestProject project;
        CAEObject& top = project.Add(CAE_MODEL, L"top");
        for (const bool dryRun : {true, false}) {
            const ImportReport report =
                korvane::exchange::ImportDocument(document, top, {.dryRun = dryRun, .listFixed = false});
            EXPECT_EQ(report.objectsAdded, static_cast<std::size_t>(depth));
            EXPECT_EQ(report.Count(Reason::kFixed), static_cast<std::size_t>(depth));
        }
    });
}

TEST_F(ImportDocumentTest, DepthNeedsNoStackInAnUpdate) {
    const int depth = DeepLevels();
    const std::string text = Repeat(R"({"type":"CAEMODEL","name":"m","children":[)", depth) +
                             R"({"type":"CAEPART"})" + Repeat("]}", depth);
    const JSONNode document = libjson::parse(text.c_str());
    OnSmallStack([&] {
        TestProject project;
        CAEObject& top = project.Add(CAE_MODEL, L"m");
        ImportReport report = korvane::exchange::ImportDocument(document, top, {.match = Match::kByKey});
        EXPECT_EQ(report.objectsAdded, static_cast<std::size_t>(depth));
        EXPECT_EQ(report.entries.size() + report.unlisted, static_cast<std::size_t>(depth));
        EXPECT_GT(report.unlisted, 0U);
        std::size_t bytes = 0;
        for (const auto& entry : report.entries) {
            bytes += entry.pointer.size() + entry.subject.size() + entry.sentence.size();
        }
        EXPECT_LT(bytes, std::size_t{300} << 20U);
        report = korvane::exchange::ImportDocument(document, top, {.match = Match::kByKey});
        EXPECT_FALSE(report.HasChanged());
        EXPECT_EQ(report.objectsMatched, static_cast<std::size_t>(depth) + 1);
    });
}

TEST_F(ImportDocumentTest, WhatIsMissingEverywhereInADeepTreeIsCounted) {
    // Pointers to all of them would need memory that grows with the square of the depth.
    const int depth = DeepLevels() / 5;
    CAEObject* object = &project_.Add(CAE_MODEL, L"m");
    for (int level = 0; level < depth; ++level) {
        project_.Add(*object, CAE_TAG, L"missing");
        object = &project_.Add(*object, CAE_MODEL, L"m");
    }
    const std::string text = Repeat(R"({"type":"CAEMODEL","name":"m","children":[)", depth) +
                             R"({"type":"CAEMODEL","name":"m"})" + Repeat("]}", depth);
    const ImportReport report =
        Import(text, *project_->getCAEObject(2), {.match = Match::kByKey, .remove = true});
    EXPECT_EQ(report.objectsRemoved, static_cast<std::size_t>(depth));
    EXPECT_EQ(report.Count(Reason::kRemoved), static_cast<std::size_t>(depth));
    EXPECT_EQ(report.entries.size() + report.unlisted, static_cast<std::size_t>(depth));
}

TEST_F(ImportDocumentTest, ManyObjectsTakeCallsInProportion) {
    const auto callsOf = [](int count, const ImportOptions& options, int times) {
        const TestProject project;
        const JSONNode document = libjson::parse(ManyObjects(count).c_str());
        std::size_t calls = 0;
        for (int time = 0; time < times; ++time) {
            korvane::StartRecording();
            korvane::exchange::ImportDocument(document, *project, options);
            calls = korvane::TakeRecording().size();
        }
        return static_cast<double>(calls);
    };
    for (const int times : {1, 2}) {
        for (const Match match : {Match::kNever, Match::kByKey}) {
            const ImportOptions options = {.match = match, .remove = true};
            const double few = callsOf(1000, options, times);
            EXPECT_NEAR(callsOf(10'000, options, times) / few, 10.0, 0.2);
        }
    }
}

TEST_F(ImportDocumentTest, HundredThousandObjects) {
    constexpr std::size_t kMany = kIsSample ? 9'900 : 99'000;
    const JSONNode document = libjson::parse(ManyObjects(kMany).c_str());
    const ImportOptions update = {.match = Match::kByKey, .remove = true};
    ImportReport report = korvane::exchange::ImportDocument(document, *project_, update);
    EXPECT_EQ(report.objectsAdded, kMany + 2 * kMany / 100);
    EXPECT_EQ(report.keys, kMany + kMany / 100);
    report = korvane::exchange::ImportDocument(document, *project_, update);
    EXPECT_FALSE(report.HasChanged());
    EXPECT_EQ(report.objectsMatched, kMany + 2 * kMany / 100 + 1);
    // All siblings equal, without keys.
    const TestProject flat;
    const std::string one = R"({"type":"CAETAG","name":"t"},)";
    const std::string text = R"({"type":"SIMULATION","children":[)" + Repeat(one, kMany) + one;
    const JSONNode equal = libjson::parse((text.substr(0, text.size() - 1) + "]}").c_str());
    EXPECT_EQ(korvane::exchange::ImportDocument(equal, *flat, update).objectsAdded, kMany + 1);
    EXPECT_FALSE(korvane::exchange::ImportDocument(equal, *flat, update).HasChanged());
}

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <regex>

#include "host/commands/ProgramSupport.h"

namespace {

using nlohmann::ordered_json;

constexpr const char* kSmall =
    R"({"id":"1","name":"P","type":"SIMULATION","children":[{"id":"2","name":"A","type":"CAEPART"}]})";

class ProgramProjectFile : public ProgramInFolder {
protected:
    void WriteStudies() const {
        folder.Write("root/plan.csv", "a;b\n");
        folder.Write("root/beam/beam.bdf", "SOL 101\nCEND\nBEGIN BULK\nENDDATA\n");
        folder.Write("root/beam/beam.step", "x");
    }
};

TEST_F(ProgramProjectFile, NewKeepsADirectory) {
    WriteStudies();
    EXPECT_EQ(DoAfterDryRun({"new", "root", "p.kvp"}),
              "korvane-json: 'p.kvp': 6 objects, the project among them, and 3 files\n");
    EXPECT_EQ(OutputOf({"export", "p.kvp"}), OutputOf({"export", "root"}));
    EXPECT_EQ(OutputOf({"tree", "p.kvp"}), OutputOf({"tree", "root"}));
    EXPECT_EQ(OutputOf({"export", "p.kvp", "--object", "3", "--mode", "STUDY"}),
              OutputOf({"export", "root", "--object", "3", "--mode", "STUDY"}));
}

TEST_F(ProgramProjectFile, NewMakesAProjectWithoutObjects) {
    EXPECT_EQ(DoAfterDryRun({"new", "--empty", "p.kvp"}),
              "korvane-json: 'p.kvp': 1 object, the project among them, and 0 files\n");
    EXPECT_EQ(OutputOf({"tree", "p.kvp"}), "p  Project  #1  Simulation\n\n0 files (0 B)\n");
}

TEST_F(ProgramProjectFile, NamesInBracketsAreNamesLikeOthers) {
    folder.Write("[a,b]/plan.csv", "1\n");
    folder.Write("a/other.csv", "1\n");
    Do({"new", "[a,b]", "[p].kvp"});
    EXPECT_TRUE(std::filesystem::exists(folder / "[p].kvp"));
    EXPECT_NE(OutputOf({"tree", "[p].kvp"}).find("plan.csv"), std::string::npos);
    EXPECT_EQ(Run({"compare", "[a,b]", "[p].kvp"}).status, 0);
    EXPECT_EQ(Run({"compare", "[a]", "a"}).status, 2);
}

TEST_F(ProgramProjectFile, NewAsksForWhatIsMissing) {
    const std::string help = ". See 'korvane-json new --help'";
    ExpectRefused({"new"}, "give a directory and a project file" + help, 2);
    ExpectRefused({"new", "root"}, "give a directory and a project file" + help, 2);
    ExpectRefused({"new", "--empty"}, "give only a project file with --empty" + help, 2);
    ExpectRefused({"new", "--empty", "root", "p.kvp"}, "give only a project file with --empty" + help, 2);
}

TEST_F(ProgramProjectFile, NewAsksWhetherAnotherNameThanThatOfAProjectFileIsMeant) {
    WriteStudies();
    for (const std::string name : {"out.json", "out", ".kvp.json", "kvp"}) {
        const std::string asks = "'" + name +
                                 "' would become a project file, and its name does not end in .kvp. Give "
                                 "another name, or --force if that is meant; 'korvane-json export' writes "
                                 "documents. See 'korvane-json new --help'";
        ExpectRefused({"new", "root", name}, asks, 2);
        ExpectRefused({"new", "--empty", name}, asks, 2);
        ExpectRefused({"new", "root", name, "--dry-run"}, asks, 2);
    }
    Do({"new", "root", "out.KVP"});
    EXPECT_EQ(DoAfterDryRun({"new", "root", "out.json", "--force"}),
              "korvane-json: 'out.json': 6 objects, the project among them, and 3 files\n");
    EXPECT_EQ(OutputOf({"tree", "out.json"}), OutputOf({"tree", "root"}));
    folder.Write("document.json", "{}");
    ExpectRefused({"new", "root", "document.json", "--force"},
                  "'document.json' is not a SQLite database. Nothing was changed");
}

TEST_F(ProgramProjectFile, NewCountsWhatStoreCounts) {
    WriteStudies();
    // The files of a single study are those of the project and those of the study.
    for (const std::string directory : {"root", "root/beam"}) {
        const std::string made = Do({"new", directory, "p.kvp", "--force"});
        Do({"export", "p.kvp", "-o", "d.json"});
        const std::string stored = Do({"store", "d.json", "--db", directory + ".db", "-o", "a.json"});
        const std::string files = directory == "root" ? "3 files" : "2 files";
        const std::string objects = "6 objects";
        EXPECT_NE(made.find(": " + objects + ", the project among them, and " + files), std::string::npos)
            << made;
        EXPECT_NE(stored.find(": " + objects + " and " + files + " stored, "), std::string::npos) << stored;
    }
}

TEST_F(ProgramProjectFile, NewLeavesWhatIsThereUnlessItIsForced) {
    WriteStudies();
    Do({"new", "--empty", "p.kvp"});
    folder.Write("text.kvp", "x");
    folder.Write("empty.kvp", "");
    const std::string there =
        "' already exists and was not changed. Give another name, or --force to replace the project in it";
    ExpectRefused({"new", "root", "p.kvp"}, "'p.kvp" + there);
    ExpectRefused({"new", "--empty", "text.kvp"}, "'text.kvp" + there);
    ExpectRefused({"new", "root", "text.kvp", "--force"},
                  "'text.kvp' is not a SQLite database. Nothing was changed");
    ExpectRefused({"new", "root", "empty.kvp", "--force"},
                  "'empty.kvp' is an empty file, not a project file. Nothing was changed");
    ExpectRefused({"new", "root", "root", "--force"}, "'root' is not a file. Nothing was changed");
    EXPECT_EQ(DoAfterDryRun({"new", "root", "p.kvp", "--force"}),
              "korvane-json: 'p.kvp': 6 objects, the project among them, and 3 files, in place of the "
              "project that was there\n");
    EXPECT_EQ(OutputOf({"export", "p.kvp"}), OutputOf({"export", "root"}));
}

TEST_F(ProgramProjectFile, NewDoesNotReadTheProjectFileThatItMakes) {
    WriteStudies();
    Do({"new", "root", "root/p.kvp"});
    EXPECT_EQ(Do({"new", "root", "root/p.kvp", "--force"}),
              "korvane-json: 'root/p.kvp': 6 objects, the project among them, and 3 files, in place of the "
              "project that was there\n");
}

TEST_F(ProgramProjectFile, NewRefusesBadUsageAndWhatCannotBeRead) {
    ExpectRefused({"new", "p.kvp"}, "give a directory and a project file. See 'korvane-json new --help'", 2);
    ExpectRefused({"new", "--empty", "a", "p.kvp"},
                  "give only a project file with --empty. See 'korvane-json new --help'", 2);
    const ProcessResult missing = Run({"new", "missing", "p.kvp"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.error.starts_with("korvane-json: cannot read 'missing': ")) << missing.error;
    EXPECT_FALSE(std::filesystem::exists(folder / "p.kvp"));
    folder.MakeDirectory("empty");
    const ProcessResult nowhere = Run({"new", "empty", "missing/p.kvp"});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_TRUE(nowhere.error.starts_with("korvane-json: 'missing/p.kvp' cannot be opened or created: "))
        << nowhere.error;
}

TEST_F(ProgramProjectFile, ImportMakesAProjectFileOrAddsToOne) {
    folder.Write("a.json", kSmall);
    EXPECT_EQ(DoAfterDryRun({"import", "a.json", "p.kvp"}),
              "korvane-json: 'p.kvp': 1 object and 0 files created, 0 of the files attached, 0 keys set\n");
    folder.Write("b.json", R"({"name":"B","type":"CAEPART","files":[{"name":"b.step","fileType":"CAD"}]})");
    EXPECT_EQ(DoAfterDryRun({"import", "b.json", "p.kvp", "--object", "2"}),
              "korvane-json: 'p.kvp': 0 objects and 1 file created, 1 of the files attached, 0 keys set\n");
    EXPECT_EQ(DoAfterDryRun({"import", "b.json", "p.kvp"}),
              "korvane-json: 'p.kvp': 1 object and 1 file created, 1 of the files attached, 0 keys set\n");
    EXPECT_EQ(OutputOf({"tree", "p.kvp"}),
              "P             Project   #1  SIMULATION\n"
              "|- B          Part      #2\n"
              "|  `- b.step  CAD file  #3  CAD  Unknown  missing\n"
              "`- B          Part      #4\n"
              "   `- b.step  CAD file  #5  CAD  Unknown  missing\n"
              "\n"
              "2 parts, 2 files (0 B)\n");
    // Files are expected beside the project file.
    folder.Write("b.step", "12345");
    EXPECT_NE(OutputOf({"tree", "p.kvp"}).find("5 B"), std::string::npos);
}

TEST_F(ProgramProjectFile, ImportUpdatesWhatIsThere) {
    folder.Write("a.json", R"({"name":"P","type":"SIMULATION","children":[)"
                           R"({"name":"A","type":"CAEPART","dbkey":"K1","metaData":{"Mass":{"value":"3",)"
                           R"("metaDataType":"kg"}}},{"name":"B","type":"CAEPART","dbkey":"K2"}]})");
    Do({"import", "a.json", "p.kvp"});
    const std::string before = Read("p.kvp");
    EXPECT_EQ(Do({"import", "--update", "a.json", "p.kvp"}), "korvane-json: 'p.kvp': nothing has changed\n");
    EXPECT_EQ(Read("p.kvp"), before);
    folder.Write("b.json", R"({"name":"P","type":"SIMULATION","children":[)"
                           R"({"name":"S","type":"CAEMODEL","children":[{"name":"A2","type":"CAEPART",)"
                           R"("dbkey":"K1","metaData":{"Mass":{"value":"4","metaDataType":"kg"}}}]}]})");
    EXPECT_EQ(
        DoAfterDryRun({"import", "--update", "b.json", "p.kvp"}),
        "korvane-json: 'p.kvp': 1 object and 0 files added, 2 values changed, 1 object moved, 0 removed\n"
        "korvane-json: 'p.kvp': added (1): 'S'\n"
        "korvane-json: 'p.kvp': moved (1): 'A' (id 2) moves from 'P' (id 1) to 'S'\n"
        "korvane-json: 'p.kvp': changed (2): 'name' of 'A' (id 2): 'A' becomes 'A2'; the metadata entry "
        "'Mass' of 'A' (id 2): '3 kg' becomes '4 kg'\n"
        "korvane-json: 'p.kvp': not in the document, and kept (1): 'B' (id 3)\n");
    EXPECT_EQ(
        DoAfterDryRun({"import", "--update", "--remove", "b.json", "p.kvp"}),
        "korvane-json: 'p.kvp': 0 objects and 0 files added, 0 values changed, 0 objects moved, 1 removed\n"
        "korvane-json: 'p.kvp': removed (1): 'B' (id 3)\n");
    EXPECT_EQ(OutputOf({"tree", "p.kvp"}),
              "P         Project  #1  SIMULATION\n"
              "`- S      Model    #4\n"
              "   `- A2  Part     #2  key K1\n"
              "         Mass: 4 kg\n"
              "\n"
              "1 study, 1 part, 0 files (0 B)\n");
}

TEST_F(ProgramProjectFile, StrictAllowsNothingToBeSkipped) {
    folder.Write("a.json", kSmall);
    Do({"import", "--strict", "a.json", "p.kvp"});
    folder.Write("b.json", R"({"name":"P","type":"SIMULATION","children":[{"name":"n"}],"foo":1})");
    for (const std::string target : {"p.kvp", "new.kvp"}) {
        ExpectRefused({"import", "--strict", "b.json", target},
                      "2 values of 'b.json' cannot be used, which --strict does not allow, the first at "
                      "'/children/0': 'n' is left out with everything below it, because it has no \"type\". "
                      "Nothing was changed; without --strict the rest is taken");
    }
    folder.Write("answer.json", R"([{"id":"2","dbkey":"K"},{"id":"99","dbkey":"L"}])");
    ExpectRefused(
        {"apply", "--strict", "answer.json", "p.kvp"},
        "1 value of 'answer.json' cannot be used, which --strict does not allow, the first at '/1': no "
        "object "
        "has the identifier '99' with the key 'L'. Nothing was changed; without --strict the rest is taken");
    Do({"apply", "answer.json", "p.kvp"});
    ExpectRefused({"import", "--remove", "a.json", "p.kvp"},
                  "--remove requires --update. See 'korvane-json import --help'", 2);
}

TEST_F(ProgramProjectFile, ImportRefusesWithoutChangingAnything) {
    folder.Write("a.json", kSmall);
    Do({"import", "a.json", "p.kvp"});
    folder.Write("broken.json", "{\"type\":\"X\",\n  \"name\" \"P\"}");
    folder.Write("no-type.json", R"({"name":"P","children":[{"type":"CAEPART"}]})");
    folder.Write("empty-type.json", R"({"type":""})");
    folder.Write("array.json", R"([{"type":"X"}])");
    folder.Write("text.kvp", "x");
    for (const char* const target : {"p.kvp", "new.kvp"}) {
        const ProcessResult broken = Run({"import", "broken.json", target});
        EXPECT_TRUE(broken.error.starts_with("korvane-json: cannot read 'broken.json': line 2, column 10: "))
            << broken.error;
        EXPECT_TRUE(broken.error.ends_with(". Nothing was changed\n")) << broken.error;
        const std::string reason = ", so nothing can be imported from it. Nothing was changed";
        ExpectRefused({"import", "no-type.json", target},
                      "cannot use 'no-type.json': its root has no \"type\"" + reason);
        ExpectRefused({"import", "empty-type.json", target},
                      "cannot use 'empty-type.json': the \"type\" of its root is empty" + reason);
        ExpectRefused({"import", "array.json", target},
                      "cannot use 'array.json': it is not an object" + reason);
        ExpectRefused({"import", "a.json", target, "--object", "77"},
                      std::string("there is no object 77 in '") + target +
                          "'. Nothing was changed; 'korvane-json tree' lists the objects");
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "new.kvp"));
    ExpectRefused({"import", "a.json", "text.kvp"},
                  "'text.kvp' is not a SQLite database. Nothing was changed");
    const ProcessResult missing = Run({"import", "missing.json", "p.kvp"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.error.starts_with("korvane-json: cannot read 'missing.json': ")) << missing.error;
    EXPECT_EQ(Run({"import", ".", "p.kvp"}).status, 1);
}

TEST_F(ProgramProjectFile, ApplySetsKeysAndSaysWhatItDidNot) {
    folder.Write("a.json", kSmall);
    Do({"import", "a.json", "p.kvp"});
    folder.Write("answer.json",
                 R"([{"id":"1","dbkey":"P1"},{"id":"2","dbkey":"A1"},{"id":"9","dbkey":"X"}])");
    EXPECT_EQ(
        DoAfterDryRun({"apply", "answer.json", "p.kvp"}),
        "korvane-json: 'p.kvp': 2 keys set, 0 unchanged\n"
        "korvane-json: 'p.kvp': key not set, because no object has the identifier (1): '9' with the key "
        "'X'\n");
    EXPECT_EQ(OutputOf({"tree", "p.kvp"}),
              "P     Project  #1  SIMULATION  key P1\n"
              "`- A  Part     #2  key A1\n"
              "\n"
              "1 part, 0 files (0 B)\n");
}

TEST_F(ProgramProjectFile, ApplyRefusesWithoutChangingAnything) {
    folder.Write("a.json", kSmall);
    Do({"import", "a.json", "p.kvp"});
    folder.Write("broken.json", "[\n\n {]");
    folder.Write("number.json", "7");
    folder.Write("answer.json", R"({"id":"1","dbkey":"K"})");
    const ProcessResult broken = Run({"apply", "broken.json", "p.kvp"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(broken.error.starts_with("korvane-json: cannot read 'broken.json': line 3, column 3: "))
        << broken.error;
    ExpectRefused({"apply", "number.json", "p.kvp"},
                  "cannot use 'number.json': an answer is an object or an array of objects. Give the answer "
                  "to a document of this project. Nothing was changed");
    ExpectRefused({"apply", "answer.json", "missing.kvp"},
                  "'missing.kvp' does not exist. Nothing was changed");
    ExpectRefused({"apply", "answer.json", "answer.json"},
                  "'answer.json' is not a SQLite database. Nothing was changed");
}

TEST_F(ProgramProjectFile, ApplyRefusesAnAnswerThatFitsNothing) {
    folder.Write("a.json", kSmall);
    Do({"import", "a.json", "p.kvp"});
    folder.Write("error.json", R"({"error":"no space left","name":"N"})");
    folder.Write("empty.json", "[]");
    const std::string advice = ". Give the answer to a document of this project. Nothing was changed";
    for (const std::vector<std::string>& extra : {std::vector<std::string>(), {"--dry-run"}}) {
        const auto refused = [&](const char* answer, const std::string& reason) {
            std::vector<std::string> arguments = {"apply", answer, "p.kvp"};
            arguments.insert(arguments.end(), extra.begin(), extra.end());
            ExpectRefused(arguments, std::string("cannot use '") + answer + "': " + reason + advice);
        };
        refused("error.json", "it reports an error: 'no space left'");
        refused("empty.json", "it is an empty array and has no keys");
        refused("a.json", "it is a document and not the server's answer to one: it has no keys");
    }
    // The answer for a project without objects fits, and so does one that says nothing new.
    Do({"new", "--empty", "e.kvp"});
    Do({"export", "e.kvp", "-o", "e.json"});
    EXPECT_EQ(Run({"store", "e.json", "--db", "s.db", "-o", "answer.json"}).status, 0);
    EXPECT_EQ(Do({"apply", "answer.json", "e.kvp"}), "korvane-json: 'e.kvp': 1 key set, 0 unchanged\n");
    EXPECT_EQ(Do({"apply", "answer.json", "e.kvp"}), "korvane-json: 'e.kvp': 0 keys set, 1 unchanged\n");
}

TEST_F(ProgramProjectFile, ExportLeavesTheFilesOfTheProject) {
    WriteStudies();
    folder.Write("root/old.json", "{}\n");
    folder.Write("root/none.txt", "");
    folder.MakeDirectory("elsewhere");
    folder.Write("root/state.json", R"({"id":1,"name":"made by hand"})");
    folder.Write("root/blank.txt", "\n");
    Do({"new", "root", "p.kvp"});
    for (const char* const file : {"root/plan.csv", "root/beam/beam.bdf", "elsewhere/../root/plan.csv",
                                   "root/old.json", "root/state.json", "root/blank.txt"}) {
        ExpectRefused({"export", "p.kvp", "-o", file},
                      "cannot write '" + std::string(file) +
                          "': it is a file of the project, not a document, a page or a plot. Nothing was "
                          "changed; give another "
                          "file with -o");
    }
    ExpectRefused({"export", "root", "-o", "root/state.json"},
                  "cannot write 'root/state.json': it is a file of the project, not a document, a page or a "
                  "plot. Nothing was changed; give another file with -o");
    // Empty files and the program's own are replaced, and so is what the project does not have.
    folder.Write("root/later.csv", "1;2\n");
    for (const char* const file :
         {"root/none.txt", "root/none.txt", "root/later.csv", "root/later.csv", "new.json"}) {
        Do({"export", "p.kvp", "-o", file});
        EXPECT_TRUE(Read(file).starts_with("{"));
    }
}

TEST_F(ProgramProjectFile, ReadingRefusesOtherFilesByName) {
    folder.Write("text.kvp", "x");
    folder.Write("empty.kvp", "");
    folder.Write("text.txt", "x");
    for (const char* const command : {"tree", "export"}) {
        ExpectRefused({command, "text.kvp"}, "'text.kvp' is not a SQLite database");
        ExpectRefused({command, "empty.kvp"}, "'empty.kvp' is an empty file, not a project file");
    }
    folder.Write("a.json", kSmall);
    Do({"store", "a.json", "--db", "s.db", "-o", "answer.json"});
    for (const char* const command : {"tree", "export"}) {
        ExpectRefused({command, "s.db"}, "'s.db' is a database of another kind, not a project file");
    }
    ExpectRefused({"export", "text.txt"},
                  "'text.txt' is neither a directory nor a project file. 'korvane-json import' makes a "
                  "project file from a document");
    ExpectRefused({"tree", "text.txt"},
                  "cannot read 'text.txt': line 1, column 1: a value is missing here. Nothing was changed");
    ExpectRefused({"import", "a.json", "s.db"},
                  "'s.db' is a database of another kind, not a project file. Nothing was changed");
}

TEST_F(ProgramProjectFile, ANewerFormatIsRefusedByName) {
    Do({"new", "--empty", "p.kvp"});
    std::string bytes = Read("p.kvp");
    // The number of the format is at byte 60 of the header and has four bytes.
    ASSERT_EQ(bytes.at(63), '\x03');
    bytes[63] = '\x04';
    folder.Write("p.kvp", bytes);
    folder.Write("a.json", kSmall);
    const std::string reason =
        "'p.kvp' was written by a newer korvane-json: it has format 4, and this version reads formats up to "
        "3. Use the newer version";
    ExpectRefused({"tree", "p.kvp"}, reason);
    ExpectRefused({"export", "p.kvp"}, reason);
    ExpectRefused({"import", "a.json", "p.kvp"}, reason + ". Nothing was changed");
    ExpectRefused({"apply", "a.json", "p.kvp"}, reason + ". Nothing was changed");
    ExpectRefused({"new", "--empty", "p.kvp", "--force"}, reason + ". Nothing was changed");
}

TEST_F(ProgramProjectFile, DocumentsAndAnswersComeFromTheStandardInput) {
    folder.Write("a.json", kSmall);
    const ProcessResult imported = Run({"import", "-", "p.kvp"}, "a.json");
    EXPECT_EQ(imported.status, 0) << imported.error;
    EXPECT_EQ(Run({"tree", "-"}, "a.json").output, OutputOf({"tree", "p.kvp"}));
    folder.Write("answer.json", R"({"id":"1","dbkey":"K"})");
    EXPECT_EQ(Run({"apply", "-", "p.kvp"}, "answer.json").error,
              "korvane-json: 'p.kvp': 1 key set, 0 unchanged\n");
    EXPECT_EQ(Run({"compare", "-", "p.kvp"}, "a.json").status, 1);
    const ProcessResult empty = Run({"import", "-", "q.kvp"});
    EXPECT_EQ(empty.status, 1);
    EXPECT_TRUE(empty.error.starts_with("korvane-json: cannot read the standard input: line 1, column 1: "))
        << empty.error;
}

TEST_F(ProgramProjectFile, TreeShowsADocumentAsAnImportMakesIt) {
    folder.Write(
        "a.json",
        R"({"name":"S","type":"CAEMODEL","foo":1,"children":[{"name":"x"},{"name":"t.txt","type":"CAEFILE"}]})");
    const ProcessResult result = Run({"tree", "a.json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        result.error,
        "korvane-json: 'a.json': left out with everything below it, because it has no \"type\" (1): 'x'\n");
    EXPECT_EQ(result.output,
              "S         Model  #2\n"
              "`- t.txt  File   #3  Unknown  Unknown  -\n"
              "\n"
              "1 study, 1 file (0 B)\n");
}

TEST_F(ProgramProjectFile, TextsOfAllKindsGoThroughAProjectFile) {
    // Quotes, slashes, control characters, a direction mark, and bytes that are not text.
    const std::string name =
        R"(it's \"quoted\" \/ back\\slash \u0001\n\t\u007F \u202E \uDCE9\uDCFF \u4E2D \uD83D\uDD27)";
    folder.Write(
        "a.json",
        R"({"type":"X","name":"P","createdDate":"D","children":[{"type":"CAEPART","createdDate":"D","name":")" +
            name + R"(","dbkey":")" + name + R"(","metaData":{")" + name + R"(":{"value":")" + name +
            R"(","metaDataType":""}},"children":[],"files":[]}],"files":[]})");
    Do({"import", "a.json", "p.kvp"});
    const std::string document = OutputOf({"export", "p.kvp"});
    std::size_t count = 0;
    for (std::size_t at = document.find(name); at != std::string::npos; at = document.find(name, at + 1)) {
        ++count;
    }
    EXPECT_EQ(count, 4U) << document;
    EXPECT_EQ(Run({"compare", "a.json", "p.kvp"}).status, 0);
}

TEST_F(ProgramProjectFile, CompareTellsDifferencesOnItsOutput) {
    folder.Write("a.json", kSmall);
    folder.Write(
        "b.json",
        R"({"id":"1","name":"P","type":"SIMULATION","children":[{"id":"5","name":"B","type":"CAEPART"}]})");
    const ProcessResult different = Run({"compare", "a.json", "b.json"});
    EXPECT_EQ(different.status, 1);
    EXPECT_EQ(different.error, "");
    EXPECT_EQ(different.output, "~ P/B: name changed from 'A' to 'B'\n1 difference: 1 changed\n");
    EXPECT_EQ(OutputOf({"compare", "a.json", "a.json"}),
              "the same, apart from what the format does not carry: 2 objects and 0 files compared\n");
    // Trouble is told apart from a difference.
    EXPECT_EQ(Run({"compare", "a.json"}).status, 2);
    EXPECT_EQ(Run({"compare", "a.json", "missing"}).status, 2);
    EXPECT_EQ(Run({"compare", "missing", "a.json"}).status, 2);
    folder.Write("empty.json", "{}");
    const ProcessResult empty = Run({"compare", "a.json", "empty.json"});
    EXPECT_EQ(empty.status, 2);
    EXPECT_EQ(empty.output, "");
}

TEST_F(ProgramProjectFile, CompareMarksEveryKindOfDifference) {
    const auto tag = [](const std::string& name, const std::string& key, const std::string& more = "") {
        return R"({"type":"CAETAG","createdDate":"D","name":")" + name + R"(","dbkey":")" + key + "\"" +
               more + "}";
    };
    const auto document = [](const std::string& children) {
        return R"({"type":"SIMULATION","name":"P","createdDate":"D","children":[)" + children + "]}";
    };
    folder.Write("a.json", document(tag("moved", "M") + "," + tag("old", "O", R"(,"files":[{"name":"f"}])") +
                                    "," + tag("kept", "K", R"(,"createdDate":"2026")")));
    folder.Write("b.json", document(tag("new", "N") + "," +
                                    tag("kept", "K", R"(,"children":[)" + tag("moved", "M") + "]")));
    Do({"import", "b.json", "b.kvp"});
    for (const char* const second : {"b.json", "b.kvp"}) {
        EXPECT_EQ(Run({"compare", "a.json", second}).output,
                  "- P/old: removed, with 1 file below it\n"
                  "+ P/new: added\n"
                  "~ P/kept: createdDate changed from '2026' to 'D'\n"
                  "> P/kept/moved: moved from P/moved\n"
                  "4 differences: 1 added, 1 removed, 1 moved, 1 changed\n");
        const ProcessResult ignoring = Run({"compare", "a.json", second, "--ignore", "dates"});
        EXPECT_EQ(ignoring.status, 1);
        EXPECT_TRUE(ignoring.output.ends_with("\n3 differences: 1 added, 1 removed, 1 moved\n"))
            << ignoring.output;
    }
}

TEST_F(ProgramProjectFile, CompareShowsAllDifferencesOnRequest) {
    const auto document = [](const std::string& names) {
        std::string children;
        for (int number = 0; number < 30; ++number) {
            children += (number == 0 ? "" : ",") + std::string(R"({"type":"CAETAG","name":")") + names +
                        std::to_string(number) + "\"}";
        }
        return R"({"type":"SIMULATION","children":[)" + children + "]}";
    };
    folder.Write("a.json", document("a"));
    folder.Write("b.json", document("b"));
    const ProcessResult first = Run({"compare", "a.json", "b.json"});
    EXPECT_EQ(first.status, 1);
    EXPECT_EQ(std::ranges::count(first.output, '\n'), 22);
    EXPECT_TRUE(
        first.output.ends_with("~ ''/b19: name changed from 'a19' to 'b19'\n"
                               "and 10 more; --all lists them\n30 differences: 30 changed\n"))
        << first.output;
    const ProcessResult all = Run({"compare", "--all", "a.json", "b.json"});
    EXPECT_EQ(all.status, 1);
    EXPECT_EQ(std::ranges::count(all.output, '\n'), 31);
    EXPECT_TRUE(
        all.output.ends_with("~ ''/b29: name changed from 'a29' to 'b29'\n30 differences: 30 changed\n"))
        << all.output;
}

TEST_F(ProgramProjectFile, EveryCommandExplainsItsOptions) {
    const std::pair<const char*, std::vector<const char*>> commands[] = {
        {"page", {"DIR", "--strict", "--title", "--pictures SIZE", "--meshes SIZE", "--output"}},
        {"new", {"--empty", "--force", "--strict", "--dry-run", "PROJECT.kvp"}},
        {"update", {"DIR", "PROJECT.kvp", "--remove", "--force", "--moved", "--strict", "--dry-run"}},
        {"store", {"DOCUMENT.json", "--db", "--project", "--again", "--output", "--dry-run"}},
        {"apply", {"ANSWER.json", "PROJECT.kvp", "--dry-run"}},
        {"fetch", {"KEY", "--db", "--list", "--format", "--output"}},
        {"import", {"DOCUMENT.json", "PROJECT.kvp", "--object", "--dry-run"}},
        {"compare", {"FIRST", "SECOND", "--all", "--ignore", "Exit status"}},
    };
    const std::string overview = OutputOf({"--help"});
    // A line for each command, however much its own help says.
    const std::size_t list = overview.find("ommands:\n");
    ASSERT_NE(list, std::string::npos) << overview;
    const std::string listed = overview.substr(list, overview.find("\n\n", list) - list);
    const std::regex line("\n  [a-z]+ +[A-Z]");
    const std::sregex_iterator lines(listed.begin(), listed.end(), line);
    EXPECT_EQ(std::distance(lines, std::sregex_iterator()), std::ranges::count(listed, '\n')) << overview;
    for (const auto& [command, words] : commands) {
        EXPECT_NE(overview.find(std::string("\n  ") + command + " "), std::string::npos) << overview;
        const std::string help = OutputOf({command, "--help"});
        EXPECT_NE(help.find("Examples:"), std::string::npos);
        for (const char* const word : words) {
            EXPECT_NE(help.find(word), std::string::npos) << word << "\n" << help;
        }
    }
}

}  // namespace

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "host/commands/ProgramSupport.h"
#include "support/Documents.h"
#include "support/LongRun.h"

namespace {

using nlohmann::ordered_json;

/// The way of a project to the server and back: into a project file, as a document to the server, its answer
/// onto the project, the server's document into another project file.
class ProgramTrip : public ProgramInFolder {
protected:
    static std::string FirstKey(const std::string& answer) {
        const std::size_t begin = answer.find("\"dbkey\":\"") + 9;
        return answer.substr(begin, answer.find('"', begin) - begin);
    }

    /// Everything behind `new` or the first `import`; returns what the last `import` said. `replacing` is the
    /// option for a project that has the keys of another server.
    std::string GoOn(const std::vector<std::string>& replacing = {}) {
        Do({"export", "first.kvp", "-o", "doc.json"});
        Do({"store", "doc.json", "--db", "server.db", "-o", "answer.json"});
        std::vector<std::string> apply = {"apply", "answer.json", "first.kvp"};
        apply.insert(apply.end(), replacing.begin(), replacing.end());
        applied = Do(apply);
        Do({"fetch", FirstKey(Read("answer.json")), "--db", "server.db", "-o", "doc2.json"});
        std::string said = Do({"import", "doc2.json", "second.kvp"});
        const ProcessResult same = Run({"compare", "first.kvp", "second.kvp"});
        EXPECT_EQ(same.status, 0) << same.output;
        EXPECT_TRUE(same.output.starts_with("the same, apart from what the format does not carry: "))
            << same.output;
        compared = same.output;
        // The first document has no keys yet; the one that came back has them, as the first project has by
        // now.
        const ProcessResult fetched = Run({"compare", "doc2.json", "first.kvp"});
        EXPECT_EQ(fetched.status, 0) << fetched.output;
        EXPECT_EQ(Run({"compare", "doc.json", "second.kvp"}).status, 1);
        // Stored again, the document gets the same answer, and so does the one with the keys.
        Do({"store", "doc.json", "--db", "server.db", "--again", "-o", "answer2.json"});
        EXPECT_EQ(Read("answer2.json"), Read("answer.json"));
        Do({"export", "first.kvp", "-o", "doc3.json"});
        Do({"store", "doc3.json", "--db", "server.db", "-o", "answer3.json"});
        EXPECT_EQ(Read("answer3.json"), Read("answer.json"));
        return said;
    }

    std::string applied;
    std::string compared;
};

TEST_F(ProgramTrip, OfTheExamples) {
    Do({"new", KORVANEJSON_EXAMPLES "/bracket-project", "first.kvp"});
    const std::string said = GoOn();
    EXPECT_EQ(applied, "korvane-json: 'first.kvp': 44 keys set, 0 unchanged\n");
    // What every document has and no import uses is no news.
    EXPECT_EQ(
        said,
        "korvane-json: 'second.kvp': 22 objects and 21 files created, 19 of the files attached and 2 as "
        "children, 44 keys set\n");
    EXPECT_EQ(compared,
              "the same, apart from what the format does not carry: 23 objects and 21 files compared\n");
    SaveDocument(Read("doc.json"));
    SaveDocument(Read("doc2.json"));
    const std::string tree = OutputOf({"tree", "second.kvp"});
    for (const char* const line : {"01-static-bracket", "bracket.geo  ", "CAD file", "active mesh",
                                   "graphic file", "FE representation", "custom file",
                                   "Solver: CalculiX, LS-DYNA, Nastran", "key PRJ-1-", "key FIL-"}) {
        EXPECT_NE(tree.find(line), std::string::npos) << line << "\n" << tree;
    }
}

TEST_F(ProgramTrip, AStudyThatIsAddedInTheMiddleMovesNoKey) {
    const auto writeStudy = [&](const std::string& name) {
        folder.Write("root/" + name + "/arm.step", "ISO-10303-21;");
        folder.Write("root/" + name + "/job.inp", "*STEP\n*STATIC\n*END STEP\n");
        folder.Write("root/" + name + "/notes.txt", name);
    };
    // The lines of the tree with keys and without identifiers.
    const auto keysOf = [&](const char* project) {
        std::vector<std::string> lines;
        std::istringstream tree(OutputOf({"tree", project}));
        for (std::string line; std::getline(tree, line);) {
            if (line.find(" key ") != std::string::npos) {
                lines.push_back(std::regex_replace(line, std::regex("#[0-9]+ *"), ""));
            }
        }
        return lines;
    };
    writeStudy("alpha");
    writeStudy("zeta");
    Do({"new", "root", "p.kvp"});
    Do({"export", "p.kvp", "-o", "doc.json"});
    Do({"store", "doc.json", "--db", "s.db", "-o", "answer.json"});
    Do({"apply", "answer.json", "p.kvp"});
    const std::vector<std::string> before = keysOf("p.kvp");
    EXPECT_EQ(before.size(), 17U);
    writeStudy("bravo");
    // Read from the beginning, the directory has other identifiers and no keys.
    Do({"new", "root", "q.kvp"});
    Do({"export", "q.kvp", "-o", "doc.json"});
    EXPECT_TRUE(Do({"store", "doc.json", "--db", "s.db", "--again", "-o", "answer.json"})
                    .ends_with(", 8 of them under new keys\n"));
    Do({"apply", "answer.json", "q.kvp"});
    const std::vector<std::string> after = keysOf("q.kvp");
    EXPECT_EQ(after.size(), before.size() + 8);
    std::vector<std::string> kept;
    std::ranges::copy_if(after, std::back_inserter(kept), [&](const std::string& line) {
        return std::ranges::find(before, line) != before.end();
    });
    EXPECT_EQ(kept, before);
}

TEST_F(ProgramTrip, OfAnEmptyProject) {
    Do({"new", "--empty", "first.kvp"});
    GoOn();
    // A project that is unchanged takes the document too.
    Do({"new", "--empty", "third.kvp"});
    Do({"import", "doc2.json", "third.kvp"});
    EXPECT_EQ(Run({"compare", "first.kvp", "third.kvp"}).status, 0);
}

TEST_F(ProgramTrip, OfTheDocumentOfAServer) {
    const std::string document = KORVANEJSON_EXAMPLES "/server-document.json";
    const std::string said = Do({"import", document, "first.kvp"});
    EXPECT_NE(
        said.find("16 objects and 9 files created, 9 of the files attached, 23 keys set, 2 of 3 view items "
                  "linked\n"),
        std::string::npos)
        << said;
    EXPECT_NE(
        said.find("view item that shows nothing, because no assembly with its key came before it (1): "
                  "'Bracket assembly, shown before it is created' (id '5013') with the key 'ITEM-7001'\n"),
        std::string::npos)
        << said;
    EXPECT_NE(OutputOf({"tree", "first.kvp"}).find("ViewItem            #21  -> #6\n"), std::string::npos);
    EXPECT_EQ(Run({"compare", document, "first.kvp"}).status, 0);
    GoOn({"--replace-keys"});
    EXPECT_EQ(applied, "korvane-json: 'first.kvp': 26 keys set, 0 unchanged\n");

    // Through the server the view items still show their assemblies.
    Do({"store", document, "--db", "server2.db", "-o", "answer.json"});
    Do({"fetch", FirstKey(Read("answer.json")), "--db", "server2.db", "-o", "fetched.json"});
    EXPECT_NE(Do({"import", "fetched.json", "third.kvp"}).find("2 of 3 view items linked"),
              std::string::npos);
    EXPECT_EQ(Run({"compare", "fetched.json", "third.kvp"}).status, 0);
}

/// A tree like a collection of examples: folders in folders, studies with several decks, parts and files of
/// all kinds, and files at the root, which are children and attached to the root's study as well.
TEST_F(ProgramTrip, OfALargeTree) {
    folder.Write("root/main.inp", kDeck);
    folder.Write("root/LICENSE", "free");
    for (int group = 0; group < 12; ++group) {
        const std::string in = "root/group " + std::to_string(group) + "/";
        folder.Write(in + "overview.pdf", "%PDF-1.4");
        for (int study = 0; study < 12; ++study) {
            const std::string path = in + "study-" + std::to_string(study) + "/";
            for (const char* const name : {"first.inp", "second.inp"}) {
                folder.Write(path + name, kDeck);
            }
            folder.Write(path + "README.md", "# Study " + std::to_string(study) + "\nof a group\n");
            folder.Write(path + "arm.step", "ISO-10303-21;");
            folder.Write(path + "arm.png", "\x89PNG");
            folder.Write(path + "arm.msh", "$MeshFormat\n");
            folder.Write(path + "results/out.frd", "1C\n");
            folder.Write(path + "K\xC3\xBChler 'x' & y.txt", "notes");
        }
    }
    const std::string made = Do({"new", "root", "first.kvp"});
    EXPECT_EQ(made, "korvane-json: 'first.kvp': 1025 objects, the project among them, and 1166 files\n");
    GoOn();
}

TEST_F(ProgramTrip, OfNamesThatAreHardToCarry) {
    for (const char* const name : {
             "' OR 1=1 --", "\xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x94\xA7", "..hidden not", "%s%n",
                 "%PATH% ^& co",
#if !defined(_WIN32)
                 "say \"hello\".txt", "line\nfeed\ttab\x01\x7F.txt", "m\xE9sh\xFF.txt"
#endif
         }) {
        folder.Write(std::string("root/study/") + name, "x");
        folder.Write(std::string("root/") + name + "/job.inp", "*STEP\n");
    }
    Do({"new", "root", "first.kvp"});
    GoOn();
    const std::string document = Read("doc2.json");
    EXPECT_NE(document.find(R"("' OR 1=1 --")"), std::string::npos);
    EXPECT_NE(document.find(R"("\u4E2D\u6587 \uD83D\uDD27")"), std::string::npos);
#if !defined(_WIN32)
    EXPECT_NE(document.find(R"(m\uDCE9sh\uDCFF.txt)"), std::string::npos);
#endif
}

TEST_F(ProgramTrip, OfManyObjectsOneBelowTheOther) {
    const int levels = DeepLevels() / (IsLongRun() ? 10 : 5);
    const std::string depth = std::to_string(levels);
    std::string text = R"({"id":"1","name":"deep","type":"SIMULATION")";
    for (int level = 0; level < levels; ++level) {
        text += R"(,"children":[{"id":")" + std::to_string(level + 2) + R"(","name":"n","type":"CAEMODEL")";
    }
    for (int level = 0; level < levels; ++level) {
        text += "}]";
    }
    folder.Write("deep.json", text + "}");
    EXPECT_TRUE(Do({"import", "deep.json", "first.kvp"})
                    .starts_with("korvane-json: 'first.kvp': " + depth + " objects and 0 files created"));
    GoOn();
    EXPECT_EQ(applied,
              "korvane-json: 'first.kvp': " + std::to_string(levels + 1) + " keys set, 0 unchanged\n");
    EXPECT_TRUE(OutputOf({"tree", "second.kvp"}).ends_with("\n\n" + depth + " studies, 0 files (0 B)\n"));
}

}  // namespace

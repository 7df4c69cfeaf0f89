#include <gtest/gtest.h>

#include <map>
#include <random>
#include <utility>
#include <vector>

#include "ServerSupport.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#include "host/commands/ProgramSupport.h"
#include "host/server/ServerDocument.h"
#include "support/LongRun.h"
#include "support/TextUnits.h"

namespace member = format::member;

namespace host {
namespace {

/// The node with these members, and its key, children and files in their places.
JSONNode RestoreNode(const JSONNode& kept, const std::string& key, const JSONNode& children,
                     const JSONNode& files) {
    const JSONNode keyMember(member::kDatabaseKey.c_str(), key.c_str());
    const bool hasKey = kept.find(member::kDatabaseKey.c_str()) != kept.end();
    bool isKeyWritten = false;
    JSONNode node(JSON_NODE);
    const auto writeKey = [&] {
        if (!std::exchange(isKeyWritten, true)) {
            node.push_back(keyMember);
        }
    };
    for (const JSONNode& value : kept) {
        const json_string name = value.name();
        const bool isContainer = value.type() == JSON_NODE || value.type() == JSON_ARRAY;
        if (name == member::kDatabaseKey.c_str()) {
            writeKey();
        } else if (name == member::kChildren.c_str() && isContainer) {
            node.push_back(children);
        } else if (name == member::kFiles.c_str() && isContainer) {
            node.push_back(files);
        } else {
            node.push_back(value);
        }
        if (name == member::kType.c_str() && !hasKey) {
            writeKey();
        }
    }
    if (!hasKey) {
        writeKey();
    }
    return node;
}

struct StoredRow {
    JSONNode members{JSON_NODE};
    std::string key;
    std::string ownKey;
    bool isFile = false;
    std::vector<std::int64_t> below;
    JSONNode document{JSON_NODE};
};

/// The documents of all objects in the plain way: with a tree of nodes.
std::map<std::string, std::string> DocumentsByNodes(const std::filesystem::path& file) {
    Database database(file, DatabaseUse::Reading, kServerKind);
    std::map<std::int64_t, StoredRow> rows;
    Statement read(database,
                   "SELECT node.number, node.members, coalesce(assembly.key, object.key), node.section,"
                   " node.above, object.key FROM node JOIN object ON object.number = node.object"
                   " LEFT JOIN object AS assembly ON assembly.number = node.shown"
                   " ORDER BY node.section, node.position, node.number");
    read.Begin();
    while (read.Next()) {
        StoredRow& row = rows[read.Number(0)];
        row.members = Parse(read.Text(1));
        row.key = read.Text(2);
        row.ownKey = read.Text(5);
        row.isFile = read.Number(3) == 1;
        if (!read.IsNull(4)) {
            rows[read.Number(4)].below.push_back(read.Number(0));
        }
    }
    std::map<std::string, std::string> documents;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        StoredRow& stored = row->second;
        JSONNode children = NamedArray(member::kChildren);
        JSONNode files = NamedArray(member::kFiles);
        for (const std::int64_t number : stored.below) {
            const StoredRow& inner = rows.at(number);
            (inner.isFile ? files : children).push_back(inner.document);
        }
        stored.document = RestoreNode(stored.members, stored.key, children, files);
        JSONNode document = RestoreNode(stored.members, stored.ownKey, children, files);
        if (document.find(member::kSubType.c_str()) == document.end()) {
            document.push_back(JSONNode(member::kSubType.c_str(), format::kSubTypeValue));
        }
        documents[stored.ownKey] = ToText(document);
    }
    return documents;
}

class ServerFetchTest : public ServerInFolder {
protected:
    /// Stores each document as a project of its own.
    void Store(const std::string& document) {
        ServerInFolder::Store(document, {"P" + std::to_string(++projects_)});
    }
    /// Stores a part of the last project.
    void StorePart(const std::string& document) {
        ServerInFolder::Store(document, {"P" + std::to_string(projects_)});
    }
    /// The key of the object that was stored under the name.
    std::string KeyOfName(const std::string& name) {
        Database database(File(), DatabaseUse::Reading, kServerKind);
        Statement find(database,
                       "SELECT object.key FROM node JOIN object ON object.number = node.object"
                       " WHERE node.name = ?");
        EXPECT_TRUE(find.Begin(name).Next()) << name;
        return find.Text(0);
    }
    /// Every object, or the first few, fetched in both ways.
    void ExpectSame(std::size_t most = 1'000'000) {
        const std::map<std::string, std::string> documents = DocumentsByNodes(File());
        ASSERT_FALSE(documents.empty());
        Server server = Server::OpenForFetching(File());
        std::size_t count = 0;
        for (const auto& [key, document] : documents) {
            if (++count > most) {
                break;
            }
            ASSERT_EQ(FetchText(server, key, kept.console), document) << key;
        }
    }

private:
    int projects_ = 0;
};

/// Members in every order and form, texts in every writing.
constexpr const char* kRich =
    R"({"files":[{"id":"11","name":"before.dat","type":"CAEFILE","dbkey":"F\/1","fileType":"Deck","filePath":""},)"
    R"({"name":"no type","n":-0.0e-12}],"id":"1","name":"Tr\u00E4ger \u6881 \uD83D\uDE00 ü","type":"SIMULATION",)"
    R"("metaData":{"Mass":{"value":"1\/2","metaDataType":"double kg"},"children":{"files":[]},"":{}},)"
    R"("a":[1,1.50e2,true,false,null,[],{},[{"dbkey":"not a key"}]],"children":[)"
    R"({"type":"CAEMODEL","type":"again","subType":"inner","children":[],"files":[]},)"
    R"({"dbkey":"K1","type":"CAEPART","dbkey":"K2","name":"\b\f\n\r\t\u000B\u0000\u001F\u007F\"\\\/"},)"
    R"({},{"children":[{"children":{},"files":{"x":{"id":"9"}}}]},{"type":{"dbkey":1},"files":[{}],"last":[[[]]]},)"
    R"({"dbkey":{"a":[1]},"name":"\uD800 \uDC80\uDCFF \uDCC3\uDCBC \uDFFF \uD800\uD800\uDC00"},)"
    R"({"id":"2","type":"CAEVIEWITEM","dbkey":"ITEM"},{"id":"3","type":"CAESUBASSEMBLY","dbkey":"ITEM"},)"
    R"({"type":"CAEPART","children":7,"files":"text","children":[{"type":"CAETAG"}],"children":[{"type":"CAETAG"}]}],)"
    R"("\u0074ype2":1,"subType":"SDM"})";

TEST_F(ServerFetchTest, GivesTheTextThatNodesGive) {
    Store(kRich);
    ExpectSame();
}

TEST_F(ServerFetchTest, GivesItForPartsThatWereStoredAgain) {
    Store(kRich);
    Store(
        R"({"type":"SIMULATION","children":[{"name":"A","type":"CAEMODEL","files":[{"name":"f"}],"children":[)"
        R"({"name":"B","type":"CAEPART"},{"name":"C","type":"CAEPART"}]},{"name":"D","type":"CAEMODEL",)"
        R"("children":[{"name":"E","type":"CAEPART"}]}]})");
    const auto part = [&](const std::string& name, const std::string& type) {
        return R"({"name":")" + name + R"(","type":")" + type + R"(","dbkey":")" + KeyOfName(name) + "\"";
    };
    // The rows of the part come after those that follow it in the document.
    StorePart(part("A", "CAEMODEL") + R"(,"files":[{"name":"f","dbkey":")" + KeyOfName("f") +
              R"("},{"name":"g"}],"children":[)" + part("E", "CAEPART") + R"(,"files":[{"name":"h"}]},)" +
              part("B", "CAEPART") + "}]}");
    StorePart(part("B", "CAEPART") + R"(,"children":[{"type":"CAETAG"}],"files":[]})");
    ExpectSame();
}

TEST_F(ServerFetchTest, GivesItForManyInOneAndForManyLevels) {
    std::string flat = R"({"type":"X","children":[)";
    for (int number = 0; number < (kIsSanitized ? 1000 : 3000); ++number) {
        flat += (number > 0 ? "," : "") + std::string(R"({"id":")") + std::to_string(number) +
                R"(","type":"CAEPART","files":[{"name":"f"}],"children":[]})";
    }
    Store(flat + "]}");
    ExpectSame(50);
    std::filesystem::remove(File());
    std::string deep = R"({"type":"X")";
    constexpr int kDepth = kIsSanitized ? 600 : 2000;
    for (int depth = 0; depth < kDepth; ++depth) {
        deep += R"(,"files":[{"name":"f"}],"children":[{"type":"CAEMODEL")";
    }
    for (int depth = 0; depth < kDepth; ++depth) {
        deep += R"(}],"after":1)";
    }
    Store(deep + "}");
    ExpectSame(50);
}

TEST_F(ServerFetchTest, GivesItForTextsThatItHasNotWritten) {
    const char* const texts[] = {
        R"( { "type" : "X" , "children" : [ ] , "n" : 1 } )",
        R"({"\u0074ype":"X","d\u0062key":"K","children":[],"files":[]})",
        R"({"type":"\u0041\u00fc/\u2028","files":[],"children":{"a":1}})",
        "{\"type\":\"tr\xC3\xA4ger \xFF \x7F\"}",
        R"({"type":"a","dbkey":"b","dbkey":"c","dbkey":{"d":1},"e":1})",
        "{ }",
        R"({"a":{},"b":[ ]})",
        R"({"type":"\u0008\u0009"})",
        R"({"type":"\uD83Dx\uDE00"})",
    };
    Store(
        R"({"id":"1","type":"X","children":[{"id":"2","type":"CAEPART","children":[{"id":"3","type":"CAETAG"}]}],)"
        R"("files":[{"id":"4"}]})");
    for (const std::string text : texts) {
        for (const int number : {1, 2, 3}) {
            Database changed(File(), DatabaseUse::Changing, kServerKind);
            Statement(changed, "UPDATE node SET members = ? WHERE number = ?").Run(text, number);
        }
        Change("");
        ExpectSame();
    }
}

TEST_F(ServerFetchTest, GivesItForKeysThatNeedEscapes) {
    Store(R"({"id":"1","type":"X","children":[{"id":"2","type":"CAEPART","dbkey":"k"}]})");
    Change(R"(UPDATE object SET key = 'a"b\c/d' || char(0x4E2D) || char(9) || char(127) WHERE number = 2)");
    ExpectSame();
}

TEST_F(ServerFetchTest, GivesItWhateverTheUnitsOfTexts) {
    Store(kRich);
    for (const libjson::text_units units : {libjson::text_units::bytes, libjson::text_units::utf8}) {
        const UnitsFor set(units);
        ExpectSame();
        Store(kRich);
        ExpectSame();
    }
}

TEST_F(ServerFetchTest, TablesMayComeInAnotherOrder) {
    Store(kRich);
    std::string definition;
    {
        Database database(File(), DatabaseUse::Reading, kServerKind);
        Statement find(database, "SELECT sql FROM sqlite_schema WHERE name = 'object'");
        ASSERT_TRUE(find.Begin().Next());
        definition = find.Text(0);
    }
    Change("CREATE TEMP TABLE kept AS SELECT * FROM object; DROP TABLE object; " + definition +
           "; INSERT INTO object SELECT * FROM temp.kept");
    ExpectSame();
}

TEST_F(ServerFetchTest, AnErrorOfWritingEndsIt) {
    std::string flat = R"({"type":"X","children":[)";
    for (int number = 0; number < 20'000; ++number) {
        flat += (number > 0 ? "," : "") + std::string(R"({"type":"CAEPART"})");
    }
    Store(flat + "]}");
    int pieces = 0;
    const auto write = [&](std::string_view) {
        return ++pieces == 2 ? std::make_error_code(std::errc::no_space_on_device) : std::error_code();
    };
    EXPECT_EQ(Server::OpenForFetching(File()).Fetch({1, "PRJ-1"}, write, kept.console),
              std::errc::no_space_on_device);
    EXPECT_EQ(pieces, 2);
}

/// The program, which must write nothing if what is wrong shows only behind much that is right.
class FetchDamageTest : public ProgramInFolder {};

TEST_F(FetchDamageTest, WritesAllOrNothing) {
    std::string flat = R"({"id":"1","name":"P","type":"X","children":[)";
    for (int number = 0; number < 20'000; ++number) {
        flat += (number > 0 ? "," : "") + std::string(R"({"type":"CAEPART"})");
    }
    folder.Write("d.json", flat + "]}");
    ASSERT_EQ(Run({"store", "d.json", "--db", "s.db", "-o", "answer.json"}).status, 0);
    std::string root;
    {
        Database database(folder / "s.db", DatabaseUse::Changing, kServerKind);
        Transaction(database).Complete([&] {
            database.Run("UPDATE node SET members = '{\"type\":}' WHERE number = 20001");
            // With the old one, all of it would be refused for the checksum.
            WriteChecksum(database, kServerKind);
        });
        Statement find(database, "SELECT key FROM object WHERE number = 1");
        ASSERT_TRUE(find.Begin().Next());
        root = find.Text(0);
    }
    folder.Write("old.json", "{}");
    const std::string message =
        "'s.db' is damaged: the members of a node cannot be read: line 1, column 9: a value is missing here. "
        "Restore it from a copy";
    ExpectRefused({"fetch", root, "--db", "s.db", "-o", "old.json"}, message);
    ExpectRefused({"fetch", root, "--db", "s.db", "-o", "new.json"}, message);
    ExpectRefused({"fetch", root, "--db", "s.db"}, message);
#if !defined(_WIN32)
    ExpectRefused({"fetch", root, "--db", "s.db", "-o", "/dev/stdout"}, message);
#endif
}

/// Random members: what a text may have, and what it may look like.
class RandomMembers {
public:
    explicit RandomMembers(unsigned seed) : random_(seed) {}

    std::string Node(int depth) {
        std::string text = "{";
        const int count = Below(7);
        for (int index = 0; index < count; ++index) {
            text += (index > 0 ? "," : "") + Member(depth);
        }
        return text + "}";
    }

private:
    int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

    std::string Member(int depth) {
        switch (Below(9)) {
            case 0:
                return R"("type":)" + Value(depth);
            case 1:
                return R"("dbkey":)" + Value(depth);
            case 2:
            case 3:
                return R"("children":)" + Section(depth);
            case 4:
                return R"("files":)" + Section(depth);
            case 5:
                return R"("subType":)" + Value(depth);
            default:
                return Text() + ":" + Value(depth);
        }
    }
    std::string Section(int depth) {
        std::string text = "[";
        const int count = depth > 3 ? 0 : Below(4);
        for (int index = 0; index < count; ++index) {
            text += (index > 0 ? "," : "") + Node(depth + 1);
        }
        return text + "]";
    }
    std::string Value(int depth) {
        constexpr const char* kValues[] = {"0", "-1.50E+2", "true", "false", "null", "{}", "[]", "\"\""};
        const int choice = Below(12);
        if (choice < 8) {
            return kValues[choice];
        }
        if (choice == 8 && depth < 4) {
            return "[" + Value(depth + 1) + "," + Value(depth + 1) + "]";
        }
        return choice == 9 && depth < 4 ? "{" + Text() + ":" + Value(depth + 1) + "}" : Text();
    }
    std::string Text() {
        constexpr const char* kPieces[] = {"plain text",
                                           "a",
                                           R"(\")",
                                           R"(\/)",
                                           "/",
                                           R"(\\)",
                                           R"(\n)",
                                           R"(\u0007)",
                                           R"(\u000a)",
                                           R"(\u00E4)",
                                           "\xC3\xA4",
                                           R"(\u4E2D)",
                                           R"(\u4e2d)",
                                           R"(\uD83D\uDE00)",
                                           R"(\uD83D)",
                                           R"(\uDCFF)",
                                           R"(\uDCC3\uDCA4)",
                                           R"(\uDE00)",
                                           "\x7F",
                                           "\xFF"};
        std::string text = "\"";
        const int count = Below(4);
        for (int index = 0; index < count; ++index) {
            text += kPieces[Below(static_cast<int>(std::size(kPieces)))];
        }
        return text + "\"";
    }

    std::minstd_rand random_;
};

TEST_F(ServerFetchTest, GivesItForRandomDocuments) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::filesystem::remove(File());
        Store(RandomMembers(seed).Node(0));
        Store(RandomMembers(seed + 1000).Node(0));
        ExpectSame();
        if (HasFatalFailure()) {
            return;
        }
    }
}

}  // namespace
}  // namespace host

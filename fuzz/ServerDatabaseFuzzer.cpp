// Reads any bytes as the database of a server: it is refused, or what it lists can be fetched and is what its
// rows say. Then stores a document in it: a dry run says whether that succeeds, a failure changes nothing,
// and what was stored comes back. The first byte tells whether the others are the file or what stands in its
// tables.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Expect.h"
#include "FuzzedFiles.h"
#include "Trip.h"
#include "format/MemberNames.h"
#include "host/document/DocumentNode.h"
#include "host/server/Server.h"
#include "host/server/ServerDocument.h"
#include "host/server/ServerTables.h"
#include "host/system/DatabaseCheck.h"
#include "objectjson/NodeReading.h"
#include "tests/host/server/OlderServerDatabase.h"

namespace {

namespace member = format::member;
using std::filesystem::path;

/// A project with everything that the tables tell apart: equal names, a file at two places, and a view item.
constexpr const char* kProject =
    R"({"id":"1","name":"P","type":"SIMULATION","metaData":{"a":{"value":"b","metaDataType":"kg"}},"children":[)"
    R"({"id":"2","name":"S","type":"CAEMODEL","children":[)"
    R"({"id":"3","name":"A","type":"CAEPART","files":[{"id":"4","name":"f","type":"CAEFILE","fileType":"CAD"}]},)"
    R"({"id":"5","name":"A","type":"CAEPART","files":[{"id":"4","name":"f","type":"CAEFILE","fileType":"CAD"}]}]},)"
    R"({"id":"6","name":"v","type":"CAEVIEWITEM"},{"id":"7","name":"B","type":"CAESUBASSEMBLY"}]})";
/// The same when it also had a study, whose part was stored alone.
constexpr const char* kEarlier =
    R"({"id":"1","name":"P","type":"SIMULATION","children":[)"
    R"({"id":"2","name":"v","type":"CAEVIEWITEM","dbkey":"I"},)"
    R"({"id":"3","name":"B","type":"CAESUBASSEMBLY","dbkey":"I"},)"
    R"({"id":"4","name":"gone","type":"CAEMODEL","children":[{"id":"5","name":"A","type":"CAEPART"}]}]})";
constexpr const char* kAlone = R"({"id":"9","name":"alone","type":"CAEPART"})";
constexpr const char* kOther =
    R"({"id":"1","name":"Q","type":"SIMULATION","children":[{"id":"2","name":"S","type":"CAEMODEL"}]})";

constexpr TableColumns kTables[] = {
    {"origin", {"rowid", "text"}},
    {"project", {"number", "name"}},
    {"object", {"number", "key", "type", "project"}},
    {"node",
     {"number", "object", "above", "section", "position", "shown", "owner", "name", "file_type", "ordinal",
      "members"}},
};
constexpr TableColumns kOlderColumns[] = {
    {"origin", {"rowid", "text"}},
    {"project", {"number", "name"}},
    {"object", {"number", "key", "type", "project", "identifier", "occurrence"}},
    {"node", {"number", "object", "above", "section", "position", "shown", "members"}},
};
constexpr const char* kValues[] = {"'P'",           "'A'",    "'CAEFILE'",     "'CAEPART'",
                                   "'CAEVIEWITEM'", "'id 2'", "'PRT-3-abcdef'"};
/// Members of nodes as no store writes them.
constexpr const char* kMembers[] = {
    R"({"id":"3","name":"A","type":"CAEPART","children":[],"files":[]})",
    R"({"children":[],"name":"A","children":{},"dbkey":"x","files":[],"dbkey":"y","subType":"SDM"})",
    R"({"name" : "A","files":[{}], "type":"\u0043AEPART","\u0064bkey":"k"})",
    R"({"name":"\ud83d\ude97\/\u00e4","type":true,"files":"none","children":[]})",
    R"({"dbkey":{},"type":[{"type":"CAEPART"}],"children":[1],"type":"CAEFILE"})",
    "{}",
    "[]",
};

/// A database that inputs change, and its tables.
struct Base {
    std::string bytes;
    host::DatabaseKind kind;
    std::span<const TableColumns> tables;
};

/// The statement that gives one of the newest nodes members: one of those above with a change, or any text.
std::string ChangeOfMembers(FuzzedDataProvider& bytes) {
    const int node = bytes.ConsumeIntegralInRange(0, 12);
    std::string members = bytes.PickValueInArray(kMembers);
    const auto place = bytes.ConsumeIntegralInRange<std::size_t>(0, 2 * members.size());
    if (place < members.size()) {
        members.replace(place, bytes.ConsumeIntegralInRange<std::size_t>(0, 3),
                        bytes.ConsumeRandomLengthString(20));
    }
    std::string quoted = "'";
    for (const char character : members) {
        if (character != '\0') {
            quoted += character == '\'' ? "''" : std::string(1, character);
        }
    }
    return "UPDATE node SET members = " + quoted + "' WHERE number = (SELECT max(number) FROM node) - " +
           std::to_string(node);
}

JSONNode Parse(const std::string& text) {
    return libjson::parse(json_string(text.data(), text.size()));
}

/// Runs the statements; the checksum fits what there is then.
void Change(const path& file, const host::DatabaseKind& kind, const std::vector<std::string>& statements) {
    host::Database database(file, host::DatabaseUse::Changing, kind);
    host::Transaction(database).Complete([&] {
        for (const std::string& statement : statements) {
            try {
                database.Run(statement.c_str());
            } catch (const host::DatabaseError&) {
                // SQLite itself refuses some rows: a text is not a number, and a column is not NULL.
            }
        }
        host::WriteChecksum(database, kind);
    });
}

Base MakeBase() {
    const path file = PlaceInMemory("base.db");
    RemoveDatabase(file);
    const std::pair<const char*, host::StoreRequest> documents[] = {
        {kEarlier, {}}, {kAlone, {}}, {kProject, {"P", true}}};
    for (const auto& [document, request] : documents) {
        host::StoreReport report;
        host::Server::OpenForStoring(file, false).Store(Parse(document), request, report, Silent());
    }
    // Its keys would end differently every time.
    Change(file, host::kServerKind,
           {"UPDATE object SET key = substr(key, 1, length(key) - 6) || 'abcdef'",
            "UPDATE origin SET text = 'abcdef'"});
    Base base{BytesOf(file), host::kServerKind, kTables};
    RemoveDatabase(file);
    return base;
}

Base MakeOlderBase() {
    const path file = PlaceInMemory("base.db");
    RemoveDatabase(file);
    {
        host::Database database(file, host::DatabaseUse::Creating, host::kOlderKind);
        host::Transaction(database).Complete([&] {
            database.Run(host::kOlderTables);
            database.Run(host::kOlderRows);
            database.SetKind(host::kOlderKind);
        });
    }
    Base base{BytesOf(file), host::kOlderKind, kOlderColumns};
    RemoveDatabase(file);
    return base;
}

bool IsNamed(const JSONNode& value, format::MemberName name) {
    return host::NameOfMember(value) == name.View();
}

/// The rows of a database, read without a thought for their number.
class Rows {
public:
    explicit Rows(const path& file) {
        host::Database database(file, host::DatabaseUse::Reading, host::kServerKind);
        host::Statement nodes(database,
                              "SELECT node.number, members, coalesce(assembly.key, object.key) FROM node"
                              " JOIN object ON object.number = node.object"
                              " LEFT JOIN object AS assembly ON assembly.number = node.shown");
        for (nodes.Begin(); nodes.Next();) {
            nodes_[nodes.Number(0)] = {nodes.Text(1), nodes.Text(2), {}};
        }
        host::Statement below(database,
                              "SELECT above, section, number FROM node WHERE above IS NOT NULL"
                              " ORDER BY above, section, position, number");
        for (below.Begin(); below.Next();) {
            nodes_[below.Number(0)].below.emplace_back(below.Number(1) == 1, below.Number(2));
        }
    }

    /// The document is what the rows say of the node and everything in it.
    void ExpectDocument(const JSONNode& document, std::int64_t number, const std::string& key) {
        visited_ = 0;
        ExpectNode(document, number, &key);
    }

private:
    struct Node {
        std::string members;
        std::string key;
        /// Whether they are file records, and their numbers.
        std::vector<std::pair<bool, std::int64_t>> below;
    };

    /// All but the keys, of which a document has one in every node.
    static std::vector<JSONNode> Members(const JSONNode& node, bool isDocument) {
        std::vector<JSONNode> members;
        std::size_t keys = 0;
        for (const JSONNode& value : node) {
            if (IsNamed(value, member::kDatabaseKey)) {
                ++keys;
            } else {
                members.push_back(value);
            }
        }
        Expect(!isDocument || keys == 1, "a node has one key");
        return members;
    }

    void ExpectNode(const JSONNode& fetched, std::int64_t number, const std::string* keyOfRoot) {
        Expect(nodes_.contains(number) && ++visited_ <= nodes_.size(), "a node comes once from a row");
        const Node& node = nodes_[number];
        Expect(
            host::MemberText(fetched, member::kDatabaseKey) == (keyOfRoot != nullptr ? *keyOfRoot : node.key),
            "a node has its key");
        const std::vector<JSONNode> kept = Members(host::ParseKeptMembers(node.members), false);
        const std::vector<JSONNode> given = Members(fetched, true);
        const bool hasSubType =
            std::ranges::any_of(kept, [](const JSONNode& value) { return IsNamed(value, member::kSubType); });
        const std::size_t added = keyOfRoot != nullptr && !hasSubType ? 1 : 0;
        Expect(given.size() == kept.size() + added, "a node has the members that were stored");
        Expect(added == 0 || IsNamed(given.back(), member::kSubType), "a document says that it is one");
        for (std::size_t index = 0; index < kept.size(); ++index) {
            Expect(given[index].name() == kept[index].name(), "members have their names");
            const bool isFiles = IsNamed(kept[index], member::kFiles);
            if (IsContainer(kept[index]) && (isFiles || IsNamed(kept[index], member::kChildren))) {
                ExpectSection(given[index], node, isFiles);
            } else {
                Expect(given[index] == kept[index], "members have their values");
            }
        }
    }

    void ExpectSection(const JSONNode& section, const Node& node, bool isFiles) {
        Expect(section.type() == JSON_ARRAY, "a section is an array");
        json_index_t index = 0;
        for (const auto& [isFile, number] : node.below) {
            if (isFile == isFiles) {
                Expect(index < section.size(), "a section has all of its nodes");
                ExpectNode(section[index++], number, nullptr);
            }
        }
        Expect(index == section.size(), "a section has only its nodes");
    }

    std::map<std::int64_t, Node> nodes_;
    std::size_t visited_ = 0;
};

/// Fetches the object with the key, which the database has, and compares the document with the rows.
JSONNode Fetch(host::Server& server, Rows& rows, const std::string& key) {
    const std::optional<host::FetchedRoot> root = server.Find(key);
    Expect(root.has_value(), "an object is found by its key");
    std::string text;
    const auto write = [&](const host::WritePiece& put) { return server.Fetch(*root, put, Silent()); };
    Expect(!host::CollectText(write, text), "a document is written");
    const std::optional<JSONNode> document = ReadBytes(text);
    Expect(document.has_value(), "a document is JSON");
    rows.ExpectDocument(*document, root->node, key);
    return *document;
}

/// What the work says when it is refused; nothing when it succeeds.
template <class Work>
std::optional<std::string> RefusalOf(const Work& work) {
    try {
        work();
        return std::nullopt;
    } catch (const host::DatabaseError& refusal) {
        Expect(refusal.what()[0] != '\0', "a refusal has a reason");
        return refusal.what();
    }
}

/// Lists everything and fetches each of it. Returns one of the documents.
std::optional<JSONNode> ReadAll(const path& file) {
    std::optional<JSONNode> document;
    RefusalOf([&] {
        host::Server server = host::Server::OpenForFetching(file);
        const std::vector<host::StoredRoot> roots = server.List();
        Rows rows(file);
        for (const host::StoredRoot& root : roots) {
            Expect(root.objects + root.files > 0, "a root is one object itself");
            RefusalOf([&] { document = Fetch(server, rows, root.key); });
        }
    });
    return document;
}

/// The document without what a server adds to it.
JSONNode WithoutKeys(const JSONNode& node) {
    JSONNode result(static_cast<char>(node.type()));
    result.set_name(node.name());
    for (const JSONNode& value : node) {
        if (!IsNamed(value, member::kDatabaseKey) && !IsNamed(value, member::kSubType)) {
            result.push_back(IsContainer(value) ? WithoutKeys(value) : value);
        }
    }
    return result;
}

void ExpectStored(const path& file, const JSONNode& document, const host::StoreRequest& request,
                  bool isComparable) {
    const std::string before = BytesOf(file);
    JSONNode answer;
    const auto store = [&](bool isDryRun) {
        host::StoreReport report;
        answer = host::Server::OpenForStoring(file, isDryRun).Store(document, request, report, Silent());
    };
    const std::optional<std::string> said = RefusalOf([&] { store(true); });
    Expect(BytesOf(file) == before, "a dry run changes nothing");
    const std::optional<std::string> refusal = RefusalOf([&] { store(false); });
    Expect(said == refusal, "a dry run says what the store then says");
    Expect(!std::filesystem::exists(file.string() + "-journal"), "no journal is left");
    if (refusal) {
        Expect(BytesOf(file) == before, "what is refused changes nothing");
        return;
    }
    const std::string key = host::MemberText(answer, member::kDatabaseKey);
    host::Server server = host::Server::OpenForFetching(file);
    Rows rows(file);
    const JSONNode fetched = Fetch(server, rows, key);
    if (isComparable) {
        Expect(WithoutKeys(fetched) == document, "what was stored comes back");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::array<Base, 2> bases = {MakeBase(), MakeOlderBase()};
    if (size == 0) {
        return 0;
    }
    const path file = PlaceInMemory("server.db");
    RemoveDatabase(file);
    // "S" is what a SQLite file begins with.
    const bool isFile = data[0] == 'S';
    if (isFile) {
        WriteBytes(file, {reinterpret_cast<const char*>(data), size});
    } else {
        const Base& base = bases[data[0] % bases.size()];
        FuzzedDataProvider bytes(data + 1, size - 1);
        std::vector<std::string> statements;
        while (statements.size() < 8 && bytes.remaining_bytes() > 0) {
            statements.push_back(bytes.ConsumeBool() ? ChangeOfMembers(bytes)
                                                     : ChangeOfRow(bytes, base.tables, kValues));
        }
        WriteBytes(file, base.bytes);
        Change(file, base.kind, statements);
    }
    const std::string before = BytesOf(file);
    const std::optional<JSONNode> read = ReadAll(file);
    Expect(BytesOf(file) == before, "reading changes nothing");
    switch (size % 4) {
        case 0:
            ExpectStored(file, Parse(kProject), {"P", true}, true);
            break;
        case 1:
            ExpectStored(file, Parse(kOther), {}, true);
            break;
        case 2:
            ExpectStored(file, Parse(kAlone), {"P", true}, true);
            break;
        default:
            if (read) {
                ExpectStored(file, *read, {}, false);
            }
    }
    RemoveDatabase(file);
    return 0;
}

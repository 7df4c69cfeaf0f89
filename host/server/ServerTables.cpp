#include "ServerTables.h"

#include <array>
#include <cstdio>
#include <random>
#include <string_view>

namespace host {
namespace {

// An object is what a key means. Its identity is what a document calls it: the project's name, the identifier
// (the place of a node that has none), and which one of several with the same identifier it is.
// A node is an object at one place of a document; a file can have several. Its members are JSON, with
// "children" and "files" emptied; what a view item shows stands in "shown". Nodes without "above" belong to
// no other.
constexpr const char* kTables = R"(
CREATE TABLE origin (text TEXT NOT NULL);
CREATE TABLE project (
    number INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE
);
CREATE TABLE object (
    number INTEGER PRIMARY KEY,
    key TEXT NOT NULL UNIQUE,
    type TEXT NOT NULL,
    project INTEGER NOT NULL REFERENCES project (number),
    identifier TEXT NOT NULL,
    occurrence INTEGER NOT NULL,
    UNIQUE (project, identifier, occurrence)
);
CREATE TABLE node (
    number INTEGER PRIMARY KEY,
    object INTEGER NOT NULL REFERENCES object (number),
    above INTEGER REFERENCES node (number),
    section INTEGER NOT NULL,
    position INTEGER NOT NULL,
    shown INTEGER REFERENCES object (number),
    members TEXT NOT NULL
);
CREATE INDEX node_of_object ON node (object);
CREATE INDEX node_below ON node (above, section, position);
)";

struct Prefix {
    std::string_view type;
    const char* prefix;
};
constexpr Prefix kPrefixes[] = {
    {"CAEPART", "PRT"},
    {"CAESUBASSEMBLY", "SUB"},
    {"CAEFILE", "FIL"},
    {"CAEMODEL", "MOD"},
    {"CAEITERATION", "ITR"},
    {"CAEITERATIONFOLDER", "ITF"},
    {"CAEITERATIONMODEL", "RUN"},
    {"CAEASSEMBLYFOLDER", "ASF"},
    {"CAELOADCASEVIEWFOLDER", "LVF"},
    {"CAELOADCASEVIEW", "LCV"},
    {"CAEVIEWITEM", "ITM"},
    {"CAETAG", "TAG"},
    {"", "OBJ"},
};
/// Any other type is the additional type of a project.
constexpr const char* kProjectPrefix = "PRJ";

}  // namespace

std::string MakeKey(const std::string& type, std::int64_t number, const std::string& origin) {
    std::string key = kProjectPrefix;
    for (const Prefix& known : kPrefixes) {
        key = known.type == type ? known.prefix : key;
    }
    return key + "-" + std::to_string(number) + "-" + origin;
}

void CreateServerTables(Database& database) {
    database.SetKind(kServerKind);
    database.Run(kTables);
    std::random_device random;
    std::array<char, 16> origin{};
    std::snprintf(origin.data(), origin.size(), "%06x", static_cast<unsigned>(random()) & 0xFFFFFFU);
    Statement(database, "INSERT INTO origin VALUES (?)").Run(origin.data());
}

}  // namespace host

#include "RandomDocuments.h"

#include <algorithm>
#include <string>
#include <vector>

#include "DocumentMaker.h"
#include "JsonParts.h"
#include "RandomTexts.h"
#include "format/Effects.h"

namespace {

using namespace std::string_literals;

constexpr int kMostLevels = 300;

const std::string kMembers[] = {
    "children",    "children",  "files",    "files",    "files",         "metaData",    "dbkey",
    "name",        "name",      "name",     "dbkey",    "dbkey",         "createdDate", "createdBy",
    "projectId",   "metaData",  "metaData", "children", "children",      "status",      "checkOut",
    "subType",     "startDate", "files",    "files",    "objectName",    "displayName", "isBaseObject",
    "projectType", "category",  "models",   "versions", "version",       "id",          "type",
    "filePath",    "fileType",  "Name",     "",         "studyTypeName", "name\0"s,     "dbkey\0x"s,
    "children "};

/// What an import knows in a file record and nowhere else, and names that are similar.
std::vector<std::string> FileMembers() {
    std::vector<std::string> members = {"FileType", "fileformat"};
    for (const format::MemberEffect& known : format::kMemberEffects) {
        if (known.inObject == format::Effect::kUnknown) {
            members.emplace_back(known.name.View());
        }
    }
    return members;
}

JSONNode Number(Random& random) {
    constexpr const char* kNumbers[] = {"0", "-0", "7", "1.50e2", "2147483648", "-3.25", "1e400", "12"};
    return libjson::parse(json_string(random.Pick(kNumbers)));
}

}  // namespace

int DocumentMaker::Count(int depth, int most) {
    const int count =
        budget_ <= 0 ? 0 : random_.Below(static_cast<std::size_t>(std::max(1, most + 1 - depth / 2)));
    budget_ -= count;
    return count;
}

JSONNode DocumentMaker::Value(int depth) {
    switch (random_.Below(depth > 6 ? 5 : 8)) {
        case 0:
            return JSONNode(JSON_NULL);
        case 1:
            return JSONNode(json_string(), random_.OneIn(2));
        case 2:
            return Number(random_);
        case 5:
            return Container(JSON_ARRAY, depth, &DocumentMaker::Value);
        case 6:
            return Container(JSON_NODE, depth, &DocumentMaker::Value);
        case 7:
            return ObjectNode(depth + 1);
        default:
            return String("", RandomBytes(random_));
    }
}

/// An array or object of elements; elements of an array have names here and there, which mean nothing.
JSONNode DocumentMaker::Container(char type, int depth, JSONNode (DocumentMaker::*element)(int)) {
    JSONNode container(type);
    for (int count = Count(depth, 4); count > 0; --count) {
        const JSONNode value = (this->*element)(depth + 1);
        const bool isNamed = type == JSON_NODE || random_.OneIn(8);
        const std::string name = random_.OneIn(2) ? random_.Pick(kMembers) : RandomBytes(random_);
        container.push_back(isNamed ? Named(name, value) : Named("", value));
    }
    return container;
}

JSONNode DocumentMaker::VersionElement(int depth) {
    JSONNode node = ObjectNode(depth);
    if (node.type() == JSON_NODE && !random_.OneIn(6)) {
        node.push_back(random_.OneIn(6) ? Named("version", Value(depth)) : String("version", "2.5"));
    }
    return node;
}

JSONNode DocumentMaker::MetadataElement(int depth) {
    if (random_.OneIn(10)) {
        return Value(depth);
    }
    JSONNode record(random_.OneIn(15) ? JSON_ARRAY : JSON_NODE);
    constexpr const char* kValues[] = {"No", "No", "no", "nO", "Yes", "N\xC3\xB6", "No "};
    for (const char* const name : {"value", "metaDataType", "unit"}) {
        if (!random_.OneIn(6)) {
            const std::string text = random_.OneIn(2) ? random_.Pick(kValues) : RandomBytes(random_);
            record.push_back(random_.OneIn(8) ? Named(name, Value(depth)) : String(name, text));
        }
    }
    Shuffle(record);
    return record;
}

JSONNode DocumentMaker::Section(const std::string& name, int depth) {
    if (random_.OneIn(12)) {
        return Value(depth);
    }
    if (name == "metaData") {
        JSONNode section(random_.OneIn(8) ? JSON_ARRAY : JSON_NODE);
        for (int count = Count(depth, 5); count > 0; --count) {
            const std::string entry = RandomEntryName(random_);
            section.push_back(Named(entry, MetadataElement(depth + 1)));
        }
        return section;
    }
    const char type = random_.OneIn(8) ? JSON_NODE : JSON_ARRAY;
    return Container(type, depth,
                     name == "files"      ? &DocumentMaker::FileElement
                     : name == "versions" ? &DocumentMaker::VersionElement
                                          : &DocumentMaker::ChildElement);
}

JSONNode DocumentMaker::Member(const std::string& name, int depth) {
    if (random_.OneIn(12)) {
        return Named(name, Value(depth));
    }
    if (name == "metaData" || name == "children" || name == "files") {
        return Named(name, Section(name, depth));
    }
    if (name == "dbkey") {
        return String(name, RandomKey(random_));
    }
    if (name == "type") {
        return String(name, RandomTypeName(random_));
    }
    return String(name, RandomBytes(random_));
}

void DocumentMaker::AddFileMembers(JSONNode& node) {
    constexpr const char* kTypes[] = {"CAD",     "CAD",  "Mesh",  "Mesh", "Mesh",
                                      "Graphic", "Deck", "Other", "mesh", "Unknown"};
    constexpr const char* kFormats[] = {"ASCII", "Binary", "Unknown", "ascii", "BINARY", ""};
    constexpr const char* kFlags[] = {"true", "false", "True", "1", "true "};
    for (const std::string& name : FileMembers()) {
        const bool isFlag = name.starts_with("is");
        const bool isThere = random_.OneIn(2) || (name == "fileType" && !random_.OneIn(4));
        for (int count = random_.OneIn(12) ? 2 : isThere ? 1 : 0; count > 0; --count) {
            if (random_.OneIn(10)) {
                node.push_back(Named(name, Value(6)));
            } else if (isFlag && random_.OneIn(2)) {
                node.push_back(JSONNode(JsonText(name), random_.OneIn(2)));
            } else {
                node.push_back(String(name, name == "fileType"     ? random_.Pick(kTypes)
                                            : name == "fileFormat" ? random_.Pick(kFormats)
                                            : isFlag               ? random_.Pick(kFlags)
                                                                   : RandomBytes(random_)));
            }
        }
    }
    Shuffle(node);
}

JSONNode DocumentMaker::ObjectNode(int depth, bool isFile) {
    if (random_.OneIn(25)) {
        return Value(depth);
    }
    // Elements of an array are not members, even if they look like them.
    JSONNode node(random_.OneIn(30) ? JSON_ARRAY : JSON_NODE);
    if (!random_.OneIn(isFile ? 3 : 10)) {
        node.push_back(Member("type", depth));
    }
    for (int count = Count(depth, 8); count > 0; --count) {
        node.push_back(Member(random_.Pick(kMembers), depth + 1));
    }
    if (isFile || random_.OneIn(10)) {
        AddFileMembers(node);
    }
    if (random_.OneIn(3)) {
        Shuffle(node);
    }
    return node;
}

void DocumentMaker::Shuffle(JSONNode& node) {
    for (int count = random_.Below(node.size()); count > 0; --count) {
        const JSONNode moved = node.pop_back(static_cast<json_index_t>(random_.Below(node.size())));
        node.push_back(moved);
    }
}

/// One thing in another, many times over.
JSONNode DocumentMaker::Chain() {
    constexpr const char* kNesting[] = {"children", "children", "children", "files", "metaData", "other"};
    const std::string always = random_.Pick(kNesting);
    JSONNode inner = ObjectNode(5);
    for (int depth = random_.Between(10, kMostLevels); depth > 0; --depth) {
        const std::string name = random_.OneIn(10) ? random_.Pick(kNesting) : always;
        JSONNode section(random_.OneIn(20) ? JSON_NODE : JSON_ARRAY);
        section.push_back(Named("", inner));
        inner = JSONNode(JSON_NODE);
        inner.push_back(String("type", random_.OneIn(30) ? "" : "CAEPART"));
        inner.push_back(String("id", std::to_string(depth)));
        inner.push_back(String("dbkey", "K" + std::to_string(depth % 3)));
        inner.push_back(Named(name, section));
    }
    return inner;
}

JSONNode RandomDocument(Random& random) {
    DocumentMaker maker(random);
    return MaybeThroughText(random, random.OneIn(25) ? maker.Chain() : maker.ObjectNode(0));
}

JSONNode RandomSection(Random& random, const char* name) {
    return Named(name, MaybeThroughText(random, DocumentMaker(random).Section(name, 0)));
}

JSONNode RandomFileRecord(Random& random) {
    return MaybeThroughText(random, DocumentMaker(random).ObjectNode(0, true));
}

JSONNode RandomValue(Random& random) {
    return DocumentMaker(random).Value(0);
}

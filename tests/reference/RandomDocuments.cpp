#include "RandomDocuments.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "RandomTexts.h"

namespace {

using namespace std::string_literals;

constexpr int kLongestChain = 150;

const std::string kMembers[] = {
    "children",    "children",  "files",    "files",    "files",         "metaData",    "dbkey",

    "name",        "name",      "name",     "dbkey",    "dbkey",         "createdDate", "createdBy",
    "projectId",   "metaData",  "metaData", "children", "children",      "status",      "checkOut",
    "subType",     "startDate", "files",    "files",    "objectName",    "displayName", "isBaseObject",
    "projectType", "category",  "models",   "versions", "version",       "id",          "type",
    "filePath",    "fileType",  "Name",     "",         "studyTypeName", "name\0"s,     "dbkey\0x"s,
    "children "};

const std::string kFileMembers[] = {
    "filePath",         "fileType", "locationType", "fileFormat", "isInCoordinateGlobalFrame",
    "isFileDownloaded", "FileType", "fileformat"};

json_string JsonText(const std::string& text) {
    return {text.data(), text.size()};
}

JSONNode Named(const std::string& name, const JSONNode& value) {
    JSONNode node = value;
    node.set_name(JsonText(name));
    return node;
}

JSONNode String(const std::string& name, const std::string& value) {
    return JSONNode(JsonText(name), JsonText(value));
}

JSONNode Number(Random& random) {
    constexpr const char* kNumbers[] = {"0", "-0", "7", "1.50e2", "2147483648", "-3.25", "1e400", "12"};
    return libjson::parse(json_string(random.Pick(kNumbers)));
}

/// Makes the parts of one document; the deeper and the larger it is already, the less it adds.
class DocumentMaker {
public:
    explicit DocumentMaker(Random& random) : random_(random) {}

    JSONNode ObjectNode(int depth, bool isFile = false);
    JSONNode Section(const std::string& name, int depth);
    JSONNode AnswerNode(int depth);
    JSONNode Value(int depth);
    JSONNode Chain();

private:
    JSONNode Member(const std::string& name, int depth);
    JSONNode Identifier();
    JSONNode Container(char type, int depth, JSONNode (DocumentMaker::*element)(int));
    JSONNode ChildElement(int depth) { return ObjectNode(depth); }
    JSONNode FileElement(int depth) { return ObjectNode(depth, true); }
    JSONNode VersionElement(int depth);
    JSONNode MetadataElement(int depth);
    void AddFileMembers(JSONNode& node);
    void Shuffle(JSONNode& node);
    /// How many parts something at the depth gets; none once the document is large.
    int Count(int depth, int most);

    Random& random_;
    int budget_ = 150;
};

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
    constexpr const char* kValues[] = {"No", "no", "nO", "Yes", "N\xC3\xB6", "No "};
    for (const char* const name : {"value", "metaDataType", "unit"}) {
        if (!random_.OneIn(6)) {
            const std::string text = random_.OneIn(3) ? random_.Pick(kValues) : RandomBytes(random_);
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
            section.push_back(Named(RandomEntryName(random_), MetadataElement(depth + 1)));
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
    for (const std::string& name : kFileMembers) {
        const bool isFlag = name.starts_with("is");
        for (int count = random_.OneIn(12) ? 2 : random_.Below(2); count > 0; --count) {
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
    // Elements of an array are no members, also where they look like them.
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

JSONNode DocumentMaker::Identifier() {
    const std::string number = std::to_string(random_.Below(40));
    const std::string texts[] = {number,
                                 number,
                                 number,
                                 " " + number,
                                 "00" + number,
                                 "+" + number,
                                 number + "ab",
                                 "-" + number,
                                 number + "\0x"s,
                                 "\t\v" + number,
                                 "2147483648",
                                 "-99999999999999999999",
                                 "",
                                 "abc",
                                 "0x1",
                                 "\xC2\xA0"
                                 "5",
                                 "4294967298"};
    return random_.OneIn(5)    ? libjson::parse(JsonText(number))
           : random_.OneIn(20) ? Value(6)
                               : String("", random_.OneIn(2) ? number : random_.Pick(texts));
}

JSONNode DocumentMaker::AnswerNode(int depth) {
    if (random_.OneIn(20)) {
        return Value(depth);
    }
    JSONNode node(random_.OneIn(30) ? JSON_ARRAY : JSON_NODE);
    const std::string names[] = {"id", "dbkey",       "name",     "children", "files",
                                 "ID", "displayName", "children", "id"};
    std::size_t usual = 0;
    for (int count = random_.Between(0, 6); count > 0; --count) {
        const std::string& name = random_.OneIn(4) ? random_.Pick(names) : names[usual++ % std::size(names)];
        if (name == "id") {
            node.push_back(Named(name, Identifier()));
        } else if (name == "children" || name == "files") {
            const char type = random_.OneIn(8) ? JSON_NODE : JSON_ARRAY;
            node.push_back(Named(
                name, random_.OneIn(15) ? Value(depth) : Container(type, depth, &DocumentMaker::AnswerNode)));
        } else {
            node.push_back(random_.OneIn(15) ? Named(name, Value(depth))
                                             : String(name, RandomBytes(random_)));
        }
    }
    if (random_.OneIn(4)) {
        Shuffle(node);
    }
    return node;
}

/// One thing in another, many times over.
JSONNode DocumentMaker::Chain() {
    constexpr const char* kNesting[] = {"children", "children", "children", "files", "metaData", "other"};
    const std::string always = random_.Pick(kNesting);
    JSONNode inner = ObjectNode(5);
    for (int depth = random_.Between(10, kLongestChain); depth > 0; --depth) {
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

/// Some come as a server sends them: as text.
JSONNode MaybeThroughText(Random& random, const JSONNode& node) {
    const bool isDocument = node.type() == JSON_NODE || node.type() == JSON_ARRAY;
    return isDocument && random.OneIn(3)
               ? libjson::parse(random.OneIn(4) ? node.write_formatted() : node.write())
               : node;
}

void Show(const JSONNode& node, const std::string& indent, std::string& shown) {
    const auto quote = [&shown](const json_string& text) {
        for (const char character : text) {
            const unsigned code = static_cast<unsigned char>(character);
            if (code >= 0x20 && code < 0x7F && code != '\\' && code != '\'') {
                shown += character;
            } else {
                char escape[8];
                std::snprintf(escape, sizeof escape, "\\x%02X", code);
                shown += escape;
            }
        }
    };
    constexpr const char* kTypes[] = {"null", "string", "number", "boolean", "array", "object"};
    shown += indent + kTypes[node.type()] + " '";
    quote(node.name());
    shown += "' = '";
    quote(node.as_string());
    shown += "'\n";
    for (const JSONNode& child : node) {
        Show(child, indent + " ", shown);
    }
}

}  // namespace

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

JSONNode RandomAnswer(Random& random) {
    DocumentMaker maker(random);
    if (random.OneIn(25)) {
        return MaybeThroughText(random, maker.Chain());
    }
    JSONNode answer = maker.AnswerNode(0);
    if (random.OneIn(4)) {
        JSONNode answers(JSON_ARRAY);
        for (int count = random.Below(4); count > 0; --count) {
            answers.push_back(maker.AnswerNode(1));
        }
        answer = answers;
    }
    return MaybeThroughText(random, answer);
}

JSONNode RandomValue(Random& random) {
    return DocumentMaker(random).Value(0);
}

std::string ShowNode(const JSONNode& node) {
    std::string shown;
    Show(node, "", shown);
    return shown;
}

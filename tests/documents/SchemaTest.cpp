#include <gtest/gtest.h>
#include <libjson.h>

#include <algorithm>
#include <initializer_list>
#include <ranges>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "TextFile.h"
#include "format/Effects.h"
#include "format/Kinds.h"
#include "format/Nodes.h"
#include "format/Values.h"

// The schemas in docs/ name the members and values of format/, and no others.

using format::Effect;
using format::MemberEffect;
using format::NodeMember;
using format::Presence;

namespace {

using Names = std::vector<std::string>;
using Path = std::initializer_list<const char*>;

JSONNode Schema(const std::string& name) {
    return libjson::parse(ReadText(KORVANEJSON_DOCS "/" + name + ".schema.json").c_str());
}

const JSONNode& At(const JSONNode& schema, Path path) {
    const JSONNode* node = &schema;
    for (const char* name : path) {
        const auto found = node->find(name);
        if (found == node->end()) {
            throw std::out_of_range(std::string("the schema has no ") + name);
        }
        node = &*found;
    }
    return *node;
}

std::string TextAt(const JSONNode& schema, Path path) {
    return At(schema, path).as_string().c_str();
}

Names TextsAt(const JSONNode& schema, Path path) {
    Names texts;
    for (const JSONNode& text : At(schema, path)) {
        texts.emplace_back(text.as_string().c_str());
    }
    return texts;
}

Names NamesAt(const JSONNode& schema, Path path) {
    Names names;
    for (const JSONNode& member : At(schema, path)) {
        names.emplace_back(member.name().c_str());
    }
    return names;
}

Names NamesOf(std::span<const NodeMember> table, std::initializer_list<Presence> presences) {
    Names names;
    for (const NodeMember& member : table) {
        if (std::ranges::find(presences, member.presence) != presences.end()) {
            names.emplace_back(member.name.View());
        }
    }
    return names;
}

Names Joined(Names first, const Names& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// The paths of all lists of members in the schema.
Names ListsOfMembers(const JSONNode& schema, const std::string& path = "") {
    Names lists;
    for (const JSONNode& value : schema) {
        const std::string name = value.name().c_str();
        const std::string inner = path + "/" + name;
        if (name == "properties") {
            lists.push_back(path);
        }
        lists = Joined(std::move(lists), ListsOfMembers(value, inner));
    }
    std::ranges::sort(lists);
    return lists;
}

/// Compares a node of the schema for imports with what an import does with its members.
void ExpectEffects(const JSONNode& schema, const char* node, Effect MemberEffect::*effect) {
    Names known;
    for (const MemberEffect& member : format::kMemberEffects) {
        if (member.*effect == Effect::kUnknown) {
            continue;
        }
        const char* const name = member.name.c_str();
        known.emplace_back(name);
        const JSONNode& rule = At(schema, {"$defs", node, "properties", name});
        const std::string reference = rule.find("$ref") == rule.end() ? "" : TextAt(rule, {"$ref"});
        EXPECT_EQ(reference == "#/$defs/withoutEffect", member.*effect == Effect::kWithoutEffect)
            << node << ' ' << name;
        if (member.*effect == Effect::kTaken) {
            const bool isSection = reference == "#/$defs/" + std::string(name);
            EXPECT_EQ(isSection, member.shape != format::Shape::kText) << node << ' ' << name;
        }
    }
    EXPECT_EQ(NamesAt(schema, {"$defs", node, "properties"}), known) << node;
}

}  // namespace

TEST(DocumentSchema, ListsTheMembersOfEveryNodeInTheirOrder) {
    const JSONNode schema = Schema("document");
    constexpr auto kAlways = Presence::kAlways;
    constexpr auto kInIterations = Presence::kInIterations;
    constexpr auto kWithKey = Presence::kWithKey;
    constexpr auto kInRoot = Presence::kInRoot;
    const Names ofFiles = NamesOf(format::kFileRecord, {kAlways});

    EXPECT_EQ(NamesAt(schema, {"$defs", "rootNode", "properties"}),
              NamesOf(format::kObjectNode, {kAlways, kInIterations, kWithKey, kInRoot}));
    EXPECT_EQ(NamesAt(schema, {"$defs", "objectNode", "properties"}),
              NamesOf(format::kObjectNode, {kAlways, kInIterations, kWithKey}));
    EXPECT_EQ(NamesAt(schema, {"$defs", "fileRecord", "properties"}),
              Joined(NamesOf(format::kObjectNode, {kAlways, kWithKey}), ofFiles));
    EXPECT_EQ(NamesAt(schema, {"$defs", "metadataRecord", "properties"}),
              NamesOf(format::kMetadataRecord, {kAlways}));
    EXPECT_EQ(NamesAt(schema, {"$defs", "emptyDocument", "properties"}),
              NamesOf(format::kObjectNode, {kInRoot}));

    EXPECT_EQ(TextsAt(schema, {"$defs", "rootNode", "required"}),
              NamesOf(format::kObjectNode, {kAlways, kInRoot}));
    EXPECT_EQ(TextsAt(schema, {"$defs", "objectNode", "required"}), NamesOf(format::kObjectNode, {kAlways}));
    EXPECT_EQ(TextsAt(schema, {"$defs", "fileRecord", "required"}),
              Joined(NamesOf(format::kObjectNode, {kAlways}), ofFiles));
    EXPECT_EQ(TextsAt(schema, {"$defs", "metadataRecord", "required"}),
              NamesOf(format::kMetadataRecord, {kAlways}));
}

TEST(DocumentSchema, HasTheValuesOfTheFormat) {
    const JSONNode schema = Schema("document");
    EXPECT_EQ(TextAt(schema, {"$defs", "subType", "const"}), format::kSubTypeValue);
    const std::string file(format::TypeOfKind(format::Kind::kFile));
    EXPECT_EQ(TextAt(schema, {"$defs", "fileRecord", "properties", "type", "const"}), file);
    EXPECT_EQ(TextAt(schema, {"$defs", "fileRecord", "properties", "filePath", "const"}),
              format::kNoFilePath);
    EXPECT_EQ(TextAt(schema, {"$defs", "metaData", "propertyNames", "not", "const"}),
              format::kDescriptionEntry);
    const std::string iteration(format::TypeOfKind(format::Kind::kIteration));
    for (const char* node : {"rootNode", "objectNode"}) {
        EXPECT_EQ(TextAt(schema, {"$defs", node, "dependentSchemas", format::member::kStudyTypeName.c_str(),
                                  "properties", "type", "const"}),
                  iteration);
    }
}

TEST(Schemas, HaveTheFileFormats) {
    Names formats;
    for (const format::FileFormatName& known : format::kFileFormatNames) {
        formats.emplace_back(known.name);
    }
    formats.emplace_back(format::kUnknownFileFormat);
    for (const char* name : {"document", "import"}) {
        EXPECT_EQ(TextsAt(Schema(name), {"$defs", "fileRecord", "properties", "fileFormat", "enum"}), formats)
            << name;
    }
}

TEST(ImportSchema, ListsWhatAnImportKnows) {
    const JSONNode schema = Schema("import");
    ExpectEffects(schema, "objectNode", &MemberEffect::inObject);
    ExpectEffects(schema, "fileRecord", &MemberEffect::inRecord);
    const Names ofRecords = NamesOf(format::kMetadataRecord, {Presence::kAlways});
    EXPECT_EQ(NamesAt(schema, {"$defs", "metadataRecord", "properties"}), ofRecords);
    EXPECT_EQ(TextsAt(schema, {"$defs", "metadataRecord", "required"}), ofRecords);
    EXPECT_EQ(TextsAt(schema, {"$defs", "objectNode", "required"}), Names{format::member::kType.c_str()});
}

TEST(ImportSchema, KnowsTheFlagsThatSetSomething) {
    EXPECT_EQ(TextsAt(Schema("import"), {"$defs", "flag", "enum"}),
              (Names{"true", "false", format::kTrue, "false"}));
}

TEST(AnswerSchema, ListsWhatIsReadOfAnAnswer) {
    Names everywhere;
    Names atTheTop;
    for (const format::AnswerMember& member : format::kAnswerNode) {
        (member.isAtTheTopOnly ? atTheTop : everywhere).emplace_back(member.name.View());
    }
    const JSONNode schema = Schema("answer");
    EXPECT_EQ(NamesAt(schema, {"$defs", "answerNode", "properties"}), everywhere);
    EXPECT_EQ(NamesAt(schema, {"$defs", "answer", "properties"}), atTheTop);
}

TEST(Schemas, HaveNoOtherListsOfMembers) {
    const std::string iteration = "/dependentSchemas/" + std::string(format::member::kStudyTypeName.View());
    EXPECT_EQ(
        ListsOfMembers(Schema("document")),
        (Names{"/$defs/emptyDocument", "/$defs/fileRecord", "/$defs/metadataRecord", "/$defs/objectNode",
               "/$defs/objectNode" + iteration, "/$defs/rootNode", "/$defs/rootNode" + iteration}));
    EXPECT_EQ(ListsOfMembers(Schema("import")), (Names{"/$defs/emptyDocument", "/$defs/fileRecord",
                                                       "/$defs/metadataRecord", "/$defs/objectNode"}));
    EXPECT_EQ(ListsOfMembers(Schema("answer")), (Names{"/$defs/answer", "/$defs/answerNode"}));
}

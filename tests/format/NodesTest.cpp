#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "format/Effects.h"
#include "format/Nodes.h"
#include "support/Documents.h"
#include "support/ModelBuilders.h"

using format::NodeMember;
using format::Presence;

namespace {

using Names = std::vector<std::string>;

JSONNode DocumentOf(CAEObject& object) {
    JSONNode document = JsonSerializer(&object).GetJson();
    SaveDocument(document.write().c_str());
    return document;
}

Names NamesIn(const JSONNode& node) {
    Names names;
    for (const JSONNode& member : node) {
        names.emplace_back(member.name().c_str());
    }
    return names;
}

const JSONNode& Member(const JSONNode& node, const char* name) {
    return *node.find(name);
}

/// The names in the table whose presence is one of these.
Names NamesWhere(std::span<const NodeMember> table, std::initializer_list<Presence> presences) {
    Names names;
    for (const NodeMember& member : table) {
        if (std::ranges::find(presences, member.presence) != presences.end()) {
            names.emplace_back(member.name.View());
        }
    }
    return names;
}

/// What an answer does to a project with one part and one file: the display name and the keys.
std::string EffectOf(const std::string& answer) {
    TestProject project(L"old");
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEFile& file = project.AddFile(part, L"frame.step", CAE_FILE_CAD);
    const JSONNode node = libjson::parse(answer.c_str());
    caerest::json::ApplyJsonResponseOnObject(node, &*project);
    OuString effect = korvane::GetDisplayName(*project);
    for (const CAEObject* object :
         {static_cast<const CAEObject*>(&*project), static_cast<const CAEObject*>(&part),
          static_cast<const CAEObject*>(&file)}) {
        effect.Append(L" ", 0);
        effect.Append(object->getDBKey().GetBuffer(), 0);
    }
    return effect.GetAnsiBuffer();
}

constexpr std::string_view kAnswer =
    R"({"id":"1","dbkey":"A","name":"P","children":[{"id":"2","dbkey":"B","name":"Q"}],)"
    R"("files":[{"id":"3","dbkey":"C"}]})";

std::string Quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

/// The answer with another name in place of the first member of this name.
std::string Without(std::string_view answer, format::MemberName member) {
    std::string changed(answer);
    const std::string name = Quoted(member.View());
    return changed.replace(changed.find(name), name.size(), Quoted("other"));
}

}  // namespace

TEST(Nodes, ObjectNodeIsWrittenAsTheTableSays) {
    TestProject project;
    CAEObject& study = project.Add(CAE_MODEL, L"study");
    CAEObject& folder = project.Add(study, CAE_ITERATION_FOLDER, L"Iterations");
    CAEObject& iteration = project.Add(folder, CAE_ITERATION, L"run");
    CAEObject& model = project.Add(iteration, CAE_ITERATION_MODEL, L"model");
    iteration.setDBKey(L"ITR-1");

    const JSONNode root = DocumentOf(iteration);
    EXPECT_EQ(NamesIn(root), NamesWhere(format::kObjectNode, {Presence::kAlways, Presence::kInIterations,
                                                              Presence::kWithKey, Presence::kInRoot}));
    EXPECT_EQ(NamesIn(Member(root, "children").at(0)), NamesWhere(format::kObjectNode, {Presence::kAlways}));
    EXPECT_EQ(NamesIn(DocumentOf(model)),
              NamesWhere(format::kObjectNode, {Presence::kAlways, Presence::kInRoot}));
}

TEST(Nodes, FileRecordGoesOnAsTheTableSays) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    project.AddFile(part, L"frame.step", CAE_FILE_CAD);
    project.AddFile(part, L"frame.msh", CAE_FILE_MESH).setDBKey(L"FIL-1");

    const JSONNode document = DocumentOf(part);
    const JSONNode& records = Member(document, "files");
    Names expected = NamesWhere(format::kObjectNode, {Presence::kAlways});
    const Names own = NamesWhere(format::kFileRecord, {Presence::kAlways});
    expected.insert(expected.end(), own.begin(), own.end());
    EXPECT_EQ(NamesIn(records.at(0)), expected);

    expected = NamesWhere(format::kObjectNode, {Presence::kAlways, Presence::kWithKey});
    expected.insert(expected.end(), own.begin(), own.end());
    EXPECT_EQ(NamesIn(records.at(1)), expected);
}

TEST(Nodes, MetadataRecordIsWrittenAsTheTableSays) {
    TestProject project;
    SetMetadata(*project, L"Mass", L"12", L"kg");
    const JSONNode document = DocumentOf(*project);
    EXPECT_EQ(NamesIn(Member(document, "metaData").at(0)),
              NamesWhere(format::kMetadataRecord, {Presence::kAlways}));
}

TEST(Nodes, OfEveryMemberItIsKnownWhatAnImportDoesWithIt) {
    EXPECT_TRUE(format::AreKnownToAnImport(format::kObjectNode));
    EXPECT_TRUE(format::AreKnownToAnImport(format::kFileRecord));
    const NodeMember withAStranger[] = {{format::member::kName}, {format::member::kValue}};
    EXPECT_FALSE(format::AreKnownToAnImport(withAStranger));
}

TEST(Nodes, OfAnAnswerWhatTheTableHasIsRead) {
    const std::string whole = EffectOf(std::string(kAnswer));
    EXPECT_EQ(whole, "P A B C");
    for (const format::AnswerMember& member : format::kAnswerNode) {
        EXPECT_NE(EffectOf(Without(kAnswer, member.name)), whole) << member.name.c_str();
    }
}

TEST(Nodes, OfWhatIsNestedInAnAnswerTheTableSaysWhatIsRead) {
    const auto nested = [](const std::string& answer) {
        return EffectOf(R"({"children":[)" + answer + "]}");
    };
    const std::string whole = nested(std::string(kAnswer));
    EXPECT_EQ(whole, "old A B C");
    for (const format::AnswerMember& member : format::kAnswerNode) {
        EXPECT_EQ(nested(Without(kAnswer, member.name)) == whole, member.isAtTheTopOnly)
            << member.name.c_str();
    }
}

TEST(Nodes, OfAnAnswerNothingElseIsRead) {
    for (const format::MemberEffect& known : format::kMemberEffects) {
        const bool isRead = std::ranges::any_of(format::kAnswerNode, [&](const format::AnswerMember& member) {
            return member.name == known.name;
        });
        if (!isRead) {
            const std::string more = Quoted(known.name.View()) + R"(:{"id":"2","dbkey":"other"},)";
            std::string with(kAnswer);
            EXPECT_EQ(EffectOf(with.insert(1, more)), "P A B C") << known.name.c_str();
        }
    }
}

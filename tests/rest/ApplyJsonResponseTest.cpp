#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

void Apply(const std::string& answer, CAEObject* object) {
    const JSONNode node = libjson::parse(answer.c_str());
    caerest::json::ApplyJsonResponseOnObject(node, object);
}

std::string DisplayName(const CAEProject& project) {
    return TextOf(korvane::GetDisplayName(project));
}

/// The keys of the project and its objects and files up to the last identifier, each with a blank in front.
std::string KeysOf(CAEProject& project, int last) {
    std::string keys;
    for (int id = 1; id <= last; ++id) {
        keys += " " + TextOf(project.getCAEObject(id)->getDBKey());
    }
    return keys;
}

/// The key of object 7 after an answer with that identifier.
std::string KeyOf7(const std::string& id) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    EXPECT_TRUE(korvane::Renumber(part, 7));
    part.setDBKey(L"old");
    Apply(R"({"id":)" + id + R"(,"dbkey":"new"})", &*project);
    return TextOf(part.getDBKey());
}

}  // namespace

TEST(ApplyJsonResponse, ProjectTakesKeysAndDisplayName) {
    TestProject project(L"old");
    Apply(R"({"name":"P","id":"1","dbkey":"K1"})", &*project);
    EXPECT_EQ(DisplayName(*project), "P");
    EXPECT_EQ(NameOf(*project), "old");
    EXPECT_EQ(TextOf(project->getDBKey()), "K1");
}

TEST(ApplyJsonResponse, PartPassesTheKeysOnAndTakesNoName) {
    TestProject project(L"old");
    CAEObject& part = project.Add(CAE_PART, L"frame");
    Apply(R"({"name":"P","id":"1","dbkey":"K1"})", &part);
    EXPECT_EQ(TextOf(project->getDBKey()), "K1");
    EXPECT_EQ(DisplayName(*project), "old");
    EXPECT_EQ(NameOf(part), "frame");
    EXPECT_EQ(TextOf(part.getDBKey()), "");
}

TEST(ApplyJsonResponse, EveryObjectAndFileOfTheTreeIsReached) {
    TestProject project;
    CAEObject& model = project.Add(CAE_MODEL, L"2");
    CAEObject& part = project.Add(model, CAE_PART, L"3");
    project.AddFile(part, L"4", CAE_FILE_CAD);
    CAEObject& nested = project.Add(CAE_PROJECT, L"5");
    CAEObject& inner = project.Add(nested, CAE_TAG, L"6");
    Apply(
        R"({"id":"1","dbkey":"A","children":[{"id":"2","dbkey":"B","children":[{"id":"3","dbkey":"C",)"
        R"("files":[{"id":"4","dbkey":"D"}]}]},{"id":"5","dbkey":"E","children":[{"id":"6","dbkey":"F"}]}]})",
        &inner);
    EXPECT_EQ(KeysOf(*project, 6), " A B C D E F");
    EXPECT_EQ(DisplayName(*project), "Project");
}

TEST(ApplyJsonResponse, ArrayAppliesTheKeysOfAllItsObjects) {
    TestProject project;
    for (int id = 2; id <= 5; ++id) {
        project.Add(CAE_PART, L"part");
    }
    Apply(R"([{"name":"x","id":3,"dbkey":"K3"},"text",17,null,[{"id":"2","dbkey":"K2"}],)"
          R"({"id":"4","dbkey":"K4","children":[{"id":"5","dbkey":"K5"}]},{"id":"3","dbkey":"late"}])",
          &*project);
    EXPECT_EQ(KeysOf(*project, 5), "   K3 K4 K5");
    EXPECT_EQ(DisplayName(*project), "Project");
}

TEST(ApplyJsonResponse, ElementsOfAnArrayAreNoMembersAlsoWhereTheyBearNames) {
    TestProject project;
    JSONNode array(JSON_ARRAY);
    array.push_back(JSONNode("name", "P"));
    array.push_back(JSONNode("id", "1"));
    array.push_back(JSONNode("dbkey", "K1"));
    caerest::json::ApplyJsonResponseOnObject(array, &*project);
    EXPECT_EQ(DisplayName(*project), "Project");
    EXPECT_EQ(TextOf(project->getDBKey()), "");
}

TEST(ApplyJsonResponse, OtherAnswersChangeNothing) {
    for (const char* answer : {R"("name")", "1", "true", "null", "[]", "{}"}) {
        TestProject project;
        Apply(answer, &*project);
        EXPECT_EQ(DisplayName(*project), "Project") << answer;
        EXPECT_EQ(TextOf(project->getDBKey()), "") << answer;
    }
}

TEST(ApplyJsonResponse, DisplayNameIsTheFirstNameAtTheTop) {
    const std::pair<const char*, const char*> names[] = {
        {R"({"name":"a","name":"b"})", "a"},
        {R"({"displayName":"x"})", "Project"},
        {R"({"Name":"x","NAME":"y"})", "Project"},
        {R"({"children":[{"name":"x"}],"files":[{"name":"y"}]})", "Project"},
        {R"({"name":""})", ""},
        {R"({"name":12.0})", "12.0"},
        {R"({"name":null})", "null"},
        {R"({"name":{"name":"x"}})", ""},
        {R"({"name":"a\u0000b"})", "a"},
        {"{\"name\":\"Tr\xC3\xA4ger\"}", "Tr\xC3\xA4ger"},
    };
    for (const auto& [answer, name] : names) {
        TestProject project;
        Apply(answer, &*project);
        EXPECT_EQ(DisplayName(*project), name) << answer;
        EXPECT_EQ(NameOf(*project), "Project") << answer;
    }
}

TEST(ApplyJsonResponse, NestedProjectTakesTheNameForItself) {
    TestProject project;
    auto& nested = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"nested"));
    Apply(R"({"name":"P"})", &nested);
    EXPECT_EQ(DisplayName(nested), "P");
    EXPECT_EQ(DisplayName(*project), "Project");
}

TEST(ApplyJsonResponse, IdentifierThatNoObjectHasIsSkipped) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    Apply(R"({"id":"99","dbkey":"K99","children":[{"id":"2","dbkey":"K2"},{"id":"0","dbkey":"K0"}]})",
          &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  K2");
}

TEST(ApplyJsonResponse, FirstKeyOfAnIdentifierCounts) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    Apply(R"({"id":"2","dbkey":"A","children":[{"id":"2","dbkey":"B"}]})", &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  A");
}

TEST(ApplyJsonResponse, IdentifiersAreReadUpToTheFirstOtherCharacter) {
    for (const char* id : {"7", R"("7")", R"("007")", R"(" 7")", R"("\t\n\r 7")", R"("+7")", R"("7abc")",
                           R"("7.9")", "7.9", "7e2", R"("7 8")", R"("7\u00008")"}) {
        EXPECT_EQ(KeyOf7(id), "new") << id;
    }
    for (const char* id : {R"("-7")", R"("abc")", R"("")", R"("x7")", R"("- 7")", R"("+-7")", R"("0x7")",
                           "70", "true", "null", "{}"}) {
        EXPECT_EQ(KeyOf7(id), "old") << id;
    }
}

TEST(ApplyJsonResponse, IdentifiersBeyondTheRangeBecomeItsNearestLimit) {
    for (const char* id : {"2147483647", "2147483648", "4294967303", "9223372036854775807",
                           "9223372036854775815", "99999999999999999999999999"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        ASSERT_TRUE(korvane::Renumber(part, std::numeric_limits<int>::max()));
        Apply(std::string(R"({"id":)") + id + R"(,"dbkey":"new"})", &*project);
        EXPECT_EQ(TextOf(part.getDBKey()), "new") << id;
    }
    // None of them wraps around to another object.
    for (const char* id : {"4294967303", "-4294967289", "18446744073709551623", "-18446744073709551609"}) {
        EXPECT_EQ(KeyOf7(id), "old") << id;
    }
}

TEST(ApplyJsonResponse, LaterTextOfTheSameNumberWins) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    // By bytes, " 2" comes before "02", and that before "2" and "2x".
    Apply(
        R"([{"id":"2x","dbkey":"D"},{"id":"2","dbkey":"C"},{"id":"02","dbkey":"B"},{"id":" 2","dbkey":"A"}])",
        &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  D");
    Apply(R"([{"id":"2","dbkey":"C"},{"id":"02","dbkey":"B"},{"id":" 2","dbkey":"A"}])", &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  C");
}

TEST(ApplyJsonResponse, LongTextsOfTheSameNumberAreComparedToTheirEnd) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    // By bytes, "0000000002" comes before "000000002", and that before "000000002x".
    Apply(R"([{"id":"000000002","dbkey":"B"},{"id":"0000000002","dbkey":"A"}])", &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  B");
    Apply(
        R"([{"id":"000000002x","dbkey":"C"},{"id":"000000002","dbkey":"B"},{"id":"000000002x","dbkey":"D"}])",
        &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  C");
    // Bytes beyond ASCII come last.
    Apply(R"([{"id":"2\u00FC","dbkey":"F"},{"id":"2~","dbkey":"E"}])", &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  F");
}

TEST(ApplyJsonResponse, KeysAreAppliedAsTheyStand) {
    TestProject project;
    for (int id = 2; id <= 5; ++id) {
        project.Add(CAE_PART, L"part").setDBKey(L"old");
    }
    Apply(
        "[{\"id\":2,\"dbkey\":\"\"},{\"id\":3,\"dbkey\":77},{\"id\":4,\"dbkey\":\"K\\u0000x\"},"
        "{\"id\":5,\"dbkey\":\"\xC3\xA4\"}]",
        &*project);
    EXPECT_EQ(KeysOf(*project, 5), "   77 K \xC3\xA4");
}

TEST(ApplyJsonResponse, ObjectWithoutKeyInTheAnswerKeepsItsOwn) {
    TestProject project;
    project.Add(CAE_PART, L"frame").setDBKey(L"old");
    Apply(R"({"id":"2","children":[]})", &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  old");
}

TEST(ApplyJsonResponse, ViewItemGetsItsOwnKeyAndKeepsItsLink) {
    TestProject project;
    project.Add(CAE_SUBASSEMBLY, L"master").setDBKey(L"V");
    auto& item = dynamic_cast<CAEViewItem&>(project.Add(CAE_VIEW_ITEM, L"item"));
    item.setLinkDBKey(L"LINK");
    Apply(R"({"id":"3","dbkey":"V"})", &item);
    EXPECT_EQ(TextOf(item.getDBKey()), "V");
    EXPECT_EQ(TextOf(item.getLinkDBKey()), "LINK");
    EXPECT_EQ(korvane::GetReferencedObject(item), 0);
}

TEST(ApplyJsonResponse, NullObjectLeavesEverythingAsItWas) {
    Apply(R"({"name":"P","id":"1","dbkey":"K1"})", nullptr);
    Apply(R"([{"id":"1","dbkey":"K1"}])", nullptr);
}

TEST(ApplyJsonResponse, ObjectWithoutProjectChangesNothing) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ASSERT_EQ(Detach(*project, part), 0);
    Apply(R"([{"id":"1","dbkey":"K1"},{"id":"2","dbkey":"K2"}])", &part);
    EXPECT_EQ(TextOf(project->getDBKey()), "");
    EXPECT_EQ(TextOf(part.getDBKey()), "");
}

TEST(ApplyJsonResponse, NothingSurvivesFromCallToCall) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    Apply(R"({"id":"2","dbkey":"first"})", &*project);
    Apply(R"({"id":"2","dbkey":"second"})", &*project);
    EXPECT_EQ(KeysOf(*project, 2), "  second");
}

TEST(ApplyJsonResponse, LeavesTheAnswerUnchanged) {
    TestProject project;
    const char* text = R"({"name":"P","id":"1","dbkey":"K1","children":{"x":{"id":"2","dbkey":"K2"}}})";
    const JSONNode answer = libjson::parse(text);
    caerest::json::ApplyJsonResponseOnObject(answer, &*project);
    EXPECT_EQ(answer.write(), text);
}

namespace {

/// An object whose key cannot be set.
class KeylessFile : public CAEFile {
public:
    KeylessFile() : CAEFile(nullptr, CAE_FILE_DECK, CAE_FORMAT_ASCII, false) {}
    int setDBKey(const OuString&) override { throw std::runtime_error("no"); }
};

}  // namespace

TEST(ApplyJsonResponse, ExceptionOfTheObjectModelPassesAndWhatWasDoneStays) {
    TestProject project;
    project.Add(CAE_PART, L"frame");
    auto file = std::make_unique<KeylessFile>();
    ASSERT_EQ(project->assignID(file.get()), 3);
    ASSERT_EQ(project->addFile(file.get()), 0);
    static_cast<void>(file.release());
    project.Add(CAE_PART, L"behind");
    EXPECT_THROW(Apply(R"({"name":"P","files":[{"id":"4","dbkey":"K4"},{"id":"3","dbkey":"K3"},)"
                       R"({"id":"2","dbkey":"K2"}]})",
                       &*project),
                 std::runtime_error);
    EXPECT_EQ(DisplayName(*project), "P");
    EXPECT_EQ(KeysOf(*project, 4), "  K2  ");
}

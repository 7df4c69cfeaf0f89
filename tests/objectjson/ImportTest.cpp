#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>

#include <string>

#include "ConverterSupport.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

/// The document with one member behind its "type".
std::string WithMember(const std::string& member) {
    return R"({"type":"CAEPART",)" + member + "}";
}

/// The text that a part's name becomes by a member "name" with the value.
std::string NameFrom(const std::string& value) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"before");
    ImportText(WithMember(R"("name":)" + value), part);
    return NameOf(part);
}

}  // namespace

TEST(Import, ProjectTakesNameAsDisplayNameAndDisplayNameAsName) {
    for (const char* text :
         {R"({"type":"X","name":"A","displayName":"B"})", R"({"type":"X","displayName":"B","name":"A"})"}) {
        TestProject project;
        ImportText(text, *project);
        EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "A") << text;
        EXPECT_EQ(NameOf(*project), "B") << text;
    }
}

TEST(Import, ProjectKeepsTheNameThatTheDocumentDoesNotHave) {
    TestProject project(L"old");
    ImportText(R"({"type":"X","name":"A"})", *project);
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "A");
    EXPECT_EQ(NameOf(*project), "old");
    ImportText(R"({"type":"X","displayName":"B"})", *project);
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "A");
    EXPECT_EQ(NameOf(*project), "B");
}

TEST(Import, EveryOtherKindTakesTheLaterOfNameAndDisplayName) {
    for (const _tagCAEObjectType kind : kObjectKinds) {
        if (kind == CAE_PROJECT) {
            continue;
        }
        TestProject project;
        CAEObject& object = project.Add(kind, L"before");
        ImportText(R"({"type":"X","name":"A","displayName":"B"})", object);
        EXPECT_EQ(NameOf(object), "B") << kind;
        ImportText(R"({"type":"X","displayName":"B","name":"A"})", object);
        EXPECT_EQ(NameOf(object), "A") << kind;
        EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "Project") << kind;
    }
}

TEST(Import, NestedProjectCrossesTheNamesToo) {
    TestProject project;
    auto& nested = dynamic_cast<CAEProject&>(project.Add(CAE_PROJECT, L"nested"));
    ImportText(R"({"type":"X","name":"A","displayName":"B"})", nested);
    EXPECT_EQ(TextOf(korvane::GetDisplayName(nested)), "A");
    EXPECT_EQ(NameOf(nested), "B");
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "Project");
}

TEST(Import, KeyOfAViewItemIsItsLinkAndOfEveryOtherKindItsOwn) {
    for (const _tagCAEObjectType kind : kObjectKinds) {
        TestProject project;
        CAEObject& object = project.Add(kind, L"object");
        object.setDBKey(L"OWN");
        object.setLinkDBKey(L"LINK");
        ImportText(R"({"type":"X","dbkey":"NEW"})", object);
        const bool isViewItem = kind == CAE_VIEW_ITEM;
        EXPECT_EQ(TextOf(object.getDBKey()), isViewItem ? "OWN" : "NEW") << kind;
        EXPECT_EQ(TextOf(object.getLinkDBKey()), isViewItem ? "NEW" : "LINK") << kind;
    }
    TestProject project;
    ImportText(R"({"type":"X","dbkey":"P-1"})", *project);
    EXPECT_EQ(TextOf(project->getDBKey()), "P-1");
}

TEST(Import, CreatedDateIsTaken) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ImportText(WithMember(R"("createdDate":"yesterday")"), part);
    EXPECT_EQ(CreatedDateOf(part), "yesterday");
}

TEST(Import, CreatorIsLeftUnchangedWhateverTheDocumentSays) {
    for (const char* value : {R"("somebody")", R"("")", "17", "null", R"({"name":"x"})", R"(["x"])"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        const std::string before = Exported(*project);
        ImportText(WithMember(std::string(R"("createdBy":)") + value), part);
        EXPECT_EQ(CreatedUserNameOf(part), "engineer") << value;
        EXPECT_EQ(Exported(*project), before) << value;
    }
}

TEST(Import, MembersWithoutEffectChangeNothing) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const std::string before = Exported(*project);
    for (const char* member :
         {"projectId",    "status",        "checkOut",     "subType", "startDate", "objectName",
          "isBaseObject", "projectType",   "category",     "models",  "versions",  "version",
          "id",           "studyTypeName", "Name",         "DBKEY",   "metadata",  "child",
          "fileType",     "filePath",      "locationType", "",        "unknown"}) {
        for (const char* value :
             {R"("text")", "42", "true", "null", "{}", "[]",
              R"({"type":"CAEPART","name":"x","children":[{"type":"CAETAG"}]})",
              R"([{"type":"CAEPART","name":"x","version":"1.0","files":[{"name":"a"}]}])"}) {
            const std::string text = std::string("\"") + member + "\":" + value;
            ImportText(WithMember(text), part);
            EXPECT_EQ(Exported(*project), before) << text;
            ImportText(R"({"type":"Simulation",)" + text + "}", *project);
            EXPECT_EQ(Exported(*project), before) << text;
        }
    }
    EXPECT_TRUE(korvane::GetProjectFiles(*project).empty());
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "Project");
    EXPECT_TRUE(VersionsOf(part).empty());
}

TEST(Import, NameWithANulIsAnotherName) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const std::string before = Exported(*project);
    ImportText(WithMember(R"("name\u0000":"x","name\u0000x":"y","dbkey\u0000":"K","files\u0000":[{}],)"
                          R"("children\u0000":[{"type":"CAETAG"}],"metaData\u0000":{"m":{}})"),
               part);
    EXPECT_EQ(Exported(*project), before);
    ImportText(R"({"type\u0000":"CAEPART","name":"x"})", part);
    EXPECT_EQ(Exported(*project), before);
}

TEST(Import, LaterMemberOfTheSameNameWins) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ImportText(R"({"name":"a","dbkey":"1","createdDate":"x","type":"T","name":"b","createdDate":"y",)"
               R"("dbkey":"2","name":"c"})",
               part);
    EXPECT_EQ(NameOf(part), "c");
    EXPECT_EQ(TextOf(part.getDBKey()), "2");
    EXPECT_EQ(CreatedDateOf(part), "y");
}

TEST(Import, MembersBeforeAndBehindTheNestingOnesAreAllApplied) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ImportText(R"({"dbkey":"K","children":[{"type":"CAETAG","name":"one"}],"name":"a","metaData":{"m":)"
               R"({"value":"1","metaDataType":""}},"files":[{"name":"f"}],"children":[{"type":"CAETAG",)"
               R"("name":"two"}],"type":"CAEPART","createdDate":"d"})",
               part);
    EXPECT_EQ(TextOf(part.getDBKey()), "K");
    EXPECT_EQ(NameOf(part), "a");
    EXPECT_EQ(CreatedDateOf(part), "d");
    EXPECT_EQ(MetadataValueOf(part, L"m"), "1");
    EXPECT_EQ(FileIdsOf(part).size(), 1U);
    const auto children = ChildrenOf(part);
    ASSERT_EQ(children.size(), 2U);
    EXPECT_EQ(NameOf(*children[0]), "one");
    EXPECT_EQ(NameOf(*children[1]), "two");
}

TEST(Import, WithoutATypeNothingIsImported) {
    for (const char* type :
         {"", R"("type":"",)", R"("type":{},)", R"("type":["CAEPART"],)", R"("type":"\u0000CAEPART",)",
          R"("Type":"CAEPART",)", R"("type":"","type":"CAEPART",)"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        const std::string before = Exported(*project);
        ImportText(std::string("{") + type +
                       R"("name":"x","displayName":"y","dbkey":"K","createdDate":"d","metaData":{"m":{}},)"
                       R"("children":[{"type":"CAETAG"}],"files":[{"name":"f"}]})",
                   part);
        EXPECT_EQ(Exported(*project), before) << type;
        EXPECT_TRUE(korvane::GetProjectFiles(*project).empty()) << type;
    }
}

TEST(Import, ProjectWithoutATypeLosesItsAdditionalTypeAndNothingElse) {
    TestProject project;
    ImportText(R"({"name":"x","displayName":"y","dbkey":"K","children":[{"type":"CAETAG"}]})", *project);
    EXPECT_TRUE(project->getAdditionalType().IsEmpty());
    EXPECT_EQ(TextOf(korvane::GetDisplayName(*project)), "Project");
    EXPECT_EQ(NameOf(*project), "Project");
    EXPECT_TRUE(project->getDBKey().IsEmpty());
    EXPECT_TRUE(ChildrenOf(*project).empty());
}

TEST(Import, AnyTextThatIsNotEmptyWillDoAsTypeAndTheKindStaysAsItIs) {
    for (const char* type : {R"("CAEMODEL")", R"("whatever")", R"(" ")", "0", "null", "false"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        ImportText(std::string(R"({"name":"x","type":)") + type + "}", part);
        EXPECT_EQ(NameOf(part), "x") << type;
        EXPECT_EQ(part.getType(), CAE_PART) << type;
    }
}

TEST(Import, NodeThatIsNoObjectImportsNothing) {
    for (const char* text : {"[]", R"([{"type":"CAEPART","name":"x"}])", R"("type")", "17", "true", "null"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        const std::string before = Exported(*project);
        ImportText(text, part);
        EXPECT_EQ(Exported(*project), before) << text;
    }
}

TEST(Import, NullObjectIsLeftOut) {
    CAEObjectJson converter(libjson::parse(R"({"type":"CAEPART","name":"x","children":[{"type":"CAETAG"}],)"
                                           R"("files":[{}],"metaData":{"m":{}}})"),
                            nullptr);
    converter.Import();
    converter.ImportMembers();
    converter.ImportChildren(libjson::parse(R"([{"type":"CAETAG"}])"));
    converter.ImportFiles(libjson::parse(R"([{"name":"a"}])"));
    converter.ImportMetadata(libjson::parse(R"({"m":{}})"));
    EXPECT_EQ(converter.GetJsonNode().size(), 5U);
}

TEST(Import, ObjectWithoutProjectImportsNothing) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ASSERT_EQ(Detach(*project, part), 0);
    ASSERT_EQ(part.getProject(), nullptr);
    const std::string before = Exported(part);
    const std::string projectBefore = Exported(*project);
    ImportText(R"({"type":"CAEPART","name":"x","dbkey":"K","metaData":{"m":{"value":"1"}},)"
               R"("children":[{"type":"CAETAG"}],"files":[{"name":"f"}]})",
               part);
    EXPECT_EQ(Exported(part), before);
    EXPECT_EQ(Exported(*project), projectBefore);
}

TEST(Import, ProjectIsAskedForAgainSinceTheObjectMayHaveMoved) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEObjectJson converter(libjson::parse(R"({"type":"CAEPART","name":"x"})"), &part);
    ASSERT_EQ(Detach(*project, part), 0);
    converter.Import();
    EXPECT_EQ(NameOf(part), "frame");
    ASSERT_EQ(project->addChild(&part), 0);
    converter.Import();
    EXPECT_EQ(NameOf(part), "x");
}

TEST(Import, ValuesAreTakenAsText) {
    EXPECT_EQ(NameFrom(R"("77")"), "77");
    EXPECT_EQ(NameFrom("77"), "77");
    EXPECT_EQ(NameFrom("-1.50e2"), "-1.50e2");
    EXPECT_EQ(NameFrom("123456789012345678901234567890"), "123456789012345678901234567890");
    EXPECT_EQ(NameFrom("true"), "true");
    EXPECT_EQ(NameFrom("false"), "false");
    EXPECT_EQ(NameFrom("null"), "null");
    EXPECT_EQ(NameFrom(R"("")"), "");
    EXPECT_EQ(NameFrom(R"({"name":"x"})"), "");
    EXPECT_EQ(NameFrom(R"(["x"])"), "");
    EXPECT_EQ(NameFrom("\"Tr\xC3\xA4ger\""), "Tr\xC3\xA4ger");
    EXPECT_EQ(NameFrom(R"("a\"b\\c\/d\te")"), "a\"b\\c/d\te");
    EXPECT_EQ(NameFrom(R"("before\u0000behind")"), "before");
}

TEST(Import, KeyGivenAsNumberIsTheKeyGivenAsText) {
    for (const char* value : {"77", R"("77")"}) {
        TestProject project;
        CAEObject& part = project.Add(CAE_PART, L"frame");
        ImportText(WithMember(std::string(R"("dbkey":)") + value), part);
        EXPECT_EQ(TextOf(part.getDBKey()), "77") << value;
    }
}

TEST(Import, EmptyValuesAreApplied) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    part.setDBKey(L"K");
    ImportText(WithMember(R"("name":"","dbkey":"","createdDate":"")"), part);
    EXPECT_EQ(NameOf(part), "");
    EXPECT_EQ(TextOf(part.getDBKey()), "");
    EXPECT_EQ(CreatedDateOf(part), "");
}

TEST(Import, NothingIsEverRemovedOrMatched) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    const std::string text = R"({"type":"CAEPART","children":[{"type":"CAETAG","name":"t"}],)"
                             R"("files":[{"name":"f","fileType":"Deck"}],"metaData":{}})";
    SetMetadata(part, L"Mass", L"3");
    ImportText(text, part);
    ImportText(text, part);
    EXPECT_EQ(ChildIdsOf(part), (std::vector<int>{3, 5}));
    EXPECT_EQ(FileIdsOf(part), (std::vector<int>{4, 6}));
    EXPECT_EQ(MetadataValueOf(part, L"Mass"), "3");
}

TEST(Import, CallersNodeIsLeftUnchanged) {
    const char* text = R"({"type":"CAEPART","name":"x","metaData":{"m":{"value":"1","metaDataType":"kg"}},)"
                       R"("children":{"a":{"type":"CAEVIEWITEM","dbkey":"K","files":[{"name":"f"}]}},)"
                       R"("files":{"b":{"name":"g","children":[{"type":"CAETAG"}]}},"metaData":[{}]})";
    TestProject project;
    JSONNode node = libjson::parse(text);
    const JSONNode shared = node;
    caerest::json::DeserializeJsonToObject(node, &*project);
    EXPECT_EQ(TextOfNode(node), text);
    EXPECT_EQ(TextOfNode(shared), text);
    EXPECT_EQ(TextOfNode(node.at("children")),
              R"({"a":{"type":"CAEVIEWITEM","dbkey":"K","files":[{"name":"f"}]}})");
}

TEST(Import, MembersAloneNeedNoType) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    CAEObjectJson(libjson::parse(R"({"name":"x","children":[{"type":"CAETAG"}],"files":[{}]})"), &part)
        .ImportMembers();
    EXPECT_EQ(NameOf(part), "x");
    EXPECT_EQ(ChildrenOf(part).size(), 1U);
    EXPECT_EQ(FileIdsOf(part).size(), 1U);
}

TEST(Import, MembersAloneNeedNoProject) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    ASSERT_EQ(Detach(*project, part), 0);
    CAEObjectJson(libjson::parse(R"({"name":"x","dbkey":"K","children":[{"type":"CAETAG"}],"files":[{}],)"
                                 R"("metaData":{"m":{"value":"1"}}})"),
                  &part)
        .ImportMembers();
    EXPECT_EQ(NameOf(part), "x");
    EXPECT_EQ(TextOf(part.getDBKey()), "K");
    EXPECT_EQ(MetadataValueOf(part, L"m"), "1");
    EXPECT_TRUE(ChildrenOf(part).empty());
    EXPECT_TRUE(FileIdsOf(part).empty());
}

TEST(Import, ElementsOfAnArrayAreNoMembersAlsoWhereTheyBearNames) {
    TestProject project;
    CAEObject& part = project.Add(CAE_PART, L"frame");
    JSONNode array(JSON_ARRAY);
    array.push_back(JSONNode("type", "CAEPART"));
    array.push_back(JSONNode("name", "x"));
    array.push_back(JSONNode("dbkey", "K"));
    const std::string before = Exported(*project);
    CAEObjectJson converter(array, &part);
    converter.Import();
    converter.ImportMembers();
    EXPECT_EQ(Exported(*project), before);
}

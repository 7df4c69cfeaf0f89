#include <gtest/gtest.h>
#include <korvanejson/CaeRest.h>

#include <string>
#include <utility>

#include "objectjson/CAEObjectJson.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"
#include "support/SmallStack.h"

namespace {

constexpr int kImportedLevels = 100'000;

std::string Repeated(const std::string& text) {
    std::string repeated;
    repeated.reserve(text.size() * kImportedLevels);
    for (int level = 0; level < kImportedLevels; ++level) {
        repeated += text;
    }
    return repeated;
}

/// Reads the text and imports it, all of it and the release of the document on a small stack.
void ImportDeep(const std::string& text, CAEObject& object) {
    OnSmallStack([&] {
        JSONNode document = libjson::parse(text.c_str());
        caerest::json::DeserializeJsonToObject(document, &object);
    });
}

/// The objects below the project one below the other, in the order of their identifiers: how many.
int DepthOf(CAEProject& project) {
    int deepest = 0;
    korvane::VisitTree(project, [&](CAEObject& object, int depth) {
        EXPECT_EQ(object.getID(), depth + 1);
        deepest = depth;
    });
    return deepest;
}

/// A chain of assembly folders with the identifiers from 2 on.
void AddLevels(TestProject& project) {
    CAEObject* object = &*project;
    for (int level = 0; level < kImportedLevels; ++level) {
        object = &project.Add(*object, CAE_ASSEMBLY_FOLDER, L"a");
    }
}

/// An answer nested in turn through the two sections, with the identifiers from 2 on.
std::string DeepAnswer(const std::string& first, const std::string& second) {
    std::string text;
    for (int id = 2; id < kImportedLevels + 2; ++id) {
        const std::string number = std::to_string(id);
        const std::string& section = id % 2 == 0 ? first : second;
        text.append(R"({"id":")").append(number).append(R"(","dbkey":"K)").append(number);
        text.append(R"(",")").append(section).append(R"(":[)");
    }
    return text + Repeated("]}");
}

void ExpectKeys(CAEProject& project) {
    int wrong = 0;
    for (int id = 2; id < kImportedLevels + 2; ++id) {
        const std::string expected = "K" + std::to_string(id);
        wrong += expected == project.getCAEObject(id)->getDBKey().GetAnsiBuffer() ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0);
}

}  // namespace

TEST(ImportDepth, HundredThousandLevelsOfChildrenImportOnASmallStack) {
    TestProject project;
    ImportDeep(R"({"type":"P","children":[)" + Repeated(R"({"type":"CAEMODEL","children":[)") +
                   Repeated(R"(],"name":"b"})") + "]}",
               *project);
    EXPECT_EQ(DepthOf(*project), kImportedLevels);
    // The members behind the children were applied on the way back.
    EXPECT_EQ(NameOf(*project->getCAEObject(2)), "b");
    EXPECT_EQ(NameOf(*project->getCAEObject(kImportedLevels + 1)), "b");
}

TEST(ImportDepth, HundredThousandLevelsOfObjectsAsChildrenImportOnASmallStack) {
    TestProject project;
    ImportDeep(R"({"type":"P","children":{"x":)" + Repeated(R"({"type":"CAEMODEL","children":{"x":)") + "{}" +
                   Repeated("}}") + "}}",
               *project);
    EXPECT_EQ(DepthOf(*project), kImportedLevels);
}

TEST(ImportDepth, HundredThousandLevelsOfNestedProjectsImportOnASmallStack) {
    TestProject project;
    ImportDeep(R"({"type":"P","children":[)" + Repeated(R"({"type":"CAEPROJECT","children":[)") +
                   Repeated("]}") + "]}",
               *project);
    EXPECT_EQ(DepthOf(*project), kImportedLevels);
}

TEST(ImportDepth, HundredThousandLevelsUnderMembersThatAreNotWalkedDoNoHarm) {
    for (const char* member : {"files", "metaData", "versions", "name", "unknown"}) {
        TestProject project;
        ImportDeep(std::string(R"({"type":"P",")") + member + "\":" + Repeated(R"([{"files":)") + "[]" +
                       Repeated("}]") + "}",
                   *project);
        EXPECT_TRUE(ChildrenOf(*project).empty());
        EXPECT_EQ(korvane::GetProjectFiles(*project).size(), std::string(member) == "files" ? 1U : 0U);
    }
}

TEST(ImportDepth, AnswerOfHundredThousandLevelsIsAppliedOnASmallStack) {
    for (const auto& [first, second] :
         {std::pair("children", "children"), {"files", "files"}, {"children", "files"}}) {
        TestProject project;
        AddLevels(project);
        const std::string text = DeepAnswer(first, second);
        OnSmallStack([&] {
            const JSONNode answer = libjson::parse(text.c_str());
            caerest::json::ApplyJsonResponseOnObject(answer, &*project);
        });
        ExpectKeys(*project);
    }
}

TEST(ImportDepth, ConvertersMembersAloneImportDeepDocumentsOnASmallStack) {
    TestProject project;
    const std::string text = "[" + Repeated(R"({"type":"CAEMODEL","children":[)") + Repeated("]}") + "]";
    OnSmallStack([&] {
        CAEObjectJson converter(libjson::parse("{}"), &*project);
        converter.ImportChildren(libjson::parse(text.c_str()));
    });
    EXPECT_EQ(DepthOf(*project), kImportedLevels);
}

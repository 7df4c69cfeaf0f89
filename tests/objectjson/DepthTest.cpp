#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <string>

#include "ConverterSupport.h"
#include "support/ModelBuilders.h"
#include "support/ObjectText.h"
#include "support/SmallStack.h"

namespace {

constexpr int kLevels = 100'000;

/// How often a text occurs in a document.
std::size_t Count(const std::string& document, const std::string& text) {
    std::size_t count = 0;
    for (auto at = document.find(text); at != std::string::npos; at = document.find(text, at + text.size())) {
        ++count;
    }
    return count;
}

std::string DocumentText(CAEObject& object) {
    std::string text;
    OnSmallStack([&] { text = JsonSerializer(&object).GetJsonString().GetAnsiBuffer(); });
    return text;
}

/// The text of objects nested in the array of that name, from identifier 2 on.
std::string NestedText(const std::string& opening, const std::string& closing) {
    std::string text;
    for (int id = 2; id < kLevels + 2; ++id) {
        std::string level = opening;
        level.replace(level.find('#'), 1, std::to_string(id));
        text += level;
    }
    for (int level = 0; level < kLevels; ++level) {
        text += closing;
    }
    return text;
}

}  // namespace

TEST(Depth, HundredThousandLevelsOfChildrenExportOnASmallStack) {
    TestProject project;
    CAEObject* object = &*project;
    for (int level = 0; level < kLevels; ++level) {
        object = &project.Add(*object, CAE_ASSEMBLY_FOLDER, L"a");
    }
    EXPECT_TRUE(
        DocumentText(*project) ==
        ObjectNodeText({.id = "1",
                        .name = "Project",
                        .type = "SIMULATION",
                        .children = NestedText(
                            R"({"id":"#","name":"a","createdDate":"2026-03-01T09:30:00Z",)"
                            R"("createdBy":"engineer","type":"CAEASSEMBLYFOLDER","metaData":{},"children":[)",
                            R"(],"files":[]})"),
                        .tail = kRootTail}));
}

TEST(Depth, HundredThousandLevelsOfFilesExportOnASmallStack) {
    TestProject project;
    CAEObject* object = &*project;
    for (int level = 0; level < kLevels; ++level) {
        object = &project.AddFile(*object, L"a", CAE_FILE_DECK);
    }
    EXPECT_TRUE(DocumentText(*project) ==
                ObjectNodeText(
                    {.id = "1",
                     .name = "Project",
                     .type = "SIMULATION",
                     .files = NestedText(
                         R"({"id":"#","name":"a","createdDate":"2026-03-01T09:30:00Z",)"
                         R"("createdBy":"engineer","type":"CAEFILE","metaData":{},"children":[],"files":[)",
                         "]" + RecordTail("Deck", "ASCII") + "}"),
                     .tail = kRootTail}));
}

TEST(Depth, SectionsOfADeepObjectAreWrittenAloneOnASmallStack) {
    TestProject project;
    CAEObject* object = &*project;
    for (int level = 0; level < kLevels; ++level) {
        object = &project.Add(*object, CAE_ASSEMBLY_FOLDER, L"a");
    }
    project.AddFile(*object, L"deck", CAE_FILE_DECK);
    OnSmallStack([&] {
        CAEObjectJson converter(&*project);
        const std::string children = TextOfNode(converter.ExportChildren());
        EXPECT_EQ(Count(children, R"("type":"CAEASSEMBLYFOLDER")"), static_cast<std::size_t>(kLevels));
        EXPECT_EQ(Count(children, R"("fileType":"Deck")"), 1U);
        EXPECT_EQ(TextOfNode(converter.ExportFiles()), "[]");
    });
}

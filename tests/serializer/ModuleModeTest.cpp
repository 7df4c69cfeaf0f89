#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include "objectjson/CAEObjectJson.h"
#include "objectjson/ExportMode.h"
#include "support/ModelBuilders.h"

TEST(ModuleMode, IsEmptyFromTheStartAndKeptAfterEveryDocument) {
    TestProject project;
    project.Add(CAE_ITERATION_MODEL, L"model");
    EXPECT_TRUE(ModuleExportMode().IsEmpty());
    EXPECT_EQ(CAEObjectJson(&*project).ExportChildren().size(), 1U);

    JsonSerializer serializer(&*project);
    serializer.SetExportMode(L"STUDY");
    EXPECT_TRUE(ModuleExportMode().IsEmpty());

    serializer.GetJson();
    EXPECT_STREQ(ModuleExportMode().GetBuffer(), L"STUDY");
    // The last document's mode also applies to a converter without a mode of its own.
    EXPECT_EQ(CAEObjectJson(&*project).ExportChildren().size(), 0U);

    serializer.SetExportMode(L"PROJECT");
    EXPECT_STREQ(ModuleExportMode().GetBuffer(), L"STUDY");

    JsonSerializer(nullptr).GetJson();
    EXPECT_TRUE(ModuleExportMode().IsEmpty());
    EXPECT_EQ(CAEObjectJson(&*project).ExportChildren().size(), 1U);
}

TEST(ModuleMode, IsThatOfADocumentAlsoWhereOnlyItsTextIsAskedFor) {
    TestProject project;
    project.Add(CAE_ITERATION_MODEL, L"model");
    JsonSerializer serializer(&*project);
    serializer.SetExportMode(L"STUDY");
    serializer.GetJsonString();
    EXPECT_STREQ(ModuleExportMode().GetBuffer(), L"STUDY");
    EXPECT_EQ(CAEObjectJson(&*project).ExportChildren().size(), 0U);

    JsonSerializer(nullptr).GetJsonString();
    EXPECT_TRUE(ModuleExportMode().IsEmpty());
}

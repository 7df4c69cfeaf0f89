#include <gtest/gtest.h>

#include "Ask.h"

namespace {

TEST(ObjectTypeNames, AreThoseOfTheKindsInMixedCase) {
    EXPECT_STREQ(CAEObject::getTypeName(CAE_PART), "Part");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_SUBASSEMBLY), "SubAssembly");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_FILE), "File");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_PROJECT), "Project");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_MODEL), "Model");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_ITERATION), "Iteration");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_ITERATION_FOLDER), "IterationFolder");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_ITERATION_MODEL), "IterationModel");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_ASSEMBLY_FOLDER), "AssemblyFolder");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_LOADCASE_VIEW_FOLDER), "LoadCaseViewFolder");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_LOADCASE_VIEW), "LoadCaseView");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_VIEW_ITEM), "ViewItem");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_SESSION_OBJECT), "SessionObject");
    EXPECT_STREQ(CAEObject::getTypeName(CAE_TAG), "Tag");
}

TEST(ObjectTypeNames, AreNeverNull) {
    EXPECT_STREQ(CAEObject::getTypeName(CAE_UNKNOWN_OBJECT), "Unknown");
    for (const int value : {-1, 2, 10, 20, 24, 40, 42, 44, 1000000, -2147483647 - 1, 2147483647}) {
        EXPECT_STREQ(CAEObject::getTypeName(static_cast<_tagCAEObjectType>(value)), "Unknown") << value;
    }
}

TEST(FileTypeNames, ReadBackToTheirValue) {
    for (int value = CAE_FILE_UNKNOWN; value <= CAE_FILE_OTHER; ++value) {
        EXPECT_EQ(GetCAEFileType(OuString(CAEGetFileTypeName(value), 0)), value) << CAEGetFileTypeName(value);
    }
}

TEST(FileTypeNames, AreOneForEachKind) {
    const std::vector<std::string> expected{"Unknown", "CAD",    "Mesh",    "Graphic", "Deck",
                                            "Include", "Result", "Report",  "Picture", "Script",
                                            "Log",     "Table",  "Archive", "Other"};
    std::vector<std::string> names;
    for (int value = CAE_FILE_UNKNOWN; value <= CAE_FILE_OTHER; ++value) {
        names.emplace_back(CAEGetFileTypeName(value));
    }
    EXPECT_EQ(names, expected);
}

TEST(FileTypeNames, AreNeverNullAndReadExactly) {
    EXPECT_STREQ(CAEGetFileTypeName(-1), "Unknown");
    EXPECT_STREQ(CAEGetFileTypeName(14), "Unknown");
    EXPECT_EQ(GetCAEFileType(L"CAD"), CAE_FILE_CAD);
    EXPECT_EQ(GetCAEFileType(L"cad"), CAE_FILE_UNKNOWN);
    EXPECT_EQ(GetCAEFileType(L"CAD "), CAE_FILE_UNKNOWN);
    EXPECT_EQ(GetCAEFileType(L""), CAE_FILE_UNKNOWN);
}

}  // namespace

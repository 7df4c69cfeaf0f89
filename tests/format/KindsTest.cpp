#include <gtest/gtest.h>

#include "format/Kinds.h"

using format::FileFormat;
using format::Kind;

TEST(Kinds, EveryKindWithANameIsReadFromItsFirstOne) {
    for (const format::KindName& known : format::kKindNames) {
        EXPECT_EQ(format::KindOfType(known.name), known.kind) << known.name;
        EXPECT_EQ(format::KindOfType(format::TypeOfKind(known.kind)), known.kind) << known.name;
    }
    // The one kind with two.
    EXPECT_EQ(format::TypeOfKind(Kind::kProject), "CAEPROJECT");
    EXPECT_EQ(format::KindOfType("CAEPROGRAM"), Kind::kProject);
}

TEST(Kinds, SomeKindsHaveNoNameAndSomeNamesNoKind) {
    EXPECT_EQ(format::TypeOfKind(Kind::kSessionObject), "");
    EXPECT_EQ(format::TypeOfKind(Kind::kUnknown), "");
    EXPECT_EQ(format::KindOfType(format::kSessionObjectType), Kind::kUnknown);
    EXPECT_EQ(format::KindOfType("CaePart"), Kind::kUnknown);
    EXPECT_EQ(format::KindOfType(""), Kind::kUnknown);
}

TEST(Kinds, FormatsAreReadFromTheirNamesAlone) {
    EXPECT_EQ(format::FileFormatOfName("ASCII"), FileFormat::kAscii);
    EXPECT_EQ(format::FileFormatOfName("Binary"), FileFormat::kBinary);
    for (const char* const other : {"", "ascii", "BINARY", "Unknown", "ASCII "}) {
        EXPECT_EQ(format::FileFormatOfName(other), FileFormat::kUnknown) << other;
    }
    EXPECT_STREQ(format::NameOfFileFormat(FileFormat::kAscii), "ASCII");
    EXPECT_STREQ(format::NameOfFileFormat(FileFormat::kBinary), "Binary");
    EXPECT_STREQ(format::NameOfFileFormat(FileFormat::kUnknown), "Unknown");
    EXPECT_STREQ(format::NameOfFileFormat(static_cast<FileFormat>(7)), "Unknown");
}

TEST(Kinds, OnlyThreeTypesOfFilesHaveRoles) {
    for (int type = -1; type < 20; ++type) {
        EXPECT_EQ(format::HasRole(static_cast<format::FileType>(type)), type >= 1 && type <= 3) << type;
    }
}

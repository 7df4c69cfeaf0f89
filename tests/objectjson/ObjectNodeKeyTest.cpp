#include <gtest/gtest.h>

#include <string_view>
#include <utility>

#include "objectjson/ObjectNodeKey.h"

using namespace std::string_view_literals;

TEST(ObjectNodeKey, TwentyMembersAreRecognised) {
    constexpr std::pair<std::string_view, int> kKeys[] = {
        {"name", 1},       {"dbkey", 2},       {"createdDate", 3},   {"createdBy", 4},    {"projectId", 5},
        {"metaData", 6},   {"children", 7},    {"status", 8},        {"checkOut", 9},     {"subType", 10},
        {"startDate", 11}, {"objectName", 12}, {"isBaseObject", 13}, {"projectType", 14}, {"category", 15},
        {"models", 16},    {"files", 17},      {"displayName", 18},  {"versions", 19},    {"version", 20}};
    static_assert(std::size(kKeys) == 20);
    for (const auto& [name, value] : kKeys) {
        EXPECT_EQ(static_cast<int>(ClassifyObjectNodeKey(name)), value) << name;
    }
}

TEST(ObjectNodeKey, EveryOtherNameIsUnknown) {
    for (const std::string_view name :
         {""sv,          "type"sv,       "id"sv,          "studyTypeName"sv, "fileType"sv,
          "filePath"sv,  "fileFormat"sv, "Name"sv,        "NAME"sv,          "nam"sv,
          "names"sv,     " name"sv,      "name "sv,       "name\0"sv,        "\0name"sv,
          "dbKey"sv,     "DBKEY"sv,      "metadata"sv,    "createddate"sv,   "created"sv,
          "child"sv,     "Children"sv,   "childrens"sv,   "file"sv,          "versio"sv,
          "versions "sv, "versionss"sv,  "displayname"sv, "displayNames"sv}) {
        EXPECT_EQ(ClassifyObjectNodeKey(name), ObjectNodeKey::kUnknown) << name;
    }
}

TEST(ObjectNodeKey, NameThatBeginsAnotherIsAKeyOfItsOwn) {
    EXPECT_EQ(ClassifyObjectNodeKey("version"), ObjectNodeKey::kVersion);
    EXPECT_EQ(ClassifyObjectNodeKey("versions"), ObjectNodeKey::kVersions);
    EXPECT_EQ(ClassifyObjectNodeKey({"versions", 7}), ObjectNodeKey::kVersion);
}

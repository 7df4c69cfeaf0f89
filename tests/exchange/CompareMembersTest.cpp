#include <korvaneexchange/Text.h>

#include "CompareSupport.h"

namespace korvane::exchange {
namespace {

constexpr const char* kChild = "~ [/children/0/";

TEST(CompareMembers, FindsEveryChangeThatTheFormatCarries) {
    const auto changed = [](const std::string& what) { return kChild + what + "\n"; };
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","name":"a")", R"("type":"CAEPART","name":"b")"),
              changed("name] P/b: name changed from 'a' to 'b'"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","createdDate":"a")", R"("type":"CAEPART")"),
              changed("createdDate] P/model: createdDate changed from 'a' to ''"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","dbkey":"a")", R"("type":"CAEPART")"),
              changed("dbkey] P/model: dbkey changed from 'a' to ''"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPROJECT")", R"("type":"CAEPROGRAM")"),
              changed("type] P/'': type changed from 'CAEPROJECT' to 'CAEPROGRAM'"));
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","dbkey":"k")", R"("type":"CAETAG","dbkey":"k")"),
              changed("type] P/model: type changed from 'CAEPART' to 'CAETAG'"));
    EXPECT_EQ(CompareTexts(R"({"type":"CAETAG"})", R"({"type":"CAEPART"})"),
              "~ [/type] model: type changed from 'CAETAG' to 'CAEPART'\n");
    EXPECT_EQ(CompareTexts(R"({"type":"X"})", R"({"type":"CAEPART"})"),
              "~ [/type] model: type changed from 'X' to 'CAEPART'\n");
}

TEST(CompareMembers, LongNamesAndValuesAreShortened) {
    const auto repeated = [](const std::string& text, int times) {
        std::string all;
        for (int time = 0; time < times; ++time) {
            all += text;
        }
        return all;
    };
    const std::string name = R"("type":"CAEPART","name":")" + std::string(90, 'n') + "\"";
    EXPECT_EQ(CompareChildren(name, name + R"(,"createdDate":"d")"),
              "~ [/children/0/createdDate] P/" + std::string(80, 'n') +
                  "...: createdDate changed from '' to 'd'\n");
    // Twenty bytes before what differs begins a character's second byte: the whole character is shown.
    const std::string before = "z" + repeated("\u00e4", 50) + "w" + repeated("\u00e4", 5);
    const std::string shown = "...'" + repeated("\u00e4", 5) + "w" + repeated("\u00e4", 5);
    EXPECT_EQ(
        CompareChildren(R"("type":"CAEPART","name":"p","createdDate":")" + before + "x\"",
                        R"("type":"CAEPART","name":"p","createdDate":")" + before + "y\""),
        "~ [/children/0/createdDate] P/p: createdDate changed from " + shown + "x' to " + shown + "y'\n");
}

TEST(CompareMembers, ShowsTextsWholeThatLookTheSame) {
    // A line end, and the two characters that show one; the text begins with a character of two bytes, the
    // second of which is twenty bytes before what differs.
    const std::string before = R"("type":"CAEPART","name":"p","createdDate":")"
                               "\u00e4" +
                               std::string(19, 'z');
    const std::string shown = "'\u00e4" + std::string(19, 'z') + "\\n'";
    EXPECT_EQ(CompareChildren(before + R"(\n")", before + R"(\\n")"),
              "~ [/children/0/createdDate] P/p: createdDate changed from " + shown + " to " + shown + "\n");
}

TEST(CompareMembers, FindsEveryChangeOfFiles) {
    const auto changed = [](const std::string& what) { return "~ [/files/0/" + what + "\n"; };
    EXPECT_EQ(CompareRecords(R"("name":"a")", R"("name":"b")"),
              changed("name] P/b: name changed from 'a' to 'b'"));
    EXPECT_EQ(CompareRecords(R"("name":"a","fileType":"CAD")", R"("name":"a","fileType":"Mesh")"),
              changed("fileType] P/a: fileType changed from 'CAD' to 'Mesh'"));
    EXPECT_EQ(CompareRecords(R"("name":"a","fileFormat":"ASCII")", R"("name":"a","fileFormat":"Binary")"),
              changed("fileFormat] P/a: fileFormat changed from 'ASCII' to 'Binary'"));
    EXPECT_EQ(CompareRecords(R"("name":"a","locationType":"a")", R"("name":"a","locationType":"b")"),
              changed("locationType] P/a: locationType changed from 'a' to 'b'"));
    EXPECT_EQ(CompareRecords(R"("name":"a","createdDate":"a","dbkey":"k","metaData":{"m":{"value":"1"}})",
                             R"("name":"a","createdDate":"b","dbkey":"l","metaData":{"m":{"value":"2"}})"),
              changed("createdDate] P/a: createdDate changed from 'a' to 'b'") +
                  changed("dbkey] P/a: dbkey changed from 'k' to 'l'") +
                  changed("metaData/m] P/a: metadata 'm' changed from '1' to '2'"));
}

std::string CompareMetadata(const std::string& first, const std::string& second) {
    return CompareChildren(R"("type":"CAETAG","name":"t","metaData":{)" + first + "}",
                           R"("type":"CAETAG","name":"t","metaData":{)" + second + "}");
}

TEST(CompareMembers, FindsEveryChangeOfMetadata) {
    const auto changed = [](const std::string& what) { return kChild + what + "\n"; };
    EXPECT_EQ(CompareMetadata(R"("m":{"value":"1"})", R"("m":{"value":"2"})"),
              changed("metaData/m] P/t: metadata 'm' changed from '1' to '2'"));
    EXPECT_EQ(CompareMetadata(R"("m":{"value":"1"})", ""),
              changed("metaData/m] P/t: metadata 'm' removed '1'"));
    EXPECT_EQ(CompareMetadata("", R"("a/b~c":{"value":"1"})"),
              changed("metaData/a~1b~0c] P/t: metadata 'a/b~c' added '1'"));
    EXPECT_EQ(CompareMetadata(R"("m":{"value":"1"})", R"("M":{"value":"2"})"),
              changed("metaData/M] P/t: metadata 'M' was called 'm'") +
                  changed("metaData/M] P/t: metadata 'M' changed from '1' to '2'"));
    EXPECT_EQ(CompareMetadata(R"("\u00E4":{"value":"1"})", R"("\u00C4":{"value":"1"})"),
              changed("metaData/\u00C4] P/t: metadata '\u00C4' was called '\u00E4'"));
    EXPECT_EQ(CompareMetadata(R"("az`{":{"value":"1"})", R"("AZ`{":{"value":"1"})"),
              changed("metaData/AZ`{] P/t: metadata 'AZ`{' was called 'az`{'"));
    // What stands beside the letters has no other case.
    EXPECT_EQ(CompareMetadata(R"("`":{},"[":{})", R"("@":{},"{":{})"),
              changed("metaData/@] P/t: metadata '@' added ''") +
                  changed("metaData/{] P/t: metadata '{' added ''") +
                  changed("metaData/`] P/t: metadata '`' removed ''") +
                  changed("metaData/[] P/t: metadata '[' removed ''"));
    // One that was added or removed is none of another order.
    EXPECT_EQ(CompareMetadata(R"("a":{},"b":{},"c":{})", R"("x":{},"b":{},"c":{})"),
              changed("metaData/x] P/t: metadata 'x' added ''") +
                  changed("metaData/a] P/t: metadata 'a' removed ''"));
    EXPECT_EQ(CompareMetadata(R"("a":{},"b":{},"c":{})", R"("c":{},"b":{},"a":{})"),
              changed("metaData] P/t: metadata in another order"));
}

TEST(CompareMembers, ShowsWhereLongTextsDiffer) {
    const std::string same(300, 'x');
    const std::string shown = kChild + std::string("metaData/m] P/t: metadata 'm' changed from ...'") +
                              std::string(20, 'x') + "1' to ...'" + std::string(20, 'x') + "2'\n";
    EXPECT_EQ(CompareMetadata(R"("m":{"value":")" + same + R"(1"})", R"("m":{"value":")" + same + R"(2"})"),
              shown);
    // What differs is the length.
    EXPECT_EQ(CompareMetadata(R"("m":{"value":")" + same + R"("})", R"("m":{"value":")" + same + R"(2"})"),
              kChild + std::string("metaData/m] P/t: metadata 'm' changed from ...'") + std::string(20, 'x') +
                  "' to ...'" + std::string(20, 'x') + "2'\n");
}

TEST(CompareMembers, TextsAreOnOneLineAndPrintable) {
    EXPECT_EQ(CompareMetadata(R"("a\nb":{"value":"\u001b[1m"})", R"("a\nb":{"value":"\u202E"})"),
              kChild + std::string("metaData/a\nb] P/t: metadata 'a\\nb' changed from '\\x1B[1m' to "
                                   "'\\u202E'\n"));
    EXPECT_EQ(
        CompareChildren(R"("type":"CAETAG","name":"a\nb")", R"("type":"CAETAG","name":"a\nb","dbkey":"k")"),
        kChild + std::string("dbkey] P/a\\nb: dbkey changed from '' to 'k'\n"));
}

TEST(CompareMembers, LeavesOutWhatTheFormatDoesNotCarry) {
    EXPECT_EQ(
        CompareChildren(
            R"("type":"CAEPART","id":"1","createdBy":"a","status":"x","foo":1,)"
            R"("metaData":{"m":{"value":"1","metaDataType":"kg"}})",
            R"("type":"CAEPART","id":"2","createdBy":"b","metaData":{"m":{"value":"1","metaDataType":""}})"),
        "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","metaData":{"Description":{"value":"1"}})",
                              R"("type":"CAEPART","metaData":{"description":{"value":"1"}})"),
              "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","name":"")", R"("type":"CAEPART","name":"model")"), "");
    // A view item's own key, the name of a file among the children, and what no import makes something of.
    EXPECT_EQ(CompareChildren(R"("type":"CAEVIEWITEM","dbkey":"a")", R"("type":"CAEVIEWITEM")"), "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEFILE","name":"a")", R"("type":"CAEFILE","name":"")"), "");
    EXPECT_EQ(CompareChildren(
                  R"("type":"CAETAG","children":[{"type":"CAEFOO"},{},{"type":"CAEUNKNOWN"},"x",[1],null])",
                  R"("type":"CAETAG")"),
              "");
    EXPECT_EQ(
        CompareChildren(
            R"("type":"CAEMODEL","files":[{"fileType":"Mesh"},{"fileType":"CAD"},{"fileType":"Graphic"}])",
            R"("type":"CAEMODEL")"),
        "");
    EXPECT_EQ(
        CompareRecords(
            R"("id":"1","filePath":"/a","isFileDownloaded":"true","name":"x/a","children":[{"type":"CAETAG"}],"files":[{}])",
            R"("id":"2","filePath":"","isInCoordinateGlobalFrame":true,"name":"a")"),
        "");
    EXPECT_EQ(CompareRecords(R"("fileFormat":"ascii","fileType":"cad")",
                             R"("fileFormat":"Unknown","fileType":"Unknown")"),
              "");
    EXPECT_EQ(CompareTexts(R"({"type":"X","subType":"SDM"})", R"({"type":"X"})"), "");
    EXPECT_EQ(CompareTexts("[]", "[1]"), "");
}

/// Both have a name: then neither is an imported one.
TEST(CompareMembers, NamesOfFileObjectsCountWhereBothHaveOne) {
    EXPECT_EQ(CompareChildren(R"("type":"CAEFILE","name":"a")", R"("type":"CAEFILE","name":"b")"),
              "~ [/children/0/name] P/b: name changed from 'a' to 'b'\n");
}

TEST(CompareMembers, ReadsDuplicatesAsAnImportDoes) {
    EXPECT_EQ(CompareChildren(
                  R"("type":"CAETAG","metaData":{"m":{"value":"1"},"n":{"value":"2"},"M":{"value":"3"}})",
                  R"("type":"CAETAG","metaData":{"m":{"value":"3"},"n":{"value":"2"}})"),
              "");
    EXPECT_EQ(CompareChildren(R"("type":"CAEPART","name":"a","name":"b","dbkey":"K","dbkey":"L")",
                              R"("type":"CAEPART","displayName":"b","dbkey":"L")"),
              "");
    EXPECT_EQ(CompareRecords(R"("fileType":"CAD","fileType":"Mesh")", R"("fileType":"CAD")"), "");
    EXPECT_EQ(CompareChildren(
                  R"("type":"CAETAG","children":[{"type":"CAETAG"}],"children":{"x":{"type":"CAETAG"}})",
                  R"("type":"CAETAG","children":[{"type":"CAETAG"},{"type":"CAETAG"}])"),
              "");
    EXPECT_EQ(CompareChildren(R"("type":"CAETAG","metaData":[{"value":"1"},{"value":"2"}])",
                              R"("type":"CAETAG","metaData":{"":{"value":"2"}})"),
              "");
}

TEST(CompareMembers, ANullKeyIsNoneAndAnyOtherNullIsAText) {
    EXPECT_EQ(CompareChildren(R"("type":"CAETAG","dbkey":null)", R"("type":"CAETAG")"), "");
    EXPECT_EQ(
        CompareChildren(R"("type":"CAETAG","dbkey":"K","dbkey":null)", R"("type":"CAETAG","dbkey":"K")"), "");
    EXPECT_EQ(
        CompareChildren(R"("type":"CAETAG","createdDate":null)", R"("type":"CAETAG","createdDate":"null")"),
        "");
}

std::string Study(const std::string& type, const std::string& name, const std::string& studyTypeName) {
    return R"({"type":"X","name":"P","children":[{"type":")" + type + R"(","name":")" + name +
           R"(","children":[{"type":"CAEITERATIONFOLDER","children":[{"type":"CAEITERATION","studyTypeName":")" +
           studyTypeName + R"("}]}]}]})";
}

TEST(CompareMembers, AStudyTypeCountsWhereTheDocumentHasTheStudy) {
    EXPECT_EQ(
        CompareTexts(Study("CAEMODEL", "s", "a"), Study("CAEMODEL", "s", "b")),
        "~ [/children/0/children/0/children/0/studyTypeName] P/s/model/model: studyTypeName changed from "
        "'a' to 'b'\n");
    EXPECT_EQ(CompareTexts(Study("CAEMODEL", "s", ""), Study("CAEMODEL", "s", "model")), "");
    EXPECT_EQ(CompareTexts(Study("CAEPROJECT", "s", "a"), Study("CAEPROJECT", "s", "b")), "");
    EXPECT_EQ(CompareTexts(Study("CAEFILE", "s", "a"), Study("CAEFILE", "s", "b")), "");
    EXPECT_EQ(CompareTexts(R"({"type":"CAEITERATION","studyTypeName":"a"})",
                           R"({"type":"CAEITERATION","studyTypeName":"b"})"),
              "");
    // The root of a document may be the study itself, and a project that has its name elsewhere.
    const std::string below =
        R"(,"children":[{"type":"CAEITERATIONFOLDER","children":[{"type":"CAEITERATION","studyTypeName":)";
    EXPECT_NE(CompareTexts(R"({"type":"CAEMODEL")" + below + R"("a"}]}]})",
                           R"({"type":"CAEMODEL")" + below + R"("b"}]}]})"),
              "");
    EXPECT_EQ(
        CompareTexts(R"({"type":"X")" + below + R"("a"}]}]})", R"({"type":"X")" + below + R"("b"}]}]})"), "");
}

TEST(CompareMembers, AStudyTypeThatFollowsTheStudysNameIsNoChangeOfItsOwn) {
    EXPECT_EQ(CompareTexts(Study("CAEMODEL", "a", "a"), Study("CAEMODEL", "b", "b")),
              "~ [/children/0/name] P/b: name changed from 'a' to 'b'\n");
    EXPECT_EQ(
        CompareTexts(Study("CAEMODEL", "a", "a"), Study("CAEMODEL", "b", "c")),
        "~ [/children/0/name] P/b: name changed from 'a' to 'b'\n"
        "~ [/children/0/children/0/children/0/studyTypeName] P/b/model/model: studyTypeName changed from "
        "'a' to 'c'\n");
}

TEST(CompareMembers, IgnoresDatesOnRequest) {
    const std::string first = R"({"type":"CAEPART","createdDate":"a","files":[{"createdDate":"a"}]})";
    const std::string second = R"({"type":"CAEPART","createdDate":"b","files":[{"createdDate":"b"}]})";
    EXPECT_EQ(CompareTexts(first, second),
              "~ [/createdDate] model: createdDate changed from 'a' to 'b'\n"
              "~ [/files/0/createdDate] model/'': createdDate changed from 'a' to 'b'\n");
    EXPECT_EQ(CompareTexts(first, second, {.ignoreDates = true}), "");
}

TEST(CompareMembers, IgnoresKeysOnRequestAndStillComparesByThem) {
    const std::string first = R"({"type":"X","name":"P","dbkey":"a","children":[)"
                              R"({"type":"CAETAG","name":"old","dbkey":"K"},{"type":"CAETAG","name":"t"}]})";
    const std::string second = R"({"type":"X","name":"P","dbkey":"b","children":[)"
                               R"({"type":"CAETAG","name":"new","dbkey":"K"},)"
                               R"({"type":"CAETAG","name":"t","dbkey":"L"}]})";
    const std::string renamed = "~ [/children/0/name] P/new: name changed from 'old' to 'new'\n";
    EXPECT_EQ(CompareTexts(first, second), "~ [/dbkey] P: dbkey changed from 'a' to 'b'\n" + renamed +
                                               "~ [/children/1/dbkey] P/t: dbkey changed from '' to 'L'\n");
    EXPECT_EQ(CompareTexts(first, second, {.ignoreKeys = true}), renamed);
}

}  // namespace
}  // namespace korvane::exchange

#include "CompareSupport.h"

namespace korvane::exchange {
namespace {

/// A document of a project P with these children or files.
std::string Project(const std::string& children, const std::string& files = "") {
    return R"({"type":"X","name":"P","children":[)" + children + R"(],"files":[)" + files + "]}";
}

std::string Tag(const std::string& name, const std::string& key = "", const std::string& children = "") {
    return R"({"type":"CAETAG","name":")" + name + R"(","dbkey":")" + key + R"(","children":[)" + children +
           "]}";
}

std::string File(const std::string& name, const std::string& type, const std::string& key = "") {
    return R"({"name":")" + name + R"(","fileType":")" + type + R"(","dbkey":")" + key + R"("})";
}

std::string CompareTags(const std::string& first, const std::string& second) {
    return CompareTexts(Project(first), Project(second));
}

TEST(CompareAlignment, KeysComeFirst) {
    EXPECT_EQ(CompareTags(Tag("a", "K") + "," + Tag("b", "L"), Tag("b", "K") + "," + Tag("a", "L")),
              "~ [/children/0/name] P/b: name changed from 'a' to 'b'\n"
              "~ [/children/1/name] P/a: name changed from 'b' to 'a'\n");
}

TEST(CompareAlignment, AnObjectWithTheSameKeyElsewhereWasMoved) {
    // What is below it, and its members, are compared as usual.
    EXPECT_EQ(CompareTags(Tag("a", "", Tag("x", "K", Tag("below"))) + "," + Tag("b"),
                          Tag("a") + "," + Tag("b", "", Tag("y", "K", Tag("below", "L")))),
              "> [/children/1/children/0] P/b/y: moved from P/a/x\n"
              "~ [/children/1/children/0/name] P/b/y: name changed from 'x' to 'y'\n"
              "~ [/children/1/children/0/children/0/dbkey] P/b/y/below: dbkey changed from '' to 'L'\n");
    // Out of an object that was removed, into one that was added.
    EXPECT_EQ(CompareTags(Tag("a", "", Tag("c", "", Tag("x", "K"))),
                          Tag("t") + "," + R"({"type":"CAEPART","name":"b","children":[)" +
                              Tag("c", "", Tag("x", "K")) + "]}"),
              "~ [/children/0/name] P/t: name changed from 'a' to 't'\n"
              "- [/children/0/children/0] P/a/c: removed\n"
              "+ [/children/1] P/b: added, with 1 object below it\n"
              "> [/children/1/children/0/children/0] P/b/c/x: moved from P/a/c/x\n");
    // Two that changed places, one below the other.
    EXPECT_EQ(CompareTags(Tag("a", "K", Tag("b", "L")), Tag("b", "L", Tag("a", "K"))),
              "> [/children/0] P/b: moved from P/a/b\n"
              "> [/children/0/children/0] P/b/a: moved from P/a\n");
}

TEST(CompareAlignment, AKeyThatOccursTwiceCountsForNothing) {
    EXPECT_EQ(CompareTags(Tag("a", "K") + "," + Tag("b", "K"), Tag("b", "K") + "," + Tag("a")),
              "> [/children/0] P/b: moved from place 2 to 1 of the children\n"
              "~ [/children/1/dbkey] P/a: dbkey changed from 'K' to ''\n");
    // In one of the two is enough.
    EXPECT_EQ(CompareTags(Tag("a", "K") + "," + Tag("b", "K"), Tag("x", "K") + "," + Tag("b")),
              "~ [/children/0/name] P/x: name changed from 'a' to 'x'\n"
              "~ [/children/1/dbkey] P/b: dbkey changed from 'K' to ''\n");
}

TEST(CompareAlignment, TheKeyOfAViewItemIsThatOfWhatItShows) {
    const auto item = [](const std::string& name, const std::string& key) {
        return R"({"type":"CAEVIEWITEM","name":")" + name + R"(","dbkey":")" + key + R"("})";
    };
    EXPECT_EQ(CompareTags(Tag("a", "K") + "," + item("v", "K"), item("v", "K") + "," + Tag("b", "K")),
              "> [/children/0] P/v: moved from place 2 to 1 of the children\n"
              "~ [/children/1/name] P/b: name changed from 'a' to 'b'\n");
}

TEST(CompareAlignment, NamesAndKindsComeNext) {
    // One more in the middle.
    EXPECT_EQ(
        CompareTags(Tag("a", "", Tag("x")) + "," + Tag("c", "", Tag("x")),
                    Tag("a", "", Tag("x")) + "," + Tag("b", "", Tag("x")) + "," + Tag("c", "", Tag("x"))),
        "+ [/children/1] P/b: added, with 1 object below it\n");
    // The same name and another kind.
    EXPECT_EQ(CompareTags(Tag("a"), R"({"type":"CAEPART","name":"a"})"),
              "- [/children/0] P/a: removed\n+ [/children/0] P/a: added\n");
    // A path goes on below what has a key.
    EXPECT_EQ(CompareTags(Tag("a", "K", Tag("x") + "," + Tag("y")), Tag("b", "K", Tag("y") + "," + Tag("z"))),
              "~ [/children/0/name] P/b: name changed from 'a' to 'b'\n"
              "- [/children/0/children/0] P/a/x: removed\n"
              "+ [/children/0/children/1] P/b/z: added\n");
}

TEST(CompareAlignment, EqualSiblingsAreComparedInTheirOrder) {
    EXPECT_EQ(CompareTags(Tag("a", "", Tag("1")) + "," + Tag("a", "", Tag("2")),
                          Tag("a", "", Tag("1")) + "," + Tag("a", "", Tag("2")) + "," + Tag("a")),
              "+ [/children/2] P/a: added\n");
}

TEST(CompareAlignment, AKeyThatIsNewDoesNotChangeTheObject) {
    EXPECT_EQ(CompareTags(Tag("a"), Tag("a", "K")),
              "~ [/children/0/dbkey] P/a: dbkey changed from '' to 'K'\n");
    EXPECT_EQ(CompareTags(Tag("a", "L"), Tag("a", "K")),
              "~ [/children/0/dbkey] P/a: dbkey changed from 'L' to 'K'\n");
}

TEST(CompareAlignment, WhatIsLeftIsComparedByPosition) {
    const std::string part = R"({"type":"CAEPART","name":"p"})";
    EXPECT_EQ(CompareTags(Tag("a") + "," + part + "," + Tag("b"), Tag("c") + "," + part + "," + Tag("d")),
              "~ [/children/0/name] P/c: name changed from 'a' to 'c'\n"
              "~ [/children/2/name] P/d: name changed from 'b' to 'd'\n");
    // Kinds apart, and in their order.
    EXPECT_EQ(CompareTags(Tag("a") + "," + Tag("b") + "," + part,
                          R"({"type":"CAEPART","name":"q"},)" + Tag("c") + "," + Tag("d") + "," + Tag("e")),
              "> [/children/0] P/q: moved from place 3 to 1 of the children\n"
              "~ [/children/0/name] P/q: name changed from 'p' to 'q'\n"
              "~ [/children/1/name] P/c: name changed from 'a' to 'c'\n"
              "~ [/children/2/name] P/d: name changed from 'b' to 'd'\n"
              "+ [/children/3] P/e: added\n");
    // One of the two may have a key, but those without come first.
    EXPECT_EQ(CompareTags(Tag("a") + "," + Tag("b"), Tag("c", "K") + "," + Tag("d")),
              "> [/children/0] P/c: moved from place 2 to 1 of the children\n"
              "~ [/children/0/name] P/c: name changed from 'b' to 'c'\n"
              "~ [/children/0/dbkey] P/c: dbkey changed from '' to 'K'\n"
              "~ [/children/1/name] P/d: name changed from 'a' to 'd'\n");
    // Other names and other keys: two objects.
    EXPECT_EQ(CompareTags(Tag("a", "K"), Tag("b", "L")),
              "- [/children/0] P/a: removed\n+ [/children/0] P/b: added\n");
}

TEST(CompareAlignment, WhatIsLeftElsewhereIsAnotherObject) {
    EXPECT_EQ(
        CompareTags(Tag("a") + "," + Tag("b") + "," + Tag("c"), Tag("b") + "," + Tag("c") + "," + Tag("d")),
        "- [/children/0] P/a: removed\n+ [/children/2] P/d: added\n");
    // One neighbour is enough.
    EXPECT_EQ(CompareTags(Tag("m") + "," + Tag("a") + "," + Tag("x") + "," + Tag("b"),
                          Tag("a") + "," + Tag("y") + "," + Tag("m") + "," + Tag("b")),
              "~ [/children/1/name] P/y: name changed from 'x' to 'y'\n"
              "> [/children/2] P/m: moved from place 1 to 3 of the children\n");
    EXPECT_EQ(
        CompareTags(Tag("a") + "," + Tag("x") + "," + Tag("b"), Tag("y") + "," + Tag("b") + "," + Tag("a")),
        "~ [/children/0/name] P/y: name changed from 'x' to 'y'\n"
        "> [/children/2] P/a: moved from place 1 to 3 of the children\n");
}

/// An import gives such objects no name.
TEST(CompareAlignment, FileObjectsAndProjectsWithoutNamesAreComparedByPosition) {
    for (const std::string type : {"CAEFILE", "CAEPROJECT"}) {
        const std::string named = R"({"type":")" + type + R"(","name":"x"})";
        const std::string nameless = R"({"type":")" + type + R"("})";
        EXPECT_EQ(CompareTags(named + "," + nameless, nameless + "," + nameless), "") << type;
        if (type == "CAEPROJECT") {
            // That is what an export writes for it.
            const std::string exported = R"({"type":"CAEPROJECT","name":"model"})";
            EXPECT_EQ(CompareTags(named + "," + exported, exported + "," + exported), "");
        }
        EXPECT_EQ(CompareTags(named + "," + nameless, nameless + "," + named),
                  "- [/children/1] P/'': removed\n+ [/children/0] P/'': added\n")
            << type;
        const auto keyed = [&](const std::string& name) {
            return R"({"type":")" + type + R"(","dbkey":"K","name":")" + name + R"("})";
        };
        EXPECT_EQ(CompareTags(keyed("x") + "," + keyed("y"), keyed("") + "," + keyed("")), "") << type;
    }
}

TEST(CompareAlignment, AsFewAsPossibleWereMovedAmongSiblings) {
    const auto tags = [](const std::string& names) {
        std::string children;
        for (const char name : names) {
            children += (children.empty() ? "" : ",") + Tag(std::string(1, name));
        }
        return children;
    };
    EXPECT_EQ(CompareTags(tags("abcdef"), tags("fabcde")),
              "> [/children/0] P/f: moved from place 6 to 1 of the children\n");
    EXPECT_EQ(CompareTags(tags("abcdef"), tags("acdebf")),
              "> [/children/4] P/b: moved from place 2 to 5 of the children\n");
    // What was added and removed moves nothing.
    EXPECT_EQ(CompareTags(tags("abc"), R"({"type":"CAEPART","name":"n"},)" + tags("bc")),
              "- [/children/0] P/a: removed\n+ [/children/0] P/n: added\n");
    EXPECT_EQ(CompareTexts(Project("", File("a", "Deck") + "," + File("b", "Deck")),
                           Project("", File("b", "Deck") + "," + File("a", "Deck"))),
              "> [/files/0] P/b: moved from place 2 to 1 of the files\n");
}

/// The files of a part, which attaches all types.
std::string CompareFiles(const std::string& first, const std::string& second) {
    return CompareTexts(R"({"type":"CAEPART","name":"P","files":[)" + first + "]}",
                        R"({"type":"CAEPART","name":"P","files":[)" + second + "]}");
}

TEST(CompareAlignment, FilesAreComparedByKeyThenByNameAndType) {
    EXPECT_EQ(CompareFiles(File("a", "CAD", "K") + "," + File("b", "CAD"),
                           File("b", "CAD") + "," + File("c", "CAD", "K")),
              "> [/files/0] P/b: moved from place 2 to 1 of the files\n"
              "~ [/files/1/name] P/c: name changed from 'a' to 'c'\n");
    EXPECT_EQ(CompareFiles(File("a", "CAD") + "," + File("a", "Mesh"), File("a", "Mesh")),
              "- [/files/0] P/a: removed\n");
    // By name alone, and then by position.
    EXPECT_EQ(CompareFiles(File("a", "CAD") + "," + File("b", "Mesh"), File("b", "Graphic")),
              "- [/files/0] P/a: removed\n~ [/files/0/fileType] P/b: fileType changed from 'Mesh' to "
              "'Graphic'\n");
    EXPECT_EQ(
        CompareFiles(File("a", "CAD") + "," + File("b", "CAD"), File("b", "CAD") + "," + File("c", "CAD")),
        "- [/files/0] P/a: removed\n+ [/files/1] P/c: added\n");
    EXPECT_EQ(
        CompareFiles(File("a", "CAD") + "," + File("b", "CAD"), File("c", "CAD") + "," + File("b", "CAD")),
        "~ [/files/0/name] P/c: name changed from 'a' to 'c'\n");
}

TEST(CompareAlignment, AFileThatIsAttachedTwiceIsComparedWhereItIs) {
    const auto part = [](const std::string& name, const std::string& files) {
        return R"({"type":"CAEPART","name":")" + name + R"(","files":[)" + files + "]}";
    };
    const std::string file = File("f", "CAD", "K");
    // Its key occurs twice among the records, and once more as an object.
    const std::string object = R"({"type":"CAEFILE","name":"f","dbkey":"K"})";
    EXPECT_EQ(CompareTags(part("a", file) + "," + part("b", file) + "," + object,
                          part("a", file) + "," + part("b", File("g", "CAD", "K")) + "," + object),
              "~ [/children/1/files/0/name] P/b/g: name changed from 'f' to 'g'\n");
    EXPECT_EQ(CompareTags(part("a", file) + "," + part("b", "") + "," + object,
                          object + "," + part("a", "") + "," + part("b", file)),
              "> [/children/0] P/f: moved from place 3 to 1 of the children\n"
              "> [/children/2/files/0] P/b/f: moved from P/a/f\n");
}

TEST(CompareAlignment, SaysHowMuchIsBelow) {
    const std::string below =
        Tag("x", "", Tag("y")) + R"(,{"type":"CAEFILE"},{"type":"CAEPART","files":[{},{}]})";
    EXPECT_EQ(CompareTags(Tag("a") + "," + Tag("b", "", below), Tag("a")),
              "- [/children/1] P/b: removed, with 3 objects and 3 files below it\n");
    EXPECT_EQ(CompareTags(Tag("a"), Tag("a") + "," + Tag("b", "", R"({"type":"CAEFILE"})")),
              "+ [/children/1] P/b: added, with 1 file below it\n");
}

TEST(CompareAlignment, PointersCountWhatIsNotComparedToo) {
    EXPECT_EQ(CompareTexts(R"({"type":"X","name":"P","children":[1,{"type":"FOO"},{"type":"CAETAG"}]})",
                           R"({"type":"X","name":"P"})"),
              "- [/children/2] P/model: removed\n");
    EXPECT_EQ(CompareTexts(R"({"type":"X","name":"P"})",
                           R"({"type":"X","name":"P","files":{"a~/b":{"name":"f"}}})"),
              "+ [/files/a~0~1b] P/f: added\n");
}

}  // namespace
}  // namespace korvane::exchange

#include <gtest/gtest.h>

#include "exchange/NodeWalker.h"
#include "support/SmallStack.h"

namespace korvane::exchange {
namespace {

JSONNode Parse(const std::string& text) {
    return libjson::parse(json_string(text.data(), text.size()));
}

std::string NameIn(const JSONNode& node) {
    return node.type() == JSON_NODE ? node.at("n").as_string().c_str() : "-";
}

/// What a walk passes: `(` and `)` around what is below a node, the place and the name of each.
std::string Passed(const std::string& text, SectionOrder order, const std::string& notEntered = "none") {
    std::string passed;
    const JSONNode document = Parse(text);
    struct Name {
        std::string path;
    };
    using Visit = NodeVisit<const JSONNode, Name>;
    const auto enter = [&](const Visit& visit) {
        const std::string name = NameIn(visit.node);
        visit.own.path = (visit.above == nullptr ? "" : visit.above->path + "/") + name;
        const char* const mark = visit.place == NodePlace::Root         ? "="
                                 : visit.place == NodePlace::FileRecord ? "@"
                                                                        : "";
        passed += " " + (mark + visit.own.path);
        if (name == notEntered) {
            return false;
        }
        passed += " (";
        return true;
    };
    WalkNodes<Name>(document, order, enter, [&](const Visit& visit) {
        // The state of the node above is there in both calls.
        EXPECT_EQ(visit.own.path,
                  (visit.above == nullptr ? "" : visit.above->path + "/") + NameIn(visit.node));
        passed += " )";
    });
    return passed;
}

constexpr const char* kDocument =
    R"({"n":"a","files":[{"n":"f"}],"children":[{"n":"b","children":[{"n":"c"}]},{"n":"d"}],"name":"x",)"
    R"("files":[{"n":"g","files":[{"n":"h"}]}],"children":[{"n":"e"}]})";

TEST(WalkNodes, GoesThroughSectionsInTheOrderAskedFor) {
    EXPECT_EQ(Passed(kDocument, SectionOrder::AsWritten),
              " =a ( @a/f ( ) a/b ( a/b/c ( ) ) a/d ( ) @a/g ( @a/g/h ( ) ) a/e ( ) )");
    EXPECT_EQ(Passed(kDocument, SectionOrder::ChildrenFirst),
              " =a ( a/b ( a/b/c ( ) ) a/d ( ) a/e ( ) @a/f ( ) @a/g ( @a/g/h ( ) ) )");
    EXPECT_EQ(Passed(kDocument, SectionOrder::FirstOfEach), " =a ( a/b ( a/b/c ( ) ) a/d ( ) @a/f ( ) )");
}

TEST(WalkNodes, TakesObjectsForArraysAndPassesOverOtherValues) {
    const std::string text =
        R"({"n":"a","children":{"x":{"n":"b"},"y":7},"files":"z","children":[],"files":[[{"n":"c"}],null,{"n":"d"}]})";
    EXPECT_EQ(Passed(text, SectionOrder::AsWritten), " =a ( a/b ( ) a/- ( ) @a/- ( ) @a/- ( ) @a/d ( ) )");
    // The first one counts, whatever it is.
    EXPECT_EQ(Passed(text, SectionOrder::FirstOfEach), " =a ( a/b ( ) a/- ( ) )");
    EXPECT_EQ(Passed(R"({"n":"a","Children":[{"n":"b"}]})", SectionOrder::AsWritten), " =a ( )");
    EXPECT_EQ(Passed("7", SectionOrder::AsWritten), " =- ( )");
}

TEST(WalkNodes, NeitherGoesIntoNorLeavesWhatIsNotEntered) {
    for (const SectionOrder order : {SectionOrder::AsWritten, SectionOrder::ChildrenFirst}) {
        EXPECT_EQ(Passed(R"({"n":"a","children":[{"n":"b","children":[{"n":"c"}]},{"n":"d"}]})", order, "b"),
                  " =a ( a/b a/d ( ) )");
    }
    EXPECT_EQ(Passed(kDocument, SectionOrder::AsWritten, "a"), " =a");
}

TEST(WalkNodes, TheElementsOfAnArrayAreRoots) {
    EXPECT_EQ(
        Passed(R"([{"n":"a","children":[{"n":"b"}]},[{"n":"c"}],{"n":"d"}])", SectionOrder::FirstOfEach),
        " =a ( a/b ( ) ) =- ( ) =d ( )");
    EXPECT_EQ(Passed("[]", SectionOrder::AsWritten), "");
}

TEST(WalkNodes, ElementsOfArraysAreNoSections) {
    JSONNode children(JSON_ARRAY);
    children.set_name("children");
    children.push_back(Parse(R"({"n":"b"})"));
    JSONNode array(JSON_ARRAY);
    array.push_back(children);
    JSONNode document = Parse(R"({"n":"a"})");
    JSONNode files(JSON_ARRAY);
    files.set_name("files");
    files.push_back(array);
    document.push_back(files);
    int count = 0;
    WalkNodes(document, SectionOrder::AsWritten, [&](const auto&) {
        ++count;
        return true;
    });
    EXPECT_EQ(count, 2);
}

TEST(WalkNodesToChange, ChangesTheNodeForItsHolderOnly) {
    JSONNode document = Parse(kDocument);
    const JSONNode other = document;
    const std::string before(other.write().c_str());
    WalkNodesToChange(document, SectionOrder::AsWritten, [](const auto& visit) {
        visit.node.push_back(JSONNode("m", "1"));
        return visit.place != NodePlace::FileRecord;
    });
    EXPECT_EQ(
        std::string(document.write().c_str()),
        R"({"n":"a","files":[{"n":"f","m":"1"}],"children":[{"n":"b","children":[{"n":"c","m":"1"}],"m":"1"},)"
        R"({"n":"d","m":"1"}],"name":"x","files":[{"n":"g","files":[{"n":"h"}],"m":"1"}],)"
        R"("children":[{"n":"e","m":"1"}],"m":"1"})");
    EXPECT_EQ(std::string(other.write().c_str()), before);
}

TEST(WalkNodes, NeedsNoStackForNesting) {
    constexpr int kDepth = 100000;
    std::string text = R"({"n":"a")";
    for (int depth = 0; depth < kDepth; ++depth) {
        text += R"(,"children":[{"n":"a")";
    }
    for (int depth = 0; depth < kDepth; ++depth) {
        text += "}]";
    }
    JSONNode document = Parse(text + "}");
    int deepest = 0;
    int left = 0;
    OnSmallStack([&] {
        using Visit = NodeVisit<const JSONNode, int>;
        const auto enter = [&](const Visit& visit) {
            visit.own = visit.above == nullptr ? 0 : *visit.above + 1;
            deepest = std::max(deepest, visit.own);
            return true;
        };
        WalkNodes<int>(document, SectionOrder::AsWritten, enter, [&](const Visit&) { ++left; });
        WalkNodesToChange(document, SectionOrder::FirstOfEach, [](const auto& visit) {
            visit.node.push_back(JSONNode("m", "1"));
            return true;
        });
    });
    EXPECT_EQ(deepest, kDepth);
    EXPECT_EQ(left, kDepth + 1);
}

}  // namespace
}  // namespace korvane::exchange

#include <gtest/gtest.h>
#include <node_writer.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "Texts.h"

namespace {

void WriteNestedNodes(libjson::node_writer& writer) {
    writer.text("text", "value");
    writer.open_object("object");
    writer.text("a", "1");
    writer.open_object("inner");
    writer.end();
    writer.text("a", "2");
    writer.end();
    writer.open_array("array");
    writer.open_object();
    writer.text("", "");
    writer.end();
    writer.open_object();
    writer.end();
    writer.end();
    writer.open_array("empty");
    writer.end();
}

constexpr const char* kExample =
    R"({"text":"value","object":{"a":"1","inner":{},"a":"2"},"array":[{"":""},{}],"empty":[]})";

TEST(NodeWriter, MakesNodesInTheOrderOfTheCalls) {
    JSONNode root;
    libjson::node_writer writer(root);
    WriteNestedNodes(writer);
    EXPECT_EQ(Write(root), kExample);
    EXPECT_EQ(root, Parse(kExample));
}

TEST(NodeWriter, AddsToWhatIsThere) {
    JSONNode root = Parse(R"({"first":1})");
    {
        libjson::node_writer writer(root);
        writer.text("second", "2");
        EXPECT_EQ(Write(root), R"({"first":1,"second":"2"})");
        writer.open_object("third");
        writer.end();
    }
    EXPECT_EQ(Write(root), R"({"first":1,"second":"2","third":{}})");
    JSONNode array = Parse("[0]");
    libjson::node_writer(array).text("", "1");
    EXPECT_EQ(Write(array), R"([0,"1"])");
    JSONNode text = Parse("\"text\"");
    libjson::node_writer(text).text("", "1");
    EXPECT_EQ(text, Parse("\"text\""));
}

TEST(NodeWriter, LeavesOtherHoldersOfTheRootAlone) {
    JSONNode root = Parse(R"({"first":1})");
    const JSONNode other = root;
    libjson::node_writer writer(root);
    writer.text("second", "2");
    const JSONNode between = root;
    writer.text("third", "3");
    EXPECT_EQ(Write(other), R"({"first":1})");
    EXPECT_EQ(Write(between), R"({"first":1,"second":"2"})");
    EXPECT_EQ(Write(root), R"({"first":1,"second":"2","third":"3"})");
}

TEST(NodeWriter, GivesUpWhatDoesNotEnd) {
    JSONNode root;
    {
        libjson::node_writer writer(root);
        writer.text("text", "value");
        writer.open_object(std::string(3000, 'n'));
        writer.open_array("inner");
        writer.open_object();
        writer.text(std::string(3000, 'n'), std::string(3000, 'v'));
        writer.end();
    }
    EXPECT_EQ(Write(root), R"({"text":"value"})");
}

/// The same calls for the writer and, by hand, for nodes that are appended to each other.
class TwoWays {
public:
    explicit TwoWays(unsigned seed) : random_(seed) {}

    void Run() {
        for (int call = 0; call < 2000; ++call) {
            MakeCall();
        }
        while (byHand_.size() > 1) {
            End();
        }
        ASSERT_EQ(root_, byHand_.front());
        ASSERT_EQ(Write(root_), Write(byHand_.front()));
    }

private:
    void MakeCall() {
        switch (random_() % 6) {
            case 0: {
                const std::string name = RandomName();
                writer_.open_object(name);
                Open(JSON_NODE, name);
                break;
            }
            case 1: {
                const std::string name = RandomName();
                writer_.open_array(name);
                Open(JSON_ARRAY, name);
                break;
            }
            case 2:
                if (byHand_.size() > 1) {
                    End();
                }
                break;
            case 3:
                writer_.open_object();
                Open(JSON_NODE, "");
                break;
            default: {
                const std::string name = RandomName();
                const std::string value(random_() % 8 == 0 ? random_() % 2000 : random_() % 20, '/');
                writer_.text(name, value);
                byHand_.back().push_back(JSONNode(Text(name), Text(value)));
                break;
            }
        }
    }

    void Open(char type, const std::string& name) {
        byHand_.emplace_back(type);
        byHand_.back().set_name(Text(name));
    }

    void End() {
        writer_.end();
        const JSONNode ended = std::move(byHand_.back());
        byHand_.pop_back();
        byHand_.back().push_back(ended);
    }

    /// Names that differ in little, some of them rare and long.
    std::string RandomName() {
        const auto kind = random_() % 20;
        return kind == 0 ? std::string(random_() % 200, 'n')
                         : std::string("name of member").substr(0, random_() % 15) + (kind < 5 ? "x" : "");
    }

    std::mt19937 random_;
    JSONNode root_;
    libjson::node_writer writer_{root_};
    std::vector<JSONNode> byHand_ = std::vector<JSONNode>(1);
};

TEST(NodeWriter, MakesWhatAppendingMakes) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        TwoWays(seed).Run();
    }
}

}  // namespace

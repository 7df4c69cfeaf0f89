#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "libjson.h"
#include "support/LongRun.h"
#include "text_writer.h"

namespace {

class Pages final : public libjson::text_sink {
public:
    void write(const char* text, std::size_t length) override {
        lengths.push_back(length);
        all.append(text, length);
    }

    std::vector<std::size_t> lengths;
    std::string all;
};

template <typename Write>
std::string TextOf(libjson::text_layout layout, const Write& write) {
    Pages pages;
    libjson::text_writer writer(pages, layout);
    write(writer);
    writer.finish();
    return pages.all;
}

void WriteExample(libjson::text_writer& writer) {
    writer.open_object();
    writer.text(libjson::plain_name{"plain"}, "value");
    writer.text(std::string_view("a \"name\""), "tab\t");
    writer.open_array(libjson::plain_name{"list"});
    writer.text("element");
    writer.open_object();
    writer.end();
    writer.open_array();
    writer.end();
    writer.end();
    writer.open_object(std::string_view("o/"));
    writer.text(libjson::plain_name{""}, "");
    writer.end();
    writer.open_object(libjson::plain_name{"p"});
    writer.end();
    writer.open_array(std::string_view("q\n"));
    writer.end();
    writer.end();
}

TEST(TextWriter, WritesCompactText) {
    EXPECT_EQ(
        TextOf(libjson::text_layout::compact, WriteExample),
        R"({"plain":"value","a \"name\"":"tab\t","list":["element",{},[]],"o\/":{"":""},"p":{},"q\n":[]})");
}

TEST(TextWriter, WritesFormattedText) {
    EXPECT_EQ(
        TextOf(libjson::text_layout::formatted, WriteExample),
        "{\n\t\"plain\" : \"value\",\n\t\"a \\\"name\\\"\" : \"tab\\t\",\n\t\"list\" : [\n\t\t\"element\",\n"
        "\t\t{},\n\t\t[]\n\t],\n\t\"o\\/\" : {\n\t\t\"\" : \"\"\n\t},\n\t\"p\" : {},\n\t\"q\\n\" : []\n}");
}

/// A text of any length up to 600 with everything in it that is written in a way of its own.
std::string RandomText(std::mt19937& random) {
    static const std::string_view kPieces[] = {
        "plain ",
        "0123456789abcdefghijklmnopqrstuvwxyz",
        "\"",
        "\\",
        "/",
        "\n",
        std::string_view("\0", 1),
        "\x7F",
        "\xC3\xBC",
        "\xE2\x82\xAC",
        "\xF0\x9F\x98\x80",
        "\xFF",
        "\xC3",
        "\xED\xA0\x80",
        "\xED\xB0\x80",
        "\xED\xB2\x80",
        "x",
    };
    std::string text;
    const std::size_t length = random() % (random() % 8 == 0 ? 600 : 40);
    while (text.size() < length) {
        text += kPieces[random() % std::size(kPieces)];
    }
    return text;
}

/// A node and calls of the writer for the same members.
class Twins {
public:
    explicit Twins(unsigned seed) : random_(seed) {}

    std::pair<std::string, std::string> Make(libjson::text_layout layout) {
        Pages pages;
        libjson::text_writer writer(pages, layout);
        const bool isArray = random_() % 2 == 0;
        JSONNode root(isArray ? JSON_ARRAY : JSON_NODE);
        isArray ? writer.open_array() : writer.open_object();
        Fill(root, isArray, writer, 0);
        writer.end();
        writer.finish();
        return {layout == libjson::text_layout::compact ? root.write() : root.write_formatted(), pages.all};
    }

private:
    void Fill(JSONNode& node, bool isArray, libjson::text_writer& writer, int depth) {
        const std::size_t count = random_() % 12;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string name = RandomText(random_);
            const std::string value = RandomText(random_);
            const std::size_t what = depth > 5 ? 0 : random_() % 4;
            if (what < 2) {
                JSONNode child{json_string(), json_string(value)};
                Write(child, isArray, name, [&] { isArray ? writer.text(value) : writer.text(name, value); });
                node.push_back(child);
                continue;
            }
            const bool isChildArray = what == 2;
            JSONNode child(isChildArray ? JSON_ARRAY : JSON_NODE);
            Write(child, isArray, name, [&] {
                if (isChildArray) {
                    isArray ? writer.open_array() : writer.open_array(name);
                } else {
                    isArray ? writer.open_object() : writer.open_object(name);
                }
            });
            Fill(child, isChildArray, writer, depth + 1);
            writer.end();
            node.push_back(child);
        }
    }

    template <typename Call>
    static void Write(JSONNode& child, bool isArray, const std::string& name, const Call& call) {
        if (!isArray) {
            child.set_name(json_string(name));
        }
        call();
    }

    std::mt19937 random_;
};

TEST(TextWriter, WritesWhatTheNodesWouldWrite) {
    for (const libjson::text_units units : {libjson::text_units::utf8, libjson::text_units::bytes}) {
        const libjson::text_units before = libjson::get_text_units();
        libjson::set_text_units(units);
        const unsigned seeds = IsLongRun() ? 400 : kIsSample ? 25 : 100;
        for (unsigned seed = 0; seed < seeds; ++seed) {
            const auto layout =
                seed % 2 == 0 ? libjson::text_layout::compact : libjson::text_layout::formatted;
            const auto [nodes, writer] = Twins(seed).Make(layout);
            ASSERT_EQ(nodes, writer) << "seed " << seed;
        }
        libjson::set_text_units(before);
    }
}

TEST(TextWriter, HandsOverFullPagesAndTheRest) {
    Pages pages;
    libjson::text_writer writer(pages);
    const std::string value(100'000, 'v');
    writer.open_array();
    writer.text(value);
    EXPECT_GE(pages.lengths.size(), 6U);
    writer.end();
    writer.finish();
    EXPECT_EQ(pages.all, "[\"" + value + "\"]");
    for (std::size_t i = 0; i + 1 < pages.lengths.size(); ++i) {
        EXPECT_GT(pages.lengths[i], 15'000U);
        EXPECT_LE(pages.lengths[i], 16'384U);
    }
}

/// Every place in a page is the end of it once.
TEST(TextWriter, EscapesAtTheEndOfPages) {
    for (std::size_t length = 16'300; length < 16'400; ++length) {
        const std::string plain(length, 'p');
        const auto [node, text] = [&] {
            JSONNode array(JSON_ARRAY);
            array.push_back(JSONNode("", plain + "\n\xC3\xBC\xF0\x9F\x98\x80" + plain));
            return std::pair(array.write(),
                             TextOf(libjson::text_layout::compact, [&](libjson::text_writer& writer) {
                                 writer.open_array();
                                 writer.text(plain + "\n\xC3\xBC\xF0\x9F\x98\x80" + plain);
                                 writer.end();
                             }));
        }();
        ASSERT_EQ(node, text);
        ASSERT_EQ(text, "[\"" + plain + "\\n\\u00FC\\uD83D\\uDE00" + plain + "\"]");
    }
}

class Broken final : public libjson::text_sink {
public:
    void write(const char* /*text*/, std::size_t /*length*/) override {
        throw std::runtime_error("the disk is full");
    }
};

TEST(TextWriter, LetsThroughWhatTheSinkThrows) {
    Broken broken;
    libjson::text_writer writer(broken);
    writer.open_array();
    EXPECT_THROW(writer.text(std::string(20'000, 'x')), std::runtime_error);
    libjson::text_writer other(broken);
    other.open_array();
    other.end();
    EXPECT_THROW(other.finish(), std::runtime_error);
}

}  // namespace

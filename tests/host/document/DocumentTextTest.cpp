#include <EmbeddedModel.h>
#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>
#include <libjson.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::ordered_json;

/// Documents with UTF-8 as their text units, as the program writes them by default.
class DocumentTextTest : public testing::Test {
protected:
    std::string Write() {
        JsonSerializer serializer(project.get());
        const auto text = serializer.GetJson().write();
        return {text.c_str(), text.size()};
    }

    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"Demo", L"/nowhere");
};

TEST_F(DocumentTextTest, AValueOfTenMegabytesComesBackWhole) {
    // Every printable character, control characters and characters of two, three and four bytes, over and
    // over.
    std::string piece;
    for (char character = 1; character < 0x7F; ++character) {
        piece += character;
    }
    piece += "\x7F\xC3\xBC\xE4\xB8\xAD\xF0\x9F\x94\xA7";
    std::string value;
    while (value.size() < std::size_t{10} * 1024 * 1024) {
        value += piece;
    }
    project->setMetadataValue(L"Log", OuString(value.c_str(), 0));
    const std::string text = Write();
    EXPECT_TRUE(std::ranges::all_of(text, [](char byte) { return byte >= 0x20 && byte < 0x7F; }));
    const ordered_json document = ordered_json::parse(text);
    // Not EXPECT_EQ, which would print twenty megabytes.
    EXPECT_TRUE(document["metaData"]["Log"]["value"].get_ref<const std::string&>() == value);
}

TEST_F(DocumentTextTest, NamesOfEveryShapeComeBackTheSame) {
    const std::vector<std::string> names = {"",
                                            " ",
                                            "a/b\\c\"d\"",
                                            "\b\t\n\f\r\x01\x1F\x7F",
                                            "K\xC3\xBChlk\xC3\xB6rper",
                                            "\xE4\xB8\xAD\xE6\x96\x87",
                                            "\xF0\x9F\x94\xA7",
                                            "{\"id\":\"1\"}"};
    for (const std::string& name : names) {
        korvane::CreateObject(*project, CAE_PART, OuString(name.c_str(), 0))
            ->setMetadataValue(OuString(name.c_str(), 0), OuString(name.c_str(), 0));
    }
    const ordered_json document = ordered_json::parse(Write());
    ASSERT_EQ(document["children"].size(), names.size());
    for (std::size_t index = 0; index < names.size(); ++index) {
        const ordered_json& child = document["children"][index];
        // An object without a name is called "model".
        EXPECT_EQ(child["name"], names[index].empty() ? "model" : names[index]);
        EXPECT_EQ(child["metaData"][names[index]]["value"], names[index]);
    }
}

}  // namespace

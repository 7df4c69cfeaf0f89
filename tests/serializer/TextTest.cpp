#include <gtest/gtest.h>
#include <korvanejson/JsonSerializer.h>

#include <nlohmann/json.hpp>
#include <string>

#include "support/Documents.h"
#include "support/ModelBuilders.h"

namespace {

/// Documents of a host that has UTF-8 as its code page and sets nothing.
class Text : public testing::Test {
protected:
    /// The document read by a JSON parser that knows nothing of this library.
    nlohmann::json Read() {
        const std::string text = JsonSerializer(&*project_).GetJsonString().GetAnsiBuffer();
        SaveDocument(text);
        EXPECT_EQ(text.find_first_of("\n\t\x7F\x80\xC3"), std::string::npos) << "the text is plain ASCII";
        return nlohmann::json::parse(text);
    }

    TestProject project_;
};

}  // namespace

TEST_F(Text, NamesComeBackAsTheyWere) {
    for (const wchar_t* name :
         {L"Tr\u00E4ger", L"\u4E2D\u6587 \u03A9", L"\U0001F697 crash", L"a\"b'c", L"a/b\\c",
          L"\x01\x02\t\r\n\b\f\x1F\x7F", L"\u2028\u2029\uFEFF\uFFFD", L" ", L"null"}) {
        project_->setName(name);
        EXPECT_EQ(Read()["name"], OuString(name).GetAnsiBuffer());
    }
}

TEST_F(Text, EmptyTextsComeBackEmptyWhereTheFormatAllowsThem) {
    project_->setName(L"");
    project_->setCreatedDate(L"");
    project_->setMetadataValue(L"", L"");
    const nlohmann::json document = Read();
    EXPECT_EQ(document["name"], "model");
    EXPECT_EQ(document["createdDate"], "");
    EXPECT_EQ(document["metaData"][""]["value"], "");
}

TEST_F(Text, FileNameThatIsNoUtf8SurvivesByteByByte) {
    const std::string name = "scan\xE9\xFF.dat";
    project_.AddFile(*project_, OuString(name.c_str(), 0), CAE_FILE_REPORT);
    const std::string text = JsonSerializer(&*project_).GetJsonString().GetAnsiBuffer();
    EXPECT_NE(text.find(R"("name":"scan\uDCE9\uDCFF.dat")"), std::string::npos) << text;
    const JSONNode document = libjson::parse(text.c_str());
    EXPECT_EQ(std::string(document.find("files")->begin()->find("name")->as_string().c_str()), name);
}

TEST_F(Text, MetadataValueOfTenMegabytesComesBackWhole) {
    std::wstring value;
    while (value.size() < 10'000'000) {
        value += L"line \u00E4 \"quoted\" \\ / \t\n";
    }
    project_->setMetadataValue(L"Log", value.c_str());
    EXPECT_TRUE(Read()["metaData"]["Log"]["value"] == OuString(value.c_str()).GetAnsiBuffer());
}

TEST_F(Text, EveryValueIsAString) {
    SetMetadata(*project_, L"Mass", L"1250", L"kg", L"double");
    project_.AddFile(project_.Add(CAE_PART, L"7"), L"8", CAE_FILE_CAD);
    std::vector<nlohmann::json> open{Read()};
    int strings = 0;
    while (!open.empty()) {
        const nlohmann::json value = open.back();
        open.pop_back();
        ASSERT_TRUE(value.is_structured() || value.is_string()) << value;
        strings += value.is_string() ? 1 : 0;
        if (value.is_structured()) {
            open.insert(open.end(), value.begin(), value.end());
        }
    }
    EXPECT_EQ(strings, 5 + 1 + 2 + 5 + 5 + 4);
}

#include <gtest/gtest.h>

#include <functional>

#include "host/page/Base64.h"
#include "host/page/PageText.h"
#include "host/page/Pictures.h"
#include "support/TemporaryDirectory.h"

namespace host {
namespace {

std::string TextOf(const std::function<void(PageText&)>& add) {
    std::string text;
    const WritePiece put = [&text](std::string_view piece) {
        text += piece;
        return std::error_code();
    };
    PageText page(put);
    add(page);
    page.Finish();
    return text;
}

std::string JsonOf(std::string_view utf8) {
    return TextOf([utf8](PageText& page) { page.AddJson(utf8); });
}

std::string HtmlOf(std::string_view utf8) {
    return TextOf([utf8](PageText& page) { page.AddHtml(utf8); });
}

TEST(PageText, JsonEndsNeitherItsStringNorItsElement) {
    EXPECT_EQ(JsonOf("</script>&<!--"), R"("\u003c/script\u003e\u0026\u003c!--")");
    EXPECT_EQ(JsonOf("a\"b\\c"), R"("a\"b\\c")");
    EXPECT_EQ(JsonOf(std::string_view("\0\n\x1F", 3)), R"("\u0000\u000a\u001f")");
    EXPECT_EQ(JsonOf("\xE2\x80\xA8\xE2\x80\xA9"), R"("\u2028\u2029")");
    EXPECT_EQ(JsonOf("K\xC3\xBChl \xF0\x9F\x94\xA5"), "\"K\xC3\xBChl \xF0\x9F\x94\xA5\"");
}

TEST(PageText, BytesThatAreNotUtf8AreReplaced) {
    EXPECT_EQ(JsonOf("a\xE9\"\xC3"), "\"a\xEF\xBF\xBD\\\"\xEF\xBF\xBD\"");
    EXPECT_EQ(HtmlOf("\xFF<"), "\xEF\xBF\xBD&lt;");
}

TEST(PageText, HtmlEndsNeitherItsElementNorItsAttribute) {
    EXPECT_EQ(HtmlOf("</title>&\"'"), "&lt;/title&gt;&amp;&quot;'");
    EXPECT_EQ(HtmlOf(std::string_view("\0", 1)), "\xEF\xBF\xBD");
}

TEST(PageText, MembersHaveCommasBetweenThem) {
    EXPECT_EQ(TextOf([](PageText& page) {
                  page.AddName("id", true);
                  page.AddNumber(-7);
                  page.AddMember("name", "x");
                  page.AddMember("key", "");
              }),
              R"("id":-7,"name":"x")");
}

TEST(PageText, EndsWhereTheOutputTakesNoMore) {
    const WritePiece put = [](std::string_view) {
        return std::make_error_code(std::errc::no_space_on_device);
    };
    PageText page(put);
    page.Add("x");
    try {
        page.Finish();
        FAIL() << "nothing was thrown";
    } catch (const PageText::Ended& end) {
        EXPECT_EQ(end.error, std::errc::no_space_on_device);
    }
}

TEST(Base64, WritesWhatBrowsersRead) {
    EXPECT_EQ(Base64(""), "");
    EXPECT_EQ(Base64("f"), "Zg==");
    EXPECT_EQ(Base64("fo"), "Zm8=");
    EXPECT_EQ(Base64("foo"), "Zm9v");
    EXPECT_EQ(Base64("foobar"), "Zm9vYmFy");
    EXPECT_EQ(Base64("\xFF\xFE\xFD"), "//79");
}

TEST(Pictures, AreRecognisedByNameAndContent) {
    const TemporaryDirectory folder;
    const auto typeOf = [&folder](const std::string& name, std::string_view content) {
        return PictureType(folder.Write(name, content));
    };
    EXPECT_EQ(typeOf("a.png", "\x89PNG\r\n\x1A\n..."), "image/png");
    EXPECT_EQ(typeOf("a.PNG", "\x89PNG\r\n\x1A\n..."), "image/png");
    // The content decides between pictures.
    EXPECT_EQ(typeOf("b.png", "\xFF\xD8\xFF\xE0"), "image/jpeg");
    EXPECT_EQ(typeOf("a.gif", "GIF89a"), "image/gif");
    EXPECT_EQ(typeOf("a.webp", "RIFF1234WEBPVP8"), "image/webp");
    EXPECT_EQ(typeOf("a.bmp", "BM1234"), "image/bmp");
    EXPECT_EQ(typeOf("a.svg", "\xEF\xBB\xBF<?xml version='1.0'?>\n<svg>"), "image/svg+xml");
    EXPECT_EQ(typeOf("c.png", "<svg>"), "");
    EXPECT_EQ(typeOf("b.svg", "<html>"), "");
    EXPECT_EQ(typeOf("a.txt", "GIF89a"), "");
    EXPECT_EQ(PictureType(folder / "missing.png"), "");
}

}  // namespace
}  // namespace host

#include <gtest/gtest.h>

#include "Texts.h"

#if defined(_WIN32)
#include <windows.h>
#endif

// The text units of a process that sets none, where the code page is UTF-8: everywhere but on Windows, and
// there by this program's manifest.

namespace {

TEST(DefaultTextUnits, AreUtf8WhereTheCodePageIs) {
#if defined(_WIN32)
    ASSERT_EQ(GetACP(), 65001U) << "this program's manifest asks for UTF-8";
#endif
    EXPECT_EQ(libjson::get_text_units(), libjson::text_units::utf8);
    const std::string document = R"({"Pr\u00FCfstand":"\u20AC"})";
    const JSONNode read = Parse(document);
    EXPECT_EQ(NameOf(read[0]),
              "Pr\xC3\xBC"
              "fstand");
    EXPECT_EQ(ValueOf(read[0]), "\xE2\x82\xAC");
    EXPECT_EQ(Write(read), document);
}

}  // namespace

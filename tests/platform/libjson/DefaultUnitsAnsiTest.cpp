#include <gtest/gtest.h>
#include <windows.h>

#include "Texts.h"

// The text units of a process that sets none, on a Western Windows and without a manifest that asks for
// UTF-8.

namespace {

TEST(DefaultTextUnits, AreBytesWhereTheCodePageIsNotUtf8) {
    ASSERT_EQ(GetACP(), 1252U) << "this test is for a Western system, without a manifest that says UTF-8";
    EXPECT_EQ(libjson::get_text_units(), libjson::text_units::bytes);
    const std::string document = R"({"Pr\u00FCfstand":"\u0080"})";
    const JSONNode read = Parse(document);
    EXPECT_EQ(NameOf(read[0]),
              "Pr\xFC"
              "fstand");
    EXPECT_EQ(ValueOf(read[0]), "\x80");
    EXPECT_EQ(Write(read), document);
}

}  // namespace

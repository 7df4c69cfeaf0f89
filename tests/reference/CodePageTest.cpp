#include <OuString.h>
#include <gtest/gtest.h>

#include "ExpectNoDifference.h"

TEST(ReadingsInACodePageThatLacksCharacters, AreTheSame) {
#if !defined(_WIN32)
    // Windows gives this program the system's own.
    ASSERT_TRUE(OuSetAnsiCodePage("CP932"));
#endif
    ASSERT_STREQ(OuString(L"\u00FC\u0E01").GetAnsiBuffer() + 1, "?");
    ExpectNoDifference(KORVANEJSON_COMPARISON_SECONDS);
}

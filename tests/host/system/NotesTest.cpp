#include <gtest/gtest.h>

#include "host/HostSupport.h"
#include "host/system/Notes.h"

namespace host {
namespace {

TEST(Excerpt, QuotesAndCutsLongTexts) {
    EXPECT_EQ(Excerpt("a\nb"), "'a\\nb'");
    EXPECT_EQ(Excerpt(std::string(80, 'x')), "'" + std::string(80, 'x') + "'");
    EXPECT_EQ(Excerpt(std::string(81, 'x')), "'" + std::string(80, 'x') + "...'");
    // The cut falls into a character, which goes as a whole.
    EXPECT_EQ(Excerpt(std::string(79, 'x') + "\xC3\xBC"), "'" + std::string(79, 'x') + "...'");
}

TEST(Notes, CountEveryThingAndNameTheFirstTenOfAKind) {
    Notes notes;
    for (int number = 0; number < 12; ++number) {
        notes.Add("of one kind", [&] { return std::to_string(number); });
        notes.AddName("of another", number < 3 ? "a" : "b");
    }
    EXPECT_EQ(notes.CountOf("of one kind"), 12U);
    EXPECT_EQ(notes.CountOf("of a third"), 0U);
    KeptConsole kept;
    notes.Say("w", kept.console);
    EXPECT_EQ(kept.said,
              "korvane-json: w: of one kind (12): 0; 1; 2; 3; 4; 5; 6; 7; 8; 9; and 2 more\n"
              "korvane-json: w: of another (12): 'a' 3 times; 'b' 9 times\n");
    kept.said.clear();
    notes.SayWithoutNames("w", kept.console);
    EXPECT_EQ(kept.said, "korvane-json: w: of one kind (12): 0; 1; 2; 3; 4; 5; 6; 7; 8; 9; and 2 more\n");
}

}  // namespace
}  // namespace host

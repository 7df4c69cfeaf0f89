#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "Round.h"
#include "Show.h"
#include "support/LongRun.h"
#include "support/ModelBuilders.h"
#include "support/TextUnits.h"

// The text that the library writes without nodes beside the text of the node that it makes.

namespace {

const std::unique_ptr<Reading> library = MakeLibraryReading();
const std::unique_ptr<Reading> byNodes = MakeNodeTextReading();

constexpr libjson::text_units kBothUnits[] = {libjson::text_units::utf8, libjson::text_units::bytes};

/// Random model, odd answers and exceptions, with nothing done to them but writing.
Round RandomTextRound(std::uint64_t seed) {
    Round round = RandomRound(seed);
    for (Action& action : round.actions) {
        action.kind = Action::Kind::kDocumentText;
    }
    return round;
}

/// Run, which is another function in a test.
std::vector<std::string> LinesOf(const Round& round, Reading& reading) {
    return Run(round, reading);
}

std::size_t LongestOf(const std::vector<std::string>& lines) {
    std::size_t longest = 0;
    for (const std::string& line : lines) {
        longest = std::max(longest, line.size());
    }
    return longest;
}

/// The calls and the texts of random rounds are those of the other reading, in each export mode.
void ExpectSameRounds(Reading& reading, Reading& other) {
    const bool isShort = kIsSanitized && !IsLongRun();
    const std::uint64_t rounds = isShort ? 150 : 400;
    const std::size_t moreThanAFewPages = isShort ? 50'000 : 100'000;
    int thrown = 0;
    std::size_t longest = 0;
    std::set<std::wstring> modes;
    for (std::uint64_t seed = 1; seed <= rounds; ++seed) {
        const Round round = RandomTextRound(seed);
        const std::vector<std::string> lines = LinesOf(round, reading);
        ASSERT_EQ(lines, LinesOf(round, other)) << Describe(Shrink(round, reading, other));
        thrown += std::ranges::count(lines, "throws std::bad_alloc") > 0 ? 1 : 0;
        longest = std::max(longest, LongestOf(lines));
        for (const Action& action : round.actions) {
            modes.insert(action.mode.GetBuffer());
        }
    }
    EXPECT_GT(thrown, isShort ? 3 : 10);
    EXPECT_GT(longest, moreThanAFewPages);
    for (const wchar_t* const mode : {L"", L"PROJECT", L"STUDY"}) {
        EXPECT_TRUE(modes.contains(mode));
    }
}

/// Any bytes but NUL, which ends a text of the object model; mostly few.
OuString RandomName(Random& random) {
    std::string bytes;
    for (int left = random.Below(random.OneIn(20) ? 700 : 40); left > 0; --left) {
        bytes += static_cast<char>(random.OneIn(3) ? random.Between(0x01, 0xFF) : random.Between('a', 'z'));
    }
    return OuString(bytes.c_str(), 0);
}

void ExpectTextOfNodes(CAEObject* object, const OuString& mode) {
    const OuString text = library->DocumentText(object, mode);
    EXPECT_EQ(ShowText(text), ShowText(byNodes->DocumentText(object, mode)));
}

}  // namespace

TEST(DocumentText, IsThatOfTheNodesAndAsksTheSameInTheSameOrder) {
    ExpectSameRounds(*library, *byNodes);
}

TEST(DocumentText, IsTheSameFromWriteDocumentAndAsksTheSameInTheSameOrder) {
    ExpectSameRounds(*MakeExchangeTextReading(), *byNodes);
    ExpectSameRounds(*MakeExchangeTextReading(true), *MakeNodeTextReading(true));
}

TEST(DocumentText, IsThatOfTheNodesForNamesAndValuesOfAnyBytes) {
    TestProject project;
    Random random(1);
    for (int entry = 0; entry < 3000; ++entry) {
        const OuString name = RandomName(random);
        const OuString value = RandomName(random);
        SetMetadata(*project, name, value, RandomName(random));
    }
    for (const libjson::text_units units : kBothUnits) {
        const UnitsFor test(units);
        ExpectTextOfNodes(&*project, L"");
    }
}

TEST(DocumentText, IsThatOfTheNodesWithoutAnObject) {
    ExpectTextOfNodes(nullptr, L"STUDY");
}

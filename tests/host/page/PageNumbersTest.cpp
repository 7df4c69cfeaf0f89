#include <EmbeddedModel.h>
#include <gtest/gtest.h>

#include <string>

#include "host/page/PageNumbers.h"

namespace host {
namespace {

using Numbers = std::vector<PageNumbers::Number>;

class PageNumbersTest : public testing::Test {
protected:
    void Add(const OuString& name, const OuString& value, const OuString& unit) {
        CAEObject& part = *korvane::CreateObject(*project, CAE_PART, L"part");
        part.setMetadataValue(name, value);
        korvane::SetMetadataUnit(part, name, unit);
    }
    /// The numbers of each entry, in the order in which they were added.
    std::vector<Numbers> Read() const {
        PageRooms rooms;
        const PageContent content = ListPageContent(*project, {}, rooms);
        PageNumbers numbers(content);
        std::vector<Numbers> all;
        for (const PageObject& shown : content.objects) {
            for (const korvane::MetadataValues& entry : korvane::GetMetadata(*shown.object)) {
                all.push_back(numbers.Of(entry));
            }
        }
        return all;
    }

    std::unique_ptr<CAEProject> project = korvane::CreateProject(L"Demo", L"/nowhere");
};

TEST_F(PageNumbersTest, NumbersWithOneUnitStandInTheirTextsAlone) {
    Add(L"Mass", L"2", L"kg");
    Add(L"mass", L"-3e2", L"kg");
    Add(L"Mass", L"heavy", L"g");
    Add(L"Length", L"2000", L"mm");
    EXPECT_EQ(Read(), (std::vector<Numbers>{{}, {}, {}, {}}));
}

TEST_F(PageNumbersTest, AUnitInTheValueIsReadFromThere) {
    Add(L"Mass", L"2 kg", L"");
    Add(L"Mass", L"3 kg", L"kg");
    Add(L"Mass", L"4 kg", L"mm");
    EXPECT_EQ(Read(), (std::vector<Numbers>{{{"kg", 2}}, {{"kg", 3}}, {}}));
}

TEST_F(PageNumbersTest, ANumberComesInEachUnitOfItsName) {
    Add(L"Size", L"3", L"kB");
    Add(L"SIZE", L"2000", L"B");
    Add(L"Size", L"4", L"things");
    Add(L"Size", L"5", L"");
    Add(L"Room", L"6", L"kB");
    EXPECT_EQ(Read(), (std::vector<Numbers>{{{"kB", 3}, {"B", 3000}}, {{"B", 2000}, {"kB", 2}}, {}, {}, {}}));
}

#if !defined(_WIN32)
TEST_F(PageNumbersTest, UnitsAreConvertedAsPlotsConvertThem) {
    Add(L"Mass", L"300", L"g");
    Add(L"Mass", L"2", L"kg");
    Add(L"Mass", L"2", L"MPa");
    Add(L"Time", L"0", L"s");
    Add(L"Time", L"4", L"Hz");
    Add(L"Heat", L"20", L"degC");
    Add(L"Heat", L"0", L"K");
    const std::vector<Numbers> read = Read();
    EXPECT_EQ(read[0], (Numbers{{"g", 300}, {"kg", 0.3}}));
    EXPECT_EQ(read[1], (Numbers{{"kg", 2}, {"g", 2000}}));
    EXPECT_EQ(read[2], Numbers());
    // One divided by it has no end.
    EXPECT_EQ(read[3], Numbers());
    EXPECT_EQ(read[4], (Numbers{{"Hz", 4}, {"s", 0.25}}));
    EXPECT_EQ(read[5], (Numbers{{"degC", 20}, {"K", 293.15}}));
    EXPECT_EQ(read[6], (Numbers{{"K", 0}, {"degC", -273.15}}));
}
#endif

TEST_F(PageNumbersTest, RareUnitsAreLeftAlone) {
    for (int count = 0; count < 12; ++count) {
        Add(L"Size", L"1", L"kB");
        Add(L"Size", L"1", L"B");
        Add(L"Size", L"1", OuString((L"things" + std::to_wstring(count / 2)).c_str()));
    }
    Add(L"Size", L"1", L"MB");
    Add(L"Size", L"1", L"GB");
    const std::vector<Numbers> read = Read();
    EXPECT_EQ(read[0], (Numbers{{"kB", 1}, {"B", 1000}}));
    EXPECT_EQ(read[36], (Numbers{{"MB", 1}, {"B", 1e6}, {"kB", 1e3}}));
    EXPECT_EQ(read[37], (Numbers{{"GB", 1}, {"B", 1e9}, {"kB", 1e6}}));
}

}  // namespace
}  // namespace host

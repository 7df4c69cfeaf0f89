#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string_view>

#include "CopyRun.h"
#include "PlainRun.h"
#include "Pool.h"

namespace {

using namespace libjson::detail;

TEST(Masks, AreTheSameWithAndWithoutWideInstructions) {
    std::mt19937 random(7);
    char block[kBlock];
    for (int round = 0; round < 100000; ++round) {
        const bool mostlyPlain = round % 2 == 0;
        for (char& character : block) {
            const auto value = random();
            character = static_cast<char>(mostlyPlain && value % 16 != 0 ? 'a' + value % 26 : value % 256);
        }
        ASSERT_EQ(ReadMask(block), MaskPortable<EndsReadRun>(block));
        ASSERT_EQ(WriteMask(block), MaskPortable<EndsWriteRun>(block));
        char other[kBlock];
        std::memcpy(other, block, kBlock);
        const std::size_t place = random() % kBlock;
        other[place] = 'b';
        ASSERT_EQ(DifferenceMask(block, other), DifferenceMaskPortable(block, other));
        ASSERT_EQ(DifferenceMask(block, other), std::uint32_t{block[place] != 'b'} << place);
    }
}

TEST(Masks, HaveOneBitPerCharacter) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = static_cast<unsigned char>(byte);
        for (std::size_t place = 0; place < kBlock; ++place) {
            char block[kBlock];
            std::memset(block, 'x', kBlock);
            block[place] = static_cast<char>(character);
            ASSERT_EQ(ReadMask(block), std::uint32_t{EndsReadRun(character)} << place);
            ASSERT_EQ(WriteMask(block), std::uint32_t{EndsWriteRun(character)} << place);
        }
    }
}

TEST(CopyRun, CopiesAndLooksAtNoCharacterBehindTheRun) {
    std::mt19937 random(8);
    for (int round = 0; round < 100000; ++round) {
        const std::size_t length = random() % (kBlock + 1);
        // Memory that ends with the run, for the sanitizers.
        const auto run = std::make_unique<char[]>(length);
        char padded[kBlock] = {};
        for (std::size_t index = 0; index < length; ++index) {
            const auto value = random();
            run[index] = static_cast<char>(value % 8 != 0 ? 'a' + value % 26 : value / 8 % 256);
            padded[index] = run[index];
        }
        char copy[kBlock];
        ASSERT_EQ(CopyRun(copy, run.get(), length), FirstOf(MaskPortable<EndsWriteRun>(padded), length));
        ASSERT_EQ(std::string_view(copy, length), std::string_view(padded, length));
    }
}

TEST(Masks, AreCutToTheFirstCharacters) {
    EXPECT_EQ(FirstOf(0xFFFF, 0), 0U);
    EXPECT_EQ(FirstOf(0xFFFF, 3), 7U);
    EXPECT_EQ(FirstOf(0xFFFF, 16), 0xFFFFU);
    EXPECT_EQ(FirstOf(0xFFFF, 100), 0xFFFFU);
}

TEST(CellClasses, AreTheSmallestThatHoldTheBytes) {
    for (std::size_t bytes = 1; bytes <= kLargestCell; ++bytes) {
        const CellClass cellClass = CellClassFor(bytes);
        ASSERT_LT(cellClass, kCellClasses);
        ASSERT_GE(kCellSizes[cellClass], bytes);
        ASSERT_TRUE(cellClass == 0 || kCellSizes[cellClass - 1] < bytes) << bytes;
    }
}

}  // namespace

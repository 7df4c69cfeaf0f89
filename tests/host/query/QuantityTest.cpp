#include <gtest/gtest.h>

#include "host/query/Quantity.h"
#include "host/query/Units.h"
#include "support/LongRun.h"

namespace host {
namespace {

void ExpectQuantity(const char* text, double value, const char* unit) {
    const std::optional<Quantity> quantity = ParseQuantity(text);
    ASSERT_TRUE(quantity) << text;
    EXPECT_EQ(quantity->value, value) << text;
    EXPECT_EQ(quantity->unit, unit) << text;
}

TEST(Quantity, HasANumberAndAUnit) {
    ExpectQuantity("2", 2, "");
    ExpectQuantity(" +2.5 kg ", 2.5, "kg");
    ExpectQuantity("-1.5e3kg", -1500, "kg");
    ExpectQuantity(".5 N/mm^2", 0.5, "N/mm^2");
    ExpectQuantity("5%", 5, "%");
    ExpectQuantity("5 1/s", 5, "1/s");
    ExpectQuantity("20 \u00B0C", 20, "\u00B0C");
}

TEST(Quantity, DatesVersionsAndNamesAreTexts) {
    for (const char* const text : {"", "kg", "2026-03-01", "2026-03-01T10:00:00Z", "1.2.3", "1/2", "1,5",
                                   "inf", "nan", "-", "+", "--1", "1e999", "0x10 kg;"}) {
        const std::optional<Quantity> quantity = ParseQuantity(text);
        if (quantity && std::string(text) == "0x10 kg;") {
            // Zero of something: no number in another base.
            EXPECT_EQ(quantity->value, 0);
            continue;
        }
        EXPECT_FALSE(quantity) << text;
    }
}

TEST(Quantity, AValueHasItsUnitBesideItOrBehindItsNumber) {
    EXPECT_EQ(ParseValue("2", "kg")->unit, "kg");
    EXPECT_EQ(ParseValue("2 kg", "")->unit, "kg");
    EXPECT_EQ(ParseValue("2 kg", "kg")->unit, "kg");
    EXPECT_EQ(ParseValue("2 kg", " kg ")->unit, "kg");
    EXPECT_EQ(ParseValue("2 kg", " ")->unit, "kg");
    EXPECT_FALSE(ParseValue("2 kg", "mm"));
    EXPECT_FALSE(ParseValue("steel", "kg"));
}

TEST(Quantity, NumbersReadBackTheSame) {
    EXPECT_EQ(FormatNumber(0.1), "0.1");
    EXPECT_EQ(FormatNumber(1e21), "1e+21");
    EXPECT_EQ(FormatNumber(-3), "-3");
}

TEST(Units, EveryUnitIsItself) {
    Units units;
    EXPECT_EQ(units.Convert(2, "things", "things"), 2);
    EXPECT_EQ(units.Convert(2, "", ""), 2);
    EXPECT_FALSE(units.Convert(2, "things", "kg"));
    EXPECT_FALSE(units.Convert(2, "", "kg"));
    EXPECT_FALSE(units.Convert(2, "kg", ""));
}

TEST(Units, BytesAreConvertedEverywhere) {
    Units units;
    EXPECT_EQ(units.Convert(2, "MB", "B"), 2e6);
    EXPECT_EQ(units.Convert(2, "KiB", "B"), 2048);
    EXPECT_FALSE(units.Convert(2, "B", "kg"));
}

TEST(Units, AConversionIsANumberWithAnEnd) {
    Units units;
    EXPECT_FALSE(units.Convert(1e308, "TB", "B"));
    EXPECT_EQ(units.Convert(1e308, "B", "TB"), 1e296);
#if !defined(_WIN32)
    EXPECT_FALSE(units.Convert(1e308, "km", "mm"));
    EXPECT_FALSE(units.Convert(0, "s", "Hz"));
    EXPECT_FALSE(units.Convert(-1, "mW", "lg(re 1 mW)")) << "no number at all";
    EXPECT_DOUBLE_EQ(*units.Convert(4, "s", "Hz"), 0.25);
#endif
}

TEST(Units, ThoseOfTheDatabaseAreConverted) {
    Units units;
    const std::optional<double> grams = units.Convert(2, "kg", "g");
#if defined(_WIN32)
    EXPECT_FALSE(grams);
#else
    ASSERT_TRUE(grams);
    EXPECT_DOUBLE_EQ(*grams, 2000);
    EXPECT_DOUBLE_EQ(*units.Convert(1, "MPa", "N/mm^2"), 1);
    EXPECT_DOUBLE_EQ(*units.Convert(0, "\u00B0C", "K"), 273.15);
    EXPECT_FALSE(units.Convert(1, "kg", "mm"));
    EXPECT_FALSE(units.Convert(1, "nonsense", "mm"));
#endif
}

TEST(Units, TheCommonUnitIsTheOneThatMostCanBeConvertedTo) {
    Units units;
    EXPECT_EQ(CommonUnit({}, units), "");
    EXPECT_EQ(CommonUnit({"things", "kB", "B", "MB", "B"}, units), "B");
    EXPECT_EQ(CommonUnit({"things", "things", "things", "kB", "B"}, units), "things");
    EXPECT_EQ(CommonUnit({"things", "things", "kB", "MB", "B"}, units), "kB");
    EXPECT_EQ(CommonUnit({"", "", "kB"}, units), "");
    // With the square of them, it would not come to an end.
    constexpr int kMany = kIsSanitized ? 1000 : 20'000;
    std::vector<std::string> different;
    for (int number = 0; number < kMany; ++number) {
        different.push_back("unit" + std::to_string(number));
    }
    EXPECT_EQ(CommonUnit(different, units), "unit0");
}

}  // namespace
}  // namespace host

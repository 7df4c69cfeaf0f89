#include "StatedUnits.h"

#include <algorithm>
#include <array>

#include "host/system/Text.h"

namespace host {
namespace {

/// As files write them; case says more about the writer than about the unit.
constexpr std::array<std::string_view, 66> kUnits = {
    "N",   "MN",  "KN",  "LBF", "KIP",  "DAN",    "KGF",   "MM",     "CM",      "DM",     "M",
    "KM",  "UM",  "IN",  "FT",  "MIL",  "G",      "KG",    "T",      "TON",     "TONNE",  "TONS",
    "MG",  "MGG", "LB",  "LBM", "SLUG", "SLINCH", "S",     "SEC",    "MS",      "US",     "MIN",
    "H",   "PA",  "KPA", "MPA", "GPA",  "PSI",    "KSI",   "BAR",    "J",       "KJ",     "MJ",
    "NMM", "NM",  "W",   "KW",  "MW",   "HZ",     "K",     "C",      "DEGC",    "DEGF",   "F",
    "RAD", "DEG", "A",   "V",   "INCH", "INCHES", "METER", "SECOND", "SECONDS", "NEWTON", "POUND",
};

constexpr std::array<std::string_view, 4> kHeadings = {"UNITS", "UNIT SYSTEM", "UNITS SYSTEM",
                                                       "SYSTEM OF UNITS"};

constexpr std::string_view kSeparators = " \t,;/";

bool IsUnit(std::string_view word) {
    return std::ranges::find(kUnits, ToUpperAscii(word)) != kUnits.end();
}

/// What is behind "Units:", "Units =" or "Unit system:"; empty if the text begins otherwise.
std::string_view ListBehindWord(std::string_view text) {
    constexpr std::size_t kLongestWords = 16;
    const std::size_t mark = text.find_first_of(":=");
    if (mark > kLongestWords) {
        return {};
    }
    const std::string words = ToUpperAscii(Trim(text.substr(0, mark)));
    const bool isHeading = std::ranges::find(kHeadings, words) != kHeadings.end();
    return isHeading ? text.substr(mark + 1) : std::string_view();
}

}  // namespace

std::string UnitList(std::string_view list, std::size_t fewest) {
    std::string units;
    std::size_t count = 0;
    for (list = Trim(list); !list.empty();) {
        const std::size_t end = std::min(list.find_first_of(kSeparators), list.size());
        if (!IsUnit(list.substr(0, end))) {
            return {};
        }
        units += (units.empty() ? "" : ", ") + std::string(list.substr(0, end));
        ++count;
        list.remove_prefix(std::min(list.find_first_not_of(kSeparators, end), list.size()));
    }
    return count >= fewest ? units : std::string();
}

std::string StatedUnits(std::string_view text) {
    constexpr std::size_t kLongestStatement = 256;
    if (text.size() > kLongestStatement) {
        return {};
    }
    text = Trim(text.substr(std::min(text.find_first_not_of("*$# \t"), text.size())));
    std::string_view list = Trim(ListBehindWord(text));
    if (list.ends_with('.')) {
        list.remove_suffix(1);
    }
    if (ToUpperAscii(list) == "SI") {
        return "SI";
    }
    if (std::string units = UnitList(list, 2); !units.empty()) {
        return units;
    }
    const std::size_t open = text.rfind('(');
    const std::size_t close = text.find(')', open == std::string_view::npos ? 0 : open);
    return open != std::string_view::npos && close != std::string_view::npos
               ? UnitList(text.substr(open + 1, close - open - 1), 3)
               : std::string();
}

}  // namespace host

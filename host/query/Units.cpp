#include "Units.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <string_view>

namespace host {
namespace {

struct ByteUnit {
    std::string_view name;
    double bytes;
};

// UDUNITS does not know the byte: its B is another unit.
constexpr ByteUnit kByteUnits[] = {
    {"B", 1},
    {"kB", 1e3},
    {"KB", 1e3},
    {"MB", 1e6},
    {"GB", 1e9},
    {"TB", 1e12},
    {"KiB", 1024.},
    {"MiB", 1024. * 1024},
    {"GiB", 1024. * 1024 * 1024},
    {"TiB", 1024. * 1024 * 1024 * 1024},
};

const ByteUnit* FindByteUnit(std::string_view name) {
    const auto* const found = std::ranges::find(kByteUnits, name, &ByteUnit::name);
    return found == std::end(kByteUnits) ? nullptr : found;
}

/// Keeps the most frequent units, of equally frequent ones the first.
void KeepMostFrequent(std::vector<std::string>& units, const std::map<std::string, std::size_t>& counts) {
    constexpr std::size_t kMostTried = 8;
    std::ranges::stable_sort(units, std::ranges::greater(),
                             [&](const std::string& unit) { return counts.at(unit); });
    units.resize(std::min(units.size(), kMostTried));
}

}  // namespace

std::optional<double> Units::Convert(double value, const std::string& from, const std::string& to) {
    if (from == to) {
        return value;
    }
    const UnitConversion& conversion = Find(from, to);
    if (!conversion) {
        return std::nullopt;
    }
    // Beyond the largest number, or no number, like the logarithm of what is negative: nothing compares.
    const double converted = conversion(value);
    return std::isfinite(converted) ? std::optional(converted) : std::nullopt;
}

const UnitConversion& Units::Find(const std::string& from, const std::string& to) {
    const auto known = conversions_.find({from, to});
    if (known != conversions_.end()) {
        return known->second;
    }
    UnitConversion conversion;
    const ByteUnit* const left = FindByteUnit(from);
    const ByteUnit* const right = FindByteUnit(to);
    if (left != nullptr && right != nullptr) {
        conversion = [left, right](double value) { return value * left->bytes / right->bytes; };
    } else if (left == nullptr && right == nullptr && !from.empty() && !to.empty()) {
        if (database_ == nullptr) {
            database_ = std::make_unique<UnitDatabase>();
        }
        conversion = database_->Find(from, to);
    }
    return conversions_.emplace(std::pair(from, to), std::move(conversion)).first->second;
}

std::vector<std::string> UsualUnits(const std::map<std::string, std::size_t>& counts) {
    std::vector<std::string> units;
    units.reserve(counts.size());
    for (const auto& [unit, count] : counts) {
        units.push_back(unit);
    }
    KeepMostFrequent(units, counts);
    return units;
}

std::string CommonUnit(const std::vector<std::string>& given, Units& units) {
    std::map<std::string, std::size_t> counts;
    std::vector<std::string> tried;
    for (const std::string& unit : given) {
        if (++counts[unit] == 1) {
            tried.push_back(unit);
        }
    }
    KeepMostFrequent(tried, counts);
    std::string common;
    std::size_t most = 0;
    for (const std::string& unit : tried) {
        std::size_t convertible = 0;
        for (const auto& [other, count] : counts) {
            convertible += units.Convert(1, other, unit) ? count : 0;
        }
        if (convertible > most) {
            most = convertible;
            common = unit;
        }
    }
    return common;
}

}  // namespace host

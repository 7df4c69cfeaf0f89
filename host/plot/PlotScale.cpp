#include "PlotScale.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace host {
namespace {

constexpr double kMostSteps = 6;

/// The power of ten as the compiler would read it, which the mathematical functions of different systems do
/// not promise.
double PowerOfTen(int exponent) {
    const std::string text = "1e" + std::to_string(exponent);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// The largest whole exponent whose power of ten is not larger than the value, which is positive.
int ExponentOf(double value) {
    int exponent = static_cast<int>(std::floor(std::log10(value)));
    while (PowerOfTen(exponent) > value) {
        --exponent;
    }
    while (PowerOfTen(exponent + 1) <= value) {
        ++exponent;
    }
    return exponent;
}

struct Step {
    double value;
    /// Of its first digit.
    int exponent;
};

/// The smallest step of 1, 2 or 5 times a power of ten that is not smaller than the value.
Step StepFor(double value) {
    const int exponent = ExponentOf(value);
    for (const int digit : {1, 2, 5}) {
        if (digit * PowerOfTen(exponent) >= value) {
            return {digit * PowerOfTen(exponent), exponent};
        }
    }
    return {PowerOfTen(exponent + 1), exponent + 1};
}

/// Gives values that are all but the same some room.
void Widen(double& smallest, double& largest) {
    const double size = std::max(std::abs(smallest), std::abs(largest));
    constexpr double kSmallest = 1e-150;
    constexpr double kResolution = 1e-9;
    if (size < kSmallest) {
        smallest = -1;
        largest = 1;
    } else if (largest - smallest < size * kResolution) {
        smallest -= size / 10;
        largest += size / 10;
    }
}

}  // namespace

std::string FormatFixed(double value, int digits) {
    std::array<char, 512> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, digits);
    const std::string text(buffer.data(), result.ptr);
    const bool isZero = text.find_first_not_of("-0.") == std::string::npos;
    return isZero && text.starts_with('-') ? text.substr(1) : text;
}

PlotScale::PlotScale(double smallest, double largest) {
    Widen(smallest, largest);
    // Zero is worth a little empty room.
    if (smallest > 0 && smallest < (largest - smallest) / 2) {
        smallest = 0;
    } else if (largest < 0 && -largest < (largest - smallest) / 2) {
        largest = 0;
    }
    const Step step = StepFor((largest - smallest) / kMostSteps);
    const double first = std::floor(smallest / step.value);
    const double last = std::ceil(largest / step.value);
    const double size = std::max(std::abs(first), std::abs(last)) * step.value;
    constexpr double kShortest = 0.01;
    constexpr double kLongest = 100'000;
    if (size >= kLongest || size < kShortest) {
        exponent_ = static_cast<int>(std::floor(ExponentOf(size) / 3.0)) * 3;
    }
    const int digits = std::max(0, exponent_ - step.exponent);
    // No number where the range is beyond what a number can be.
    const double span = last - first;
    const std::size_t count = span >= 0 && span <= 2 * kMostSteps ? static_cast<std::size_t>(span) + 1 : 0;
    for (std::size_t index = 0; index < count; ++index) {
        const double number = first + static_cast<double>(index);
        ticks_.push_back(number * step.value);
        // Divided by a power of ten, or multiplied: both are exact where the power is.
        const double shown =
            exponent_ < 0 ? ticks_.back() * PowerOfTen(-exponent_) : ticks_.back() / PowerOfTen(exponent_);
        labels_.push_back(FormatFixed(shown, digits));
    }
}

}  // namespace host

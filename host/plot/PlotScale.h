#pragma once

#include <string>
#include <vector>

namespace host {

/// The scale of an axis: from the first to the last tick, in even steps of 1, 2 or 5 times a power of ten.
class PlotScale {
public:
    /// A scale that has room for all values from the smallest to the largest. Both are finite and no larger
    /// than kLargestPlotted. Zero is on it if it is near.
    PlotScale(double smallest, double largest);

    double First() const { return ticks_.front(); }
    double Last() const { return ticks_.back(); }
    const std::vector<double>& Ticks() const { return ticks_; }
    /// The texts beside the ticks: their values divided by the power of ten of the exponent.
    const std::vector<std::string>& Labels() const { return labels_; }
    /// A multiple of three; 0 where the numbers are short without it.
    int Exponent() const { return exponent_; }

private:
    std::vector<double> ticks_;
    std::vector<std::string> labels_;
    int exponent_ = 0;
};

/// The number with so many digits after the point, without a sign at zero.
std::string FormatFixed(double value, int digits);

}  // namespace host

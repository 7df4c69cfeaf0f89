#include "Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace bench {
namespace {

template <typename... Values>
std::string Format(const char* format, const Values&... values) {
    const int size = std::snprintf(nullptr, 0, format, values...);
    std::string text(static_cast<std::size_t>(size) + 1, '\0');
    std::snprintf(text.data(), text.size(), format, values...);
    text.pop_back();
    return text;
}

double NanosecondsPerObject(const Measurement& measurement, const Samples& samples) {
    return samples.Median() * 1e9 / measurement.objects;
}

/// The time per object beside that of the same command on the fewest objects.
double GrowthOf(const Measurement& measurement, const std::vector<Measurement>& all) {
    const auto first = std::ranges::find(all, measurement.what, &Measurement::what);
    return NanosecondsPerObject(measurement, measurement.command) /
           NanosecondsPerObject(*first, first->command);
}

}  // namespace

double Samples::Median() const {
    std::vector<double> sorted = seconds;
    std::ranges::sort(sorted);
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Samples::Spread() const {
    double largest = 0;
    for (const double one : seconds) {
        largest = std::max(largest, std::abs(one - Median()) / Median());
    }
    return largest;
}

std::string TableOf(const std::vector<Measurement>& measurements) {
    std::string text =
        "| what | objects | command, ns per object | floor, ns per object | command / floor | grown | "
        "command, MiB | floor, MiB |\n|---|--:|--:|--:|--:|--:|--:|--:|\n";
    for (const Measurement& one : measurements) {
        text += Format("| %s | %d | %.0f ± %.0f %% | %.0f ± %.0f %% | %.2f | %.2f | %.0f | %.0f |\n",
                       one.what.c_str(), one.objects, NanosecondsPerObject(one, one.command),
                       one.command.Spread() * 100, NanosecondsPerObject(one, one.floor),
                       one.floor.Spread() * 100, one.command.Median() / one.floor.Median(),
                       GrowthOf(one, measurements), one.command.peakMiB, one.floor.peakMiB);
    }
    return text;
}

std::string JsonOf(const std::vector<Measurement>& measurements) {
    const auto list = [](const Samples& samples) {
        std::string text;
        for (const double seconds : samples.seconds) {
            text += (text.empty() ? "" : ", ") + Format("%.6f", seconds);
        }
        return text;
    };
    std::string text = "[";
    for (const Measurement& one : measurements) {
        text += text.size() == 1 ? "\n" : ",\n";
        text += Format(R"(  {"what": "%s", "objects": %d, "command": {"seconds": [%s], "peak_mib": %.1f}, )"
                       R"("floor": {"seconds": [%s], "peak_mib": %.1f}})",
                       one.what.c_str(), one.objects, list(one.command).c_str(), one.command.peakMiB,
                       list(one.floor).c_str(), one.floor.peakMiB);
    }
    return text + "\n]\n";
}

}  // namespace bench

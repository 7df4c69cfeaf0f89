#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct PlotAxis {
    std::string name;
    /// Empty for plain numbers.
    std::string unit;
};

struct PlotPoint {
    double x = 0;
    double y = 0;
    /// What is shown when the pointer rests on the point; may have several lines.
    std::string label;
    /// The number of its group.
    std::size_t group = 0;
};

/// Points in a plane. Texts are UTF-8 and may contain anything.
struct Plot {
    std::string title;
    PlotAxis x;
    PlotAxis y;
    /// Finite, and no larger than kLargestPlotted in either direction.
    std::vector<PlotPoint> points = {};
    /// The heading of the legend, and the names of the groups in it. There is no legend without groups.
    std::string groupedBy = {};
    std::vector<std::string> groups = {};
};

inline constexpr double kLargestPlotted = 1e150;

/// Where a plot is shown.
enum class PlotPlace {
    /// In a file of its own, with colours for light and dark surroundings.
    File,
    /// Within a page, which gives the colour of texts and lines (the style property `color`) and the
    /// background. There are no styles in the plot.
    Page,
};

/// The plot as SVG. The same plot gives the same bytes everywhere.
std::string DrawPlot(const Plot& plot, PlotPlace place);

}  // namespace host

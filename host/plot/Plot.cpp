#include "Plot.h"

#include <algorithm>
#include <array>

#include "PlotScale.h"
#include "SvgText.h"
#include "host/directory/OwnFiles.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr double kWidth = 820;
constexpr double kHeight = 500;
constexpr double kRow = 20;
constexpr double kGap = 8;
constexpr double kRadius = 4.5;
/// What a column of a terminal is wide in the font of the plot, about.
constexpr double kColumn = 7.5;
constexpr std::size_t kMostColumns = 28;

/// Seen well on white and on black.
constexpr std::array<std::string_view, 8> kColours = {"#2f7fd1", "#d9662b", "#2f9e5b", "#a85ad6",
                                                      "#c9484f", "#8a8230", "#2297a5", "#c4569b"};
/// Groups differ in shape too, for people who do not see the colours.
constexpr std::size_t kShapes = 5;

constexpr std::string_view kStyle =
    "<style>:root{color:#1f2328}.paper{fill:#fff}"
    "@media(prefers-color-scheme:dark){:root{color:#e6edf3}.paper{fill:#14181d}}</style>\n";

/// `Mass [kg]`, `Stress [10⁶ Pa]`
std::string AxisLabel(const PlotAxis& axis, int exponent) {
    std::string unit = exponent == 0 ? "" : PowerText(exponent);
    unit += (unit.empty() || axis.unit.empty() ? "" : " ") + axis.unit;
    return axis.name + (unit.empty() ? "" : " [" + unit + "]");
}

class Drawing {
public:
    Drawing(const Plot& plot, PlotPlace place);
    std::string Draw();

private:
    static PlotScale ScaleOf(const Plot& plot, double PlotPoint::*coordinate);
    double LegendWidth() const;
    double AcrossOf(double x) const;
    double DownOf(double y) const;
    void Text(double across, double down, std::string_view more, std::string_view text);
    void Open();
    void DrawAxes();
    void DrawMarker(double across, double down, std::size_t group);
    void DrawPoints();
    void DrawLegend();

    const Plot& plot_;
    PlotPlace place_;
    PlotScale x_;
    PlotScale y_;
    double left_ = 0;
    double right_ = 0;
    double top_ = 0;
    double bottom_ = 0;
    std::string svg_;
};

PlotScale Drawing::ScaleOf(const Plot& plot, double PlotPoint::*coordinate) {
    const auto [smallest, largest] = std::ranges::minmax_element(
        plot.points,
        [&](const PlotPoint& one, const PlotPoint& other) { return one.*coordinate < other.*coordinate; });
    return plot.points.empty() ? PlotScale(0, 1) : PlotScale((*smallest).*coordinate, (*largest).*coordinate);
}

double Drawing::LegendWidth() const {
    if (plot_.groups.empty()) {
        return 0;
    }
    std::size_t columns = std::min(DisplayWidth(Printable(std::string_view(plot_.groupedBy))), kMostColumns);
    for (const std::string& group : plot_.groups) {
        columns = std::max(columns, std::min(DisplayWidth(Printable(std::string_view(group))), kMostColumns));
    }
    return static_cast<double>(columns) * kColumn + 4 * kGap;
}

Drawing::Drawing(const Plot& plot, PlotPlace place)
    : plot_(plot), place_(place), x_(ScaleOf(plot, &PlotPoint::x)), y_(ScaleOf(plot, &PlotPoint::y)) {
    std::size_t digits = 0;
    for (const std::string& label : y_.Labels()) {
        digits = std::max(digits, label.size());
    }
    left_ = static_cast<double>(digits) * kColumn + kRow + 3 * kGap;
    right_ = kWidth - LegendWidth() - 3 * kGap;
    top_ = plot.title.empty() ? 2 * kGap : 2 * kRow + kGap;
    bottom_ = kHeight - 3 * kRow;
}

double Drawing::AcrossOf(double x) const {
    return left_ + (x - x_.First()) / (x_.Last() - x_.First()) * (right_ - left_);
}

double Drawing::DownOf(double y) const {
    return bottom_ - (y - y_.First()) / (y_.Last() - y_.First()) * (bottom_ - top_);
}

void Drawing::Text(double across, double down, std::string_view more, std::string_view text) {
    svg_ += "<text x=\"" + SvgNumber(across) + "\" y=\"" + SvgNumber(down) + "\"" + std::string(more) + ">" +
            SvgLine(text) + "</text>\n";
}

void Drawing::Open() {
    const std::string size = SvgNumber(kWidth) + " " + SvgNumber(kHeight);
    const std::string about =
        plot_.y.name + " over " + plot_.x.name + ", " + FormatCount(plot_.points.size(), "point", "points");
    if (place_ == PlotPlace::File) {
        svg_ += kPlotBeginning;
    }
    svg_ += "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + size + "\" width=\"" +
            SvgNumber(kWidth) + "\" height=\"" + SvgNumber(kHeight) +
            "\" font-family=\"system-ui, sans-serif\" font-size=\"13\" fill=\"currentColor\" role=\"img\" "
            "aria-label=\"" +
            SvgLine(about) + "\"" + (place_ == PlotPlace::File ? " color=\"#1f2328\">\n" : ">\n");
    if (place_ == PlotPlace::File) {
        svg_ += kStyle;
        svg_ += "<rect class=\"paper\" width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
    }
    if (!plot_.title.empty()) {
        Text((left_ + right_) / 2, kRow + kGap, " font-size=\"16\" text-anchor=\"middle\"",
             Shortened(plot_.title, 3 * kMostColumns));
    }
}

void Drawing::DrawAxes() {
    const auto line = [this](double x1, double y1, double x2, double y2) {
        svg_ += "<path d=\"M" + SvgNumber(x1) + " " + SvgNumber(y1) + "L" + SvgNumber(x2) + " " +
                SvgNumber(y2) + "\"/>\n";
    };
    svg_ += "<g stroke=\"currentColor\" stroke-opacity=\"0.18\">\n";
    for (const double tick : x_.Ticks()) {
        line(AcrossOf(tick), top_, AcrossOf(tick), bottom_);
    }
    for (const double tick : y_.Ticks()) {
        line(left_, DownOf(tick), right_, DownOf(tick));
    }
    svg_ += "</g>\n<g stroke=\"currentColor\" stroke-opacity=\"0.7\">\n";
    line(left_, bottom_, right_, bottom_);
    line(left_, top_, left_, bottom_);
    svg_ += "</g>\n<g text-anchor=\"middle\">\n";
    for (std::size_t index = 0; index < x_.Ticks().size(); ++index) {
        Text(AcrossOf(x_.Ticks()[index]), bottom_ + kRow, "", x_.Labels()[index]);
    }
    Text((left_ + right_) / 2, bottom_ + 2 * kRow + kGap / 2, " font-weight=\"600\"",
         AxisLabel(plot_.x, x_.Exponent()));
    const double middle = (top_ + bottom_) / 2;
    Text(kRow, middle,
         " font-weight=\"600\" transform=\"rotate(-90 " + SvgNumber(kRow) + " " + SvgNumber(middle) + ")\"",
         AxisLabel(plot_.y, y_.Exponent()));
    svg_ += "</g>\n<g text-anchor=\"end\">\n";
    for (std::size_t index = 0; index < y_.Ticks().size(); ++index) {
        Text(left_ - kGap, DownOf(y_.Ticks()[index]) + kGap / 2, "", y_.Labels()[index]);
    }
    svg_ += "</g>\n";
}

void Drawing::DrawMarker(double across, double down, std::size_t group) {
    const auto at = [&](double right, double below) {
        return SvgNumber(across + right * kRadius) + " " + SvgNumber(down + below * kRadius);
    };
    const std::string colour = " fill=\"" + std::string(kColours.at(group % kColours.size())) + "\"/>";
    switch (group % kShapes) {
        case 0:
            svg_ += "<circle cx=\"" + SvgNumber(across) + "\" cy=\"" + SvgNumber(down) + "\" r=\"" +
                    SvgNumber(kRadius) + "\"" + colour;
            return;
        case 1:
            svg_ += "<path d=\"M" + at(-0.9, -0.9) + "L" + at(0.9, -0.9) + "L" + at(0.9, 0.9) + "L" +
                    at(-0.9, 0.9) + "Z\"" + colour;
            return;
        case 2:
            svg_ += "<path d=\"M" + at(0, -1.2) + "L" + at(1.1, 0.9) + "L" + at(-1.1, 0.9) + "Z\"" + colour;
            return;
        case 3:
            svg_ += "<path d=\"M" + at(0, -1.3) + "L" + at(1.3, 0) + "L" + at(0, 1.3) + "L" + at(-1.3, 0) +
                    "Z\"" + colour;
            return;
        default:
            svg_ += "<path d=\"M" + at(0, 1.2) + "L" + at(1.1, -0.9) + "L" + at(-1.1, -0.9) + "Z\"" + colour;
    }
}

void Drawing::DrawPoints() {
    svg_ += "<g fill-opacity=\"0.8\">\n";
    for (const PlotPoint& point : plot_.points) {
        svg_ += "<g><title>" + SvgLines(point.label) + "</title>";
        DrawMarker(AcrossOf(point.x), DownOf(point.y), point.group);
        svg_ += "</g>\n";
    }
    svg_ += "</g>\n";
}

void Drawing::DrawLegend() {
    if (plot_.groups.empty()) {
        return;
    }
    const double across = right_ + 3 * kGap;
    double down = top_ + kGap;
    Text(across, down, " font-weight=\"600\"", Shortened(plot_.groupedBy, kMostColumns));
    const auto room = static_cast<std::size_t>((kHeight - down) / kRow) - 2;
    const std::size_t shown = plot_.groups.size() > room ? room - 1 : plot_.groups.size();
    for (std::size_t group = 0; group < shown; ++group) {
        down += kRow;
        svg_ += "<g><title>" + SvgLine(plot_.groups[group]) + "</title>";
        DrawMarker(across + kRadius, down - kRadius, group);
        Text(across + 2 * kGap, down, "", Shortened(plot_.groups[group], kMostColumns));
        svg_ += "</g>\n";
    }
    if (shown < plot_.groups.size()) {
        Text(across + 2 * kGap, down + kRow, "",
             "and " + std::to_string(plot_.groups.size() - shown) + " more");
    }
}

std::string Drawing::Draw() {
    Open();
    DrawAxes();
    DrawPoints();
    DrawLegend();
    svg_ += "</svg>\n";
    return std::move(svg_);
}

}  // namespace

std::string DrawPlot(const Plot& plot, PlotPlace place) {
    return Drawing(plot, place).Draw();
}

}  // namespace host

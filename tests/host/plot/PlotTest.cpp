#include <gtest/gtest.h>

#include <limits>

#include "host/directory/OwnFiles.h"
#include "host/plot/Plot.h"
#include "host/plot/PlotScale.h"

namespace host {
namespace {

using Labels = std::vector<std::string>;

TEST(PlotScale, HasEvenStepsFromBelowTheSmallestToAboveTheLargest) {
    EXPECT_EQ(PlotScale(1, 9).Labels(), (Labels{"0", "2", "4", "6", "8", "10"}));
    EXPECT_EQ(PlotScale(-3, 2).Labels(), (Labels{"-3", "-2", "-1", "0", "1", "2"}));
    EXPECT_EQ(PlotScale(100, 101).Labels(), (Labels{"100.0", "100.2", "100.4", "100.6", "100.8", "101.0"}));
    EXPECT_EQ(PlotScale(0, 0.3).Labels(), (Labels{"0.00", "0.05", "0.10", "0.15", "0.20", "0.25", "0.30"}));
    EXPECT_EQ(PlotScale(-10, -1).First(), -10);
    EXPECT_EQ(PlotScale(-10, -1).Last(), 0);
}

TEST(PlotScale, LongNumbersHaveAPowerOfTenApart) {
    const PlotScale large(0, 5e6);
    EXPECT_EQ(large.Exponent(), 6);
    EXPECT_EQ(large.Labels(), (Labels{"0", "1", "2", "3", "4", "5"}));
    const PlotScale small(0, 0.0003);
    EXPECT_EQ(small.Exponent(), -6);
    EXPECT_EQ(small.Labels(), (Labels{"0", "50", "100", "150", "200", "250", "300"}));
    EXPECT_EQ(PlotScale(0, 50000).Exponent(), 0);
}

TEST(PlotScale, HasRoomForOneValueAndForTheLargest) {
    EXPECT_LT(PlotScale(5, 5).First(), 5);
    EXPECT_GT(PlotScale(5, 5).Last(), 5);
    EXPECT_EQ(PlotScale(0, 0).Labels(), (Labels{"-1.0", "-0.5", "0.0", "0.5", "1.0"}));
    for (const auto& [smallest, largest] :
         {std::pair(-kLargestPlotted, kLargestPlotted), std::pair(1e15, 1e15 + 1),
          std::pair(std::numeric_limits<double>::denorm_min(), 1e-300), std::pair(-1e-7, 1e150)}) {
        const PlotScale scale(smallest, largest);
        EXPECT_LE(scale.First(), smallest);
        EXPECT_GE(scale.Last(), largest);
        EXPECT_LE(scale.Ticks().size(), 9U);
        EXPECT_LT(scale.First(), scale.Last());
        for (const std::string& label : scale.Labels()) {
            EXPECT_LE(label.size(), 20U) << label;
        }
    }
}

Plot TwoPoints() {
    return {.title = "Brackets",
            .x = {"Mass", "kg"},
            .y = {"Stress", "Pa"},
            .points = {{0, 0, "left", 0}, {10, 2e6, "right", 1}},
            .groupedBy = "Solver",
            .groups = {"CalculiX", "Nastran"}};
}

std::size_t CountIn(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(Plot, PutsPointsAtTheirPlaces) {
    const std::string svg = DrawPlot(TwoPoints(), PlotPlace::File);
    const auto has = [&](std::string_view part) { return svg.find(part) != std::string::npos; };
    // The corners of the area, in which the lines of the axes end.
    EXPECT_TRUE(has("<path d=\"M66.5 440L704 440\"/>")) << svg;
    EXPECT_TRUE(has("<title>left</title><circle cx=\"66.5\" cy=\"440\" r=\"4.5\" fill=\"#2f7fd1\"/>")) << svg;
    EXPECT_TRUE(has("<title>right</title><path d=\"M699.95 43.95L708.05 43.95L708.05 52.05L699.95 52.05Z\""))
        << svg;
    EXPECT_TRUE(has(">Mass [kg]<"));
    EXPECT_TRUE(has(">Stress [10\u2076 Pa]<"));
    EXPECT_TRUE(has(">Brackets<"));
    EXPECT_TRUE(has(">Solver<"));
    EXPECT_TRUE(has(">Nastran<"));
    EXPECT_TRUE(svg.starts_with(kPlotBeginning));
    EXPECT_EQ(svg, DrawPlot(TwoPoints(), PlotPlace::File));
}

TEST(Plot, InAPageHasNoStylesAndNoBackground) {
    const std::string svg = DrawPlot(TwoPoints(), PlotPlace::Page);
    EXPECT_TRUE(svg.starts_with("<svg "));
    EXPECT_EQ(svg.find("style"), std::string::npos);
    EXPECT_EQ(svg.find("<rect"), std::string::npos);
    EXPECT_EQ(svg.find(" color="), std::string::npos);
    EXPECT_NE(svg.find("currentColor"), std::string::npos);
}

TEST(Plot, EscapesAllTexts) {
    Plot plot = TwoPoints();
    const std::string bad = "<script>\"&'\x01\xFF\uFFFE";
    plot.title = plot.x.name = plot.y.unit = plot.groupedBy = plot.groups[0] = plot.points[0].label = bad;
    const std::string svg = DrawPlot(plot, PlotPlace::File);
    EXPECT_EQ(svg.find("<script"), std::string::npos);
    EXPECT_EQ(svg.find('\x01'), std::string::npos);
    EXPECT_EQ(svg.find('\xFF'), std::string::npos);
    EXPECT_EQ(CountIn(svg, "&lt;script&gt;&quot;&amp;'\\x01\\xFF\\uFFFE"), 8U) << svg;
}

TEST(Plot, ShortensLongNamesAndLegends) {
    Plot plot = TwoPoints();
    plot.groups.clear();
    for (int group = 0; group < 100; ++group) {
        plot.groups.push_back(std::string(200, 'x') + std::to_string(group));
    }
    const std::string svg = DrawPlot(plot, PlotPlace::File);
    EXPECT_NE(svg.find(">" + std::string(27, 'x') + "\u2026</text>"), std::string::npos);
    EXPECT_NE(svg.find(">and 81 more<"), std::string::npos) << svg;
}

TEST(Plot, WithoutPointsOrGroupsIsStillAPlot) {
    const std::string svg = DrawPlot({.title = "", .x = {"a", ""}, .y = {"b", ""}}, PlotPlace::File);
    EXPECT_NE(svg.find(">a</text>"), std::string::npos);
    EXPECT_TRUE(svg.ends_with("</svg>\n"));
}

}  // namespace
}  // namespace host

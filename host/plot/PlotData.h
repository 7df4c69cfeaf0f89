#pragma once

#include <CAEObject.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Plot.h"
#include "host/query/Condition.h"
#include "host/query/Field.h"
#include "host/system/Notes.h"

namespace host {

/// What is to be plotted.
struct PlotRequest {
    Field x;
    Field y;
    std::optional<Field> by;
    /// Conditions that the objects must meet.
    std::vector<Condition> conditions;
    std::string title;
};

struct PlotData {
    Plot plot;
    /// How many objects that meet the conditions have a number on each axis.
    std::size_t withX = 0;
    std::size_t withY = 0;
    /// Values that were left out.
    Notes notes;
};

/// The points of the tree: the objects that have a number for x or y themselves, and for the other one
/// themselves or from the nearest object above that has one; so it is with the group. An axis has the unit
/// that most of its numbers can be converted to.
PlotData ReadPlotData(CAEObject& root, const PlotRequest& request);

/// The names of the metadata entries in the tree that are numbers.
std::vector<std::string> NamesOfNumbers(CAEObject& root);

}  // namespace host

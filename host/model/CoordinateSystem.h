#pragma once

#include <string_view>

#include "SolverModel.h"

namespace host {

/// What the coordinates of nodes are: three lengths, or lengths and angles in degrees.
enum class CoordinateSystem { Rectangular, Cylindrical, Spherical };

/// The system that Abaqus calls R, C or S; rectangular for any other name.
CoordinateSystem CoordinateSystemOf(std::string_view name);

/// The position in the rectangular system.
Position Rectangular(const Position& given, CoordinateSystem system);

}  // namespace host

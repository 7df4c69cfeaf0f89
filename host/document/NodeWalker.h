#pragma once

#include "exchange/NodeWalker.h"

/// The walker of the library, under names of the program.
namespace host {

using korvane::exchange::NodePlace;
using korvane::exchange::NodeVisit;
using korvane::exchange::SectionOf;
using korvane::exchange::SectionOrder;
using korvane::exchange::WalkNodes;
using korvane::exchange::WalkNodesToChange;

}  // namespace host

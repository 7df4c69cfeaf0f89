#pragma once

#include <CAEObject.h>

#include <string>

namespace host {

/// The studies in the tree, a line for each: path, identifier, solvers, how many iterations and files it has,
/// their size, and its description. Counts that the study's metadata do not give are those of what is below
/// it. The last line has the totals.
std::string ListStudies(CAEObject& root);

}  // namespace host

#pragma once

#include <filesystem>
#include <system_error>

#include "SolverModel.h"

namespace host {

/// Reads a file of solver input, with the files that it includes, or of a mesh.
///
/// `sink` gets the nodes and elements; it may be null. What it got before the reading stopped is no more than
/// the beginning: `model.gap` says whether something is missing. Damage is no error, but a gap. If the time
/// is over, there are no counts at all. An error means that the file itself cannot be read. Links are
/// followed; included files must be in the directory that the limits name. The depth of nesting needs no
/// stack.
std::error_code ReadModel(const std::filesystem::path& file, ModelSyntax syntax, const ModelLimits& limits,
                          SolverModelSink* sink, SolverModel& model);

}  // namespace host

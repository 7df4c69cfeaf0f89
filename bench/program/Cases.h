#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Inputs.h"

namespace bench {

/// A command with its floor. Both start from the same files, which `prepare` puts in place.
struct Case {
    std::string what;
    std::function<void()> prepare;
    std::vector<std::string> command;
    std::vector<std::string> floor;
    /// Compares the results; throws if they differ.
    std::function<void()> check;
};

/// Throws std::runtime_error.
std::vector<Case> MakeCases(const Programs& programs, const Inputs& inputs);

}  // namespace bench

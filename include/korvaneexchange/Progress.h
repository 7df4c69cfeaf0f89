#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>

#include "Export.h"

namespace korvane::exchange {

/// Where long work stands.
struct Progress {
    /// Objects and files so far.
    std::size_t objects = 0;
    /// How many there are altogether; 0 where that is not known.
    std::size_t total = 0;
    /// Bytes written so far, by WriteDocument.
    std::size_t bytes = 0;
};

/// Called now and then, between objects, on the thread that does the work. Returns false to stop it. What it
/// throws reaches the caller. It must not change the tree or the document.
using ProgressCallback = std::function<bool(const Progress& progress)>;

/// Thrown by a function that has nothing to return when its callback stopped it.
class KORVANEEXCHANGE_API Stopped : public std::runtime_error {
public:
    Stopped();
    ~Stopped() override;
};

}  // namespace korvane::exchange

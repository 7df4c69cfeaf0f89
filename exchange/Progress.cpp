#include <korvaneexchange/Progress.h>

namespace korvane::exchange {

Stopped::Stopped() : std::runtime_error("stopped by the progress callback") {}

Stopped::~Stopped() = default;

}  // namespace korvane::exchange

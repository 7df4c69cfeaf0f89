#include "Phase.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <new>
#include <utility>

namespace host {

Phase::Phase(Console& console, std::string what)
    : console_(console), what_(std::move(what)), begin_(console.Now()) {}

Phase::~Phase() {
    if (!console_.IsVerbose() || std::uncaught_exceptions() != exceptions_) {
        return;
    }
    const std::chrono::duration<double> taken = console_.Now() - begin_;
    std::array<char, 32> seconds{};
    std::snprintf(seconds.data(), seconds.size(), ": %.3f s", taken.count());
    try {
        console_.Detail(what_ + seconds.data());
    } catch (const std::bad_alloc&) {
        // The detail is lost, and the work goes on.
        static_cast<void>(0);
    }
}

}  // namespace host

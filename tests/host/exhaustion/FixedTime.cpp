#include <ctime>

/// The time of day does not pass in this program, so that runs at different times write the same bytes.
extern "C" std::time_t time(std::time_t* copy) noexcept {
    constexpr std::time_t kNow = 1'790'000'000;
    if (copy != nullptr) {
        *copy = kNow;
    }
    return kNow;
}

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace host {

/// What the program says to the user besides its output: messages and the progress of long work, on the
/// standard error.
class Console {
public:
    using Clock = std::chrono::steady_clock;

    /// On the standard error. Progress shows only when that is a terminal.
    Console();
    /// What is said goes to `write`, progress too if that is a terminal; `now` is asked for the time.
    Console(std::function<void(std::string_view)> write, bool isTerminal,
            std::function<Clock::time_point()> now);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Writes `korvane-json: TEXT` on a line of its own.
    void Say(std::string_view text);

    /// Tells how far the work is; cheap enough to be called for every file. Nothing shows within the first
    /// second of the work. A total of 0 means that it is not known.
    void ShowProgress(std::string_view what, std::uint64_t done, std::uint64_t total);
    /// Takes the bar from the terminal.
    void ClearProgress();

private:
    std::function<void(std::string_view)> write_;
    bool isTerminal_;
    std::function<Clock::time_point()> now_;
    bool isBarShown_ = false;
    Clock::time_point shown_;
    Clock::time_point start_;
};

/// The bar's text without its line: `Reading files [######------]  50 %  1200 of 2400`.
std::string ProgressText(std::string_view what, std::uint64_t done, std::uint64_t total);

}  // namespace host

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace host {

/// Messages to the user and the progress of long work, on the standard error.
class Console {
public:
    using Clock = std::chrono::steady_clock;

    /// Writes to the standard error. Progress is shown only if that is a terminal.
    Console();
    /// Writes messages to `write`, and progress too if `isTerminal`; `now` is asked for the time.
    Console(std::function<void(std::string_view)> write, bool isTerminal,
            std::function<Clock::time_point()> now);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Writes `korvane-json: TEXT` and a line feed. It needs no memory.
    void Say(std::string_view text);

    /// Shows how far the work is; cheap enough to be called for every file. Nothing is shown in the first
    /// second. A total of 0 means that it is not known.
    void ShowProgress(std::string_view what, std::uint64_t done, std::uint64_t total);
    /// Removes the bar from the terminal.
    void ClearProgress();

private:
    std::function<void(std::string_view)> write_;
    bool isTerminal_;
    std::function<Clock::time_point()> now_;
    bool isBarShown_ = false;
    Clock::time_point shown_;
    Clock::time_point start_;
};

/// The text of the bar: `Reading files [######------] 50 % 1200 of 2400`.
std::string ProgressText(std::string_view what, std::uint64_t done, std::uint64_t total);

}  // namespace host

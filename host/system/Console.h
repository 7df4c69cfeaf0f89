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

    enum class Verbosity { Quiet, Normal, Verbose };
    void SetVerbosity(Verbosity verbosity) { verbosity_ = verbosity; }
    Verbosity GetVerbosity() const { return verbosity_; }
    bool IsVerbose() const { return verbosity_ == Verbosity::Verbose; }

    /// Writes `korvane-json: TEXT` and a line feed: what went wrong, which is always said. It needs no
    /// memory.
    void Say(std::string_view text);
    /// The same for what was done, with counts and notes, which is not said if the verbosity is Quiet.
    void Note(std::string_view text);
    /// The same for what only those want to know who ask, which is said if the verbosity is Verbose.
    void Detail(std::string_view text);

    Clock::time_point Now() const { return now_(); }

    /// Shows how far the work is; cheap enough to be called for every file. Nothing is shown in the first
    /// second. A total of 0 means that it is not known.
    void ShowProgress(std::string_view what, std::uint64_t done, std::uint64_t total);
    /// Removes the bar from the terminal.
    void ClearProgress();

private:
    std::function<void(std::string_view)> write_;
    bool isTerminal_;
    std::function<Clock::time_point()> now_;
    Verbosity verbosity_ = Verbosity::Normal;
    bool isBarShown_ = false;
    Clock::time_point shown_;
    Clock::time_point start_;
};

/// The text of the bar: `Reading files [######------] 50 % 1200 of 2400`.
std::string ProgressText(std::string_view what, std::uint64_t done, std::uint64_t total);

}  // namespace host

#include "Console.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <utility>

#include "Terminal.h"

namespace host {
namespace {

constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kRefresh = std::chrono::milliseconds(100);

}  // namespace

Console::Console()
    // If a message cannot be written, there is no way to say so.
    : Console([](std::string_view text) { static_cast<void>(WriteAll(Stream::Error, text)); },
              IsTerminal(Stream::Error), &Clock::now) {}

Console::Console(std::function<void(std::string_view)> write, bool isTerminal,
                 std::function<Clock::time_point()> now)
    : write_(std::move(write)), isTerminal_(isTerminal), now_(std::move(now)), start_(now_()) {}

Console::~Console() {
    ClearProgress();
}

void Console::Say(std::string_view text) {
    ClearProgress();
    constexpr std::string_view kProgram = "korvane-json: ";
    std::string line;
    try {
        line.reserve(kProgram.size() + text.size() + 1);
    } catch (const std::bad_alloc&) {
        // Without memory the message comes in pieces, between which another program may write.
        write_(kProgram);
        write_(text);
        write_("\n");
        return;
    }
    line += kProgram;
    line += text;
    line += '\n';
    write_(line);
}

void Console::Note(std::string_view text) {
    if (verbosity_ != Verbosity::Quiet) {
        Say(text);
    }
}

void Console::Detail(std::string_view text) {
    if (IsVerbose()) {
        Say(text);
    }
}

void Console::ShowProgress(std::string_view what, std::uint64_t done, std::uint64_t total) {
    if (!isTerminal_ || verbosity_ == Verbosity::Quiet) {
        return;
    }
    const Clock::time_point now = now_();
    if (now - start_ < kPatience || (isBarShown_ && now - shown_ < kRefresh)) {
        return;
    }
    // To the beginning of the line; then the rest of the old text is erased.
    write_('\r' + ProgressText(what, done, total) + "\x1B[K");
    isBarShown_ = true;
    shown_ = now;
}

void Console::ClearProgress() {
    if (isBarShown_) {
        write_("\r\x1B[K");
        isBarShown_ = false;
    }
}

std::string ProgressText(std::string_view what, std::uint64_t done, std::uint64_t total) {
    std::string text(what);
    if (total == 0) {
        text += done == 0 ? " ..." : "  " + std::to_string(done);
        return text;
    }
    constexpr std::uint64_t kWidth = 30;
    const std::uint64_t reached = std::min(done, total);
    const auto filled = static_cast<std::size_t>(reached * kWidth / total);
    text += " [" + std::string(filled, '#') + std::string(kWidth - filled, '-') + "] ";
    std::array<char, 16> percent{};
    std::snprintf(percent.data(), percent.size(), "%3u %%  ", static_cast<unsigned>(reached * 100 / total));
    text += percent.data();
    text += std::to_string(reached) + " of " + std::to_string(total);
    return text;
}

}  // namespace host

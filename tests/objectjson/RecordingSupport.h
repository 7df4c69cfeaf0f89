#pragma once

#include <EmbeddedOddAnswers.h>
#include <EmbeddedRecording.h>

#include <functional>
#include <string>
#include <vector>

/// What the object model was asked, call by call.
using Notes = std::vector<std::string>;

inline Notes operator+(Notes left, const Notes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/// The notes, one a line.
inline std::string Lines(const Notes& notes) {
    std::string lines;
    for (const std::string& note : notes) {
        lines += note + "\n";
    }
    return lines;
}

/// What the object model is asked while the body runs, one note a line.
inline std::string RecordingOf(const std::function<void()>& body) {
    korvane::StartRecording();
    body();
    return Lines(korvane::TakeRecording());
}

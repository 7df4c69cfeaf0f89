#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "SolverInput.h"
#include "host/system/FileSystem.h"

/// Lines and words of solver input.
namespace host {

using Lines = std::vector<std::string_view>;

/// The lines of a sample without the blanks at their ends; a line that the sample cuts in front is left out.
Lines SplitLines(const FileSample& sample);

template <std::size_t Size>
bool IsOneOf(std::string_view word, const std::array<std::string_view, Size>& words) {
    return std::ranges::find(words, word) != words.end();
}

bool IsLetter(char character);

/// The first word of a line, up to a blank, comma, slash behind the first character, or equals sign; upper
/// case.
std::string FirstWord(std::string_view line);

/// The beginning of a line in upper case; what comes behind it can be long, and tells nothing about the
/// syntax.
std::string UpperBeginning(std::string_view line, std::size_t most);

/// Adds a file that the text draws in, as the text names it: without quotes, and with the slashes of this
/// host's paths.
void AddInclude(SolverInput& input, std::string_view text);

}  // namespace host

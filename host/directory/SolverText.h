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

/// The lines of a sample without the blanks at both ends. A line whose beginning the sample does not have is
/// left out.
Lines SplitLines(const FileSample& sample);

template <std::size_t Size>
bool IsOneOf(std::string_view word, const std::array<std::string_view, Size>& words) {
    return std::ranges::find(words, word) != words.end();
}

bool IsLetter(char character);

/// The first word of a line in upper case: up to a blank, a comma, an equals sign, or a slash that is not the
/// first character.
std::string FirstWord(std::string_view line);

/// The beginning of a line in upper case. The rest can be long, and says nothing about the syntax.
std::string UpperBeginning(std::string_view line, std::size_t most);

/// Adds a file that the text includes, under the name that the text gives it, without quotes and with
/// slashes.
void AddInclude(SolverInput& input, std::string_view text);

/// What a text is that starts a run, has a mesh, or has anything else.
InputRole RoleOf(bool isDeck, bool hasMesh, bool hasOther);

}  // namespace host

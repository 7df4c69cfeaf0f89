#include "NearestWord.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "Text.h"

namespace host {
namespace {

/// Longer texts are not misspelt words, and the distance takes time with the square of the length.
constexpr std::size_t kLongestWord = 40;
/// A text must be this long for it to count as the beginning of a word. An option begins with two dashes.
constexpr std::size_t kShortestBeginning = 2;

/// How many letters have to be changed, added, left out or exchanged with their neighbour.
std::size_t Distance(std::string_view left, std::string_view right) {
    std::vector<std::vector<std::size_t>> rows(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                rows[i][j] = i + j;
                continue;
            }
            const bool isEqual = left[i - 1] == right[j - 1];
            rows[i][j] =
                std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1, rows[i - 1][j - 1] + (isEqual ? 0 : 1)});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
                rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
            }
        }
    }
    return rows[left.size()][right.size()];
}

std::string_view WithoutDashes(std::string_view word) {
    word.remove_prefix(std::min(word.find_first_not_of('-'), word.size()));
    return word;
}

}  // namespace

std::string NearestWord(std::string_view text, const std::vector<std::string>& words) {
    if (text.size() > kLongestWord) {
        return {};
    }
    const std::string upper = ToUpperAscii(WithoutDashes(text));
    std::string nearest;
    std::size_t least = std::numeric_limits<std::size_t>::max();
    for (const std::string& word : words) {
        const std::string candidate = ToUpperAscii(WithoutDashes(word));
        const bool isBeginning = upper.size() >= kShortestBeginning && candidate.starts_with(upper);
        const std::size_t distance = isBeginning ? 0 : Distance(upper, candidate);
        // One letter in three may be wrong.
        if (distance <= std::max(upper.size(), candidate.size()) / 3 && distance < least) {
            least = distance;
            nearest = word;
        }
    }
    return nearest;
}

std::string DidYouMean(std::string_view word) {
    return word.empty() ? std::string() : "; did you mean " + Quoted(word) + "?";
}

}  // namespace host

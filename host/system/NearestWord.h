#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The word that the user most likely meant: one that begins as the text does, or that differs from it in few
/// letters. Letter case does not count. Empty if no word is near; of words that are equally near, the first.
std::string NearestWord(std::string_view text, const std::vector<std::string>& words);

/// `; did you mean 'WORD'?`, or nothing if there is no word.
std::string DidYouMean(std::string_view word);

}  // namespace host

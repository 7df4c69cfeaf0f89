#include "DottedKeys.h"

#include <algorithm>
#include <cstdint>

namespace host {
namespace {

constexpr int kMostDots = 60;

/// The end of the string that begins the text: with one quote on its line, with three anywhere.
std::size_t EndOfString(std::string_view text) {
    const char quote = text.front();
    const std::string_view three = text.substr(0, 3);
    const bool isLong = three == "\"\"\"" || three == "'''";
    const std::size_t size = isLong ? 3 : 1;
    for (std::size_t index = size; index < text.size(); ++index) {
        if (text[index] == '\\' && quote == '"') {
            ++index;
        } else if (text.substr(index).starts_with(text.substr(0, size)) || (!isLong && text[index] == '\n')) {
            return index + size;
        }
    }
    return text.size();
}

}  // namespace

bool HasKeyWithManyDots(std::string_view toml, TextPlace& place) {
    int dots = 0;
    place = {};
    for (std::size_t index = 0; index < toml.size();) {
        const char character = toml[index];
        std::size_t end = index + 1;
        if (character == '"' || character == '\'') {
            end = std::min(index + EndOfString(toml.substr(index)), toml.size());
        } else if (character == '#') {
            end = std::min(toml.find('\n', index), toml.size());
        } else if (character == '.') {
            if (++dots > kMostDots) {
                return true;
            }
        } else if (std::string_view("\n=,{}[]").find(character) != std::string_view::npos) {
            dots = 0;
        }
        place.line +=
            static_cast<std::uint32_t>(std::count(toml.begin() + static_cast<std::ptrdiff_t>(index),
                                                  toml.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
        index = end;
    }
    return false;
}

}  // namespace host

#include "TemporaryFile.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <tuple>

namespace host {
namespace {

constexpr std::string_view kBeginning = ".korvane-json-";
constexpr std::string_view kEnding = ".tmp";
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kLength =
    kBeginning.size() + 2 * std::tuple_size_v<decltype(RandomBytes())> + kEnding.size();

}  // namespace

std::filesystem::path NewTemporaryName(const std::filesystem::path& folder) {
    std::string name(kBeginning);
    for (const std::uint8_t byte : RandomBytes()) {
        name += kDigits[byte >> 4U];
        name += kDigits[byte & 0xFU];
    }
    name += kEnding;
    return folder / name;
}

bool IsTemporaryName(const std::filesystem::path& name) {
    const auto& text = name.native();
    const auto isAt = [&](std::size_t place, std::string_view part) {
        return std::equal(part.begin(), part.end(), text.begin() + static_cast<std::ptrdiff_t>(place));
    };
    return text.size() == kLength && isAt(0, kBeginning) && isAt(kLength - kEnding.size(), kEnding) &&
           std::all_of(text.begin() + kBeginning.size(), text.end() - kEnding.size(),
                       [](auto character) { return std::ranges::find(kDigits, character) != kDigits.end(); });
}

}  // namespace host

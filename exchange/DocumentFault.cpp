#include "DocumentFault.h"

#if __has_include(<parse_error.h>)
#include <parse_error.h>
#endif

#include <algorithm>
#include <charconv>

namespace korvane::exchange {
namespace {

/// Takes the prefix and the number after it off the text. False where it does not begin with these.
bool TakeNumber(std::string_view& text, std::string_view prefix, std::size_t& number) {
    if (!text.starts_with(prefix)) {
        return false;
    }
    const char* const end = text.data() + text.size();
    const auto [past, error] = std::from_chars(text.data() + prefix.size(), end, number);
    if (error != std::errc()) {
        return false;
    }
    text = std::string_view(past, static_cast<std::size_t>(end - past));
    return true;
}

/// The byte at which a line begins; the length of the text where it has fewer lines.
std::size_t StartOfLine(std::string_view text, std::size_t line) {
    std::size_t at = 0;
    for (; line > 1 && at < text.size(); ++at) {
        const bool isReturn = text[at] == '\r' && (at + 1 == text.size() || text[at + 1] != '\n');
        if (text[at] == '\n' || isReturn) {
            --line;
        }
    }
    return at;
}

}  // namespace

DocumentError FaultOf(const std::invalid_argument& error, std::string_view text) {
#if __has_include(<parse_error.h>)
    if (const auto* const fault = dynamic_cast<const libjson::parse_error*>(&error)) {
        return {fault->line(), fault->column(), fault->offset(), fault->reason()};
    }
#endif
    return FaultOfMessage(error.what(), text);
}

DocumentError FaultOfMessage(std::string_view message, std::string_view text) {
    std::string_view rest = message;
    std::size_t line = 0;
    std::size_t column = 0;
    if (TakeNumber(rest, "line ", line) && TakeNumber(rest, ", column ", column) && line > 0 && column > 0 &&
        rest.starts_with(": ")) {
        const std::size_t start = StartOfLine(text, line);
        // The library may have counted otherwise, and the place is to lie in the text.
        const std::size_t offset = start + std::min(column - 1, text.size() - start);
        return {line, column, offset, std::string(rest.substr(2))};
    }
    return {0, 0, 0, std::string(message)};
}

}  // namespace korvane::exchange

#include <cstddef>

#include "Scanner.h"
#include "TreeBuilder.h"
#include "libjson.h"
#include "parse_error.h"

namespace libjson::detail {
namespace {

/// Takes what a scanner reports when only the grammar matters.
struct NoTree {
    const char* GuessName(const char*, const char*) noexcept { return nullptr; }
    void MemberName(std::string_view) {}
    void Value(char, std::string_view) {}
    void Open(char) {}
    void Close() {}
};

template <class Sink>
Fault Scan(const json_string& text, Sink& sink) {
    return Scanner<Sink>(text, get_text_units(), sink).Scan();
}

[[noreturn]] void Throw(const json_string& text, const Fault& fault) {
    std::size_t line = 1;
    const char* lineStart = text.data();
    for (const char* at = text.data(); at != fault.at; ++at) {
        if (*at == '\n' || (*at == '\r' && at[1] != '\n')) {
            ++line;
            lineStart = at + 1;
        }
    }
    const auto bytesFrom = [&fault](const char* start) { return static_cast<std::size_t>(fault.at - start); };
    throw parse_error(line, bytesFrom(lineStart) + 1, bytesFrom(text.data()), fault.reason);
}

}  // namespace
}  // namespace libjson::detail

namespace libjson {

JSONNode parse(const json_string& text) {
    detail::Cells cells;
    detail::TreeBuilder builder(cells);
    const detail::Fault fault = detail::Scan(text, builder);
    if (fault.reason != nullptr) {
        detail::Throw(text, fault);
    }
    return detail::NodeAccess::Adopt(builder.Take());
}

bool is_valid(const json_string& text) {
    detail::NoTree none;
    return detail::Scan(text, none).reason == nullptr;
}

}  // namespace libjson

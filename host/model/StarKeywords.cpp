#include "StarKeywords.h"

#include <algorithm>

#include "host/system/Text.h"

namespace host {

bool IsStarKeyword(std::string_view line) {
    return line.size() > 1 && line[0] == '*' &&
           ((line[1] >= 'A' && line[1] <= 'Z') || (line[1] >= 'a' && line[1] <= 'z'));
}

std::string StarKeyword(std::string_view line) {
    std::string keyword;
    for (const char character : Trim(line.substr(1, std::min(line.find(','), line.size()) - 1))) {
        const bool isBlank = character == ' ' || character == '\t';
        if (!isBlank) {
            keyword += character;
        } else if (!keyword.empty() && keyword.back() != ' ') {
            keyword += ' ';
        }
    }
    return ToUpperAscii(keyword);
}

std::string_view StarParameter(std::string_view line, std::string_view name) {
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(','), line.size());
        const std::string_view item = line.substr(0, end);
        const std::size_t equals = item.find('=');
        if (equals != std::string_view::npos && ToUpperAscii(Trim(item.substr(0, equals))) == name) {
            return item.substr(equals + 1);
        }
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return {};
}

}  // namespace host

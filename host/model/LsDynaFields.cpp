#include "LsDynaFields.h"

#include <algorithm>

#include "host/system/Text.h"

namespace host {

std::string_view NextLsDynaField(std::string_view& rest, std::size_t width) {
    const std::size_t comma = rest.find(',');
    const std::size_t end = std::min(comma != std::string_view::npos ? comma : width, rest.size());
    const std::string_view field = Trim(rest.substr(0, end));
    rest.remove_prefix(std::min(comma != std::string_view::npos ? end + 1 : end, rest.size()));
    return field;
}

}  // namespace host

#include "RelativePath.h"

#include <algorithm>
#include <cstddef>

#include "host/system/Text.h"

namespace host {
namespace {

std::string WithSlashes(const OuString& text) {
    std::string path = text.GetAnsiBuffer();
    std::ranges::replace(path, '\\', '/');
    return path;
}

}  // namespace

std::optional<std::string> RelativePath(const OuString& path, const OuString& directory) {
    const std::string whole = WithSlashes(path);
    std::string above = WithSlashes(directory);
    if (above.empty()) {
        return std::nullopt;
    }
    if (above.back() == '/') {
        above.pop_back();
    }
    const bool isBelow = whole.size() > above.size() + 1 && whole[above.size()] == '/' &&
                         PathKey(std::string_view(whole).substr(0, above.size())) == PathKey(above);
    return isBelow ? std::optional(whole.substr(above.size() + 1)) : std::nullopt;
}

std::string PathKey(std::string_view relative) {
    std::string key(relative);
#if defined(_WIN32)
    OuString upper(key.c_str(), 0);
    upper.MakeUpper();
    key = upper.GetAnsiBuffer();
#endif
    return key;
}

std::filesystem::path PathOfRelative(std::string_view relative) {
    return ToPath(OuString(std::string(relative).c_str(), 0));
}

std::string_view NameIn(std::string_view relative) {
    const std::size_t slash = relative.rfind('/');
    return slash == std::string_view::npos ? relative : relative.substr(slash + 1);
}

std::string_view DirectoryIn(std::string_view relative) {
    const std::size_t slash = relative.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : relative.substr(0, slash);
}

}  // namespace host

#include "OuStringFileName.h"

#include <string>
#include <string_view>

namespace {

bool IsSlash(wchar_t character) {
    return character == L'/' || character == L'\\';
}

bool IsNormalDirectory(std::wstring_view path) {
    return path.back() == L'/' && path != L"//" && path.find(L'\\') == std::wstring_view::npos &&
           path.find(L"//", 1) == std::wstring_view::npos;
}

}  // namespace

void OuStringFileName::NormalizeDirectory() {
    const std::wstring_view path(GetBuffer(), GetLength());
    if (path.empty() || IsNormalDirectory(path)) {
        return;
    }
    std::wstring normal;
    normal.reserve(path.size() + 1);
    for (const wchar_t character : path) {
        if (!IsSlash(character)) {
            normal += character;
        } else if (normal.empty() || normal.back() != L'/') {
            normal += L'/';
        }
    }
    if (normal.back() != L'/') {
        normal += L'/';
    }
    const bool leadingPair = path.size() > 1 && IsSlash(path[0]) && IsSlash(path[1]) && normal.size() > 1;
    if (leadingPair) {
        normal.insert(normal.begin(), L'/');
    }
    *this = OuString(normal.data(), normal.size());
}

OuString OuStringFileName::GetFileName() const {
    const std::wstring_view path(GetBuffer(), GetLength());
    const std::size_t slash = path.find_last_of(L"/\\");
    if (slash == std::wstring_view::npos) {
        return *this;
    }
    return {path.data() + slash + 1, path.size() - slash - 1};
}

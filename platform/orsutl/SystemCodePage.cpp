#include "SystemCodePage.h"

#include <windows.h>

#include <limits>
#include <new>
#include <stdexcept>
#include <string>

#include "WideText.h"

namespace orsutl::detail {

namespace {

/// The system's functions take lengths as int.
int SystemLength(std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::bad_alloc();
    }
    return static_cast<int>(length);
}

std::size_t ConvertedLength(int length) {
    if (length <= 0) {
        throw std::runtime_error("The system cannot convert a text in the ANSI code page");
    }
    return static_cast<std::size_t>(length);
}

/// The text with every surrogate, paired or lone, replaced: no ANSI code page but UTF-8 has a character for
/// it, and the system would write two question marks for a pair.
std::wstring WithoutSurrogates(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
        const char32_t codePoint = NextCodePoint(text, index);
        const bool lacking = codePoint > 0xFFFF || IsHighSurrogate(codePoint) || IsLowSurrogate(codePoint);
        result += lacking ? L'?' : static_cast<wchar_t>(codePoint);
    }
    return result;
}

}  // namespace

std::size_t SystemCodePage::WidenedLength(std::string_view text) const {
    if (text.empty()) {
        return 0;
    }
    return ConvertedLength(
        MultiByteToWideChar(number_, 0, text.data(), SystemLength(text.size()), nullptr, 0));
}

void SystemCodePage::Widen(std::string_view text, wchar_t* wide) const {
    const int room = SystemLength(WidenedLength(text));
    if (room > 0) {
        MultiByteToWideChar(number_, 0, text.data(), SystemLength(text.size()), wide, room);
    }
}

std::size_t SystemCodePage::NarrowedLength(std::wstring_view text) const {
    return Convert(WithoutSurrogates(text), nullptr, 0);
}

void SystemCodePage::Narrow(std::wstring_view text, char* narrow) const {
    const std::wstring source = WithoutSurrogates(text);
    Convert(source, narrow, Convert(source, nullptr, 0));
}

std::size_t SystemCodePage::Convert(std::wstring_view text, char* narrow, std::size_t room) const {
    if (text.empty()) {
        return 0;
    }
    return ConvertedLength(WideCharToMultiByte(number_, WC_NO_BEST_FIT_CHARS, text.data(),
                                               SystemLength(text.size()), narrow, SystemLength(room), "?",
                                               nullptr));
}

}  // namespace orsutl::detail

#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace orsutl::detail {

/// The text that a wide format gives with its arguments, as OuString::Format describes it; empty when the
/// format is wrong. The list of arguments is not usable afterwards.
std::wstring FormatText(std::wstring_view format, std::va_list arguments);

}  // namespace orsutl::detail

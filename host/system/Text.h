#pragma once

#include <OuString.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// Texts as people read them: names of files and objects, sizes and counts.
namespace host {

/// The path as a text of the object model. Every name survives the way there and back, also one that is no
/// text.
OuString ToOuString(const std::filesystem::path& path);
std::filesystem::path ToPath(const OuString& text);

/// The path that a UTF-8 text from the command line names.
std::filesystem::path PathFromUtf8(const std::string& text);

/// The text for a terminal or a message: UTF-8 on one line. Control characters, bytes that are no UTF-8 and
/// what steers the direction of writing come out as escapes (`\n`, `\xE9`, `\u202E`), so that no name can
/// disguise itself or disturb a terminal.
std::string Printable(std::string_view utf8);
std::string Printable(const OuString& text);
std::string Printable(const std::filesystem::path& path);

/// A path or a name as messages give it: printable, in quotation marks.
std::string Quoted(const std::filesystem::path& path);
std::string Quoted(std::string_view utf8);
std::string Quoted(const std::string& utf8);

/// The beginning of the text: at most that many bytes, and no part of a character at its end.
std::string_view CutUtf8(std::string_view utf8, std::size_t most);

/// How many columns of a terminal a printable UTF-8 text takes: two for wide East Asian characters, none for
/// marks that combine with the one before.
std::size_t DisplayWidth(std::string_view printable);

/// A size in bytes in the largest fitting decimal unit: `980 B`, `1.2 kB`, `34 MB`.
std::string FormatSize(std::uint64_t bytes);

/// A number with its noun: `1 study`, `3 studies`.
std::string FormatCount(std::uint64_t count, std::string_view singular, std::string_view plural);

/// Seconds since 1970 as ISO 8601 in UTC: `2026-03-01T09:30:00Z`. Years before 0 or after 9999 become those
/// limits.
std::string FormatTime(std::int64_t secondsSince1970);

/// Less than, equal to or greater than zero as the first name stands before, at or behind the second: by code
/// points, alike on every platform and in every locale.
int CompareNames(const std::filesystem::path& left, const std::filesystem::path& right);

/// Upper-cases the letters A to Z only.
std::string ToUpperAscii(std::string_view text);

/// The text without blanks, tabs and line ends at both ends.
std::string_view Trim(std::string_view text);

}  // namespace host

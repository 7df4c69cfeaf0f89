#pragma once

#include <OuString.h>
#include <korvaneexchange/PrintableText.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// Texts for people: names of files and objects, sizes and counts.
namespace host {

/// The path as a text of the object model. Every name stays the same on the way there and back, even if it is
/// not valid text.
OuString ToOuString(const std::filesystem::path& path);
std::filesystem::path ToPath(const OuString& text);

/// The path that a UTF-8 text from the command line names.
std::filesystem::path PathFromUtf8(const std::string& text);

/// The text for a terminal or a message.
std::string Printable(std::string_view utf8);
std::string Printable(const OuString& text);
std::string Printable(const std::filesystem::path& path);

/// A path or a name in a message: printable, and in quotation marks.
std::string Quoted(const std::filesystem::path& path);
std::string Quoted(std::string_view utf8);
std::string Quoted(const std::string& utf8);

using korvane::exchange::CutUtf8;

/// The number of terminal columns of a printable UTF-8 text: two for a wide East Asian character, none for a
/// mark that combines with the character before.
std::size_t DisplayWidth(std::string_view printable);

/// A size in the largest decimal unit that fits: `980 B`, `1.2 kB`, `34 MB`.
std::string FormatSize(std::uint64_t bytes);

/// A number with its noun: `1 study`, `3 studies`.
std::string FormatCount(std::uint64_t count, std::string_view singular, std::string_view plural);

/// Seconds since 1970 as ISO 8601 in UTC: `2026-03-01T09:30:00Z`. Years before 0 or after 9999 become those
/// limits.
std::string FormatTime(std::int64_t secondsSince1970);

/// Less than, equal to or greater than zero if the first name comes before, is, or comes after the second: by
/// code points, the same on every platform and in every locale.
int CompareNames(const std::filesystem::path& left, const std::filesystem::path& right);

/// The text with the letters A to Z in upper case.
std::string ToUpperAscii(std::string_view text);

/// The text without the blanks, tabs and line ends at both ends.
std::string_view Trim(std::string_view text);

}  // namespace host

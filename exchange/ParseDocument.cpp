#include <korvaneexchange/ParseDocument.h>

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <system_error>
#include <vector>

#include "exchange/DocumentFault.h"

namespace korvane::exchange {
namespace {

std::string WhereAndWhy(std::size_t line, std::size_t column, const std::string& reason) {
    if (line == 0) {
        return reason;
    }
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason;
}

JSONNode Parse(const json_string& text) {
    try {
        return libjson::parse(text);
    } catch (const std::invalid_argument& error) {
        throw FaultOf(error, std::string_view(text.data(), text.size()));
    }
}

[[noreturn]] void FailToRead(const std::filesystem::path& file, const std::error_code& error) {
    throw std::filesystem::filesystem_error("cannot read the document", file, error);
}

/// The whole file, which may be one that has no size, such as a pipe.
json_string ContentOf(const std::filesystem::path& file) {
    if (std::filesystem::is_directory(file)) {
        FailToRead(file, std::make_error_code(std::errc::is_a_directory));
    }
    constexpr std::size_t kPiece = std::size_t{64} * 1024;
    std::vector<char> piece(kPiece);
    json_string text;
    std::error_code unknown;
    if (const std::uintmax_t size = std::filesystem::file_size(file, unknown);
        !unknown && size < text.max_size()) {
        text.reserve(static_cast<std::size_t>(size));
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    const bool isOpen = stream.is_open();
    while (stream.read(piece.data(), static_cast<std::streamsize>(piece.size())), stream.gcount() > 0) {
        text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (!isOpen || !stream.eof() || stream.bad()) {
        FailToRead(file, {errno != 0 ? errno : EIO, std::generic_category()});
    }
    return text;
}

}  // namespace

DocumentError::DocumentError(std::size_t line, std::size_t column, std::size_t offset,
                             const std::string& reason)
    : std::runtime_error(WhereAndWhy(line, column, reason)),
      line_(line),
      column_(column),
      offset_(offset),
      reason_(reason) {}

DocumentError::DocumentError(const DocumentError& other) = default;

DocumentError& DocumentError::operator=(const DocumentError& other) = default;

DocumentError::~DocumentError() = default;

JSONNode ParseDocument(std::string_view text) {
    return Parse(json_string(text.data(), text.size()));
}

JSONNode ReadDocument(const std::filesystem::path& file) {
    return Parse(ContentOf(file));
}

}  // namespace korvane::exchange

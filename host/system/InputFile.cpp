#include "InputFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

namespace host {

std::error_code ReadInputFile(const std::filesystem::path& file, std::string& text) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (error) {
        return error;
    }
    if (std::filesystem::is_directory(status)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 65536> buffer{};
    while (stream) {
        stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        text.append(buffer.data(), static_cast<std::size_t>(stream.gcount()));
    }
    const bool isWhole = stream.eof() && !stream.bad();
    return isWhole ? std::error_code() : std::error_code(errno != 0 ? errno : EIO, std::generic_category());
}

std::error_code ReadStandardInput(std::string& text) {
#if defined(_WIN32)
    static_cast<void>(::_setmode(::_fileno(stdin), _O_BINARY));
#endif
    std::array<char, 65536> buffer{};
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), stdin)) > 0) {
        text.append(buffer.data(), count);
    }
    return std::ferror(stdin) != 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
}

}  // namespace host

#include "InputFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <istream>

#include "FileSystem.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

namespace host {
namespace {

enum class InputFault { Endless = 1, TooLong };

class InputFaults : public std::error_category {
public:
    const char* name() const noexcept override { return "input"; }
    std::string message(int fault) const override {
        return static_cast<InputFault>(fault) == InputFault::Endless
                   ? "it is a device that gives more than a megabyte. Give a file with the document"
                   : "it is longer than 8 GiB or than half of this machine's memory. Give a smaller "
                     "document";
    }
};

const InputFaults& Category() {
    static const InputFaults faults;
    return faults;
}

std::error_code MakeError(InputFault fault) {
    return {static_cast<int>(fault), Category()};
}

/// Reads with `read`, which fills a buffer and returns the number of bytes, 0 at the end.
template <typename Read>
std::error_code ReadToEnd(std::string& text, const InputLimits& limits, bool isDevice, const Read& read) {
    const std::uint64_t most = isDevice ? std::min(limits.most, limits.mostFromDevice) : limits.most;
    std::array<char, 65536> buffer{};
    for (std::size_t count = read(buffer); count > 0; count = read(buffer)) {
        if (text.size() + count > most) {
            return MakeError(isDevice ? InputFault::Endless : InputFault::TooLong);
        }
        text.append(buffer.data(), count);
    }
    return {};
}

bool IsDevice(const std::filesystem::file_status& status) {
    return std::filesystem::is_character_file(status) || std::filesystem::is_block_file(status);
}

}  // namespace

bool IsOverLimit(const std::error_code& error) {
    return error.category() == Category();
}

InputLimits UsualLimits() {
    constexpr std::uint64_t kMost = std::uint64_t{8} << 30U;
    return {std::min(kMost, SizeOfMemory() / 2)};
}

std::error_code ReadInputFile(const std::filesystem::path& file, std::string& text,
                              const InputLimits& limits) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (error) {
        return error;
    }
    if (std::filesystem::is_directory(status)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (std::filesystem::is_regular_file(status)) {
        const std::uintmax_t size = std::filesystem::file_size(file, error);
        if (error || size > limits.most) {
            return error ? error : MakeError(InputFault::TooLong);
        }
        // Otherwise the text would be copied each time that it becomes too large for its memory.
        text.reserve(text.size() + static_cast<std::size_t>(size));
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    const bool isOpen = stream.is_open();
    error = ReadToEnd(text, limits, IsDevice(status), [&](auto& buffer) {
        stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        return static_cast<std::size_t>(stream.gcount());
    });
    const bool isWhole = error || (isOpen && stream.eof() && !stream.bad());
    return isWhole ? error : std::error_code(errno != 0 ? errno : EIO, std::generic_category());
}

std::error_code ReadStandardInput(std::string& text, const InputLimits& limits) {
#if defined(_WIN32)
    static_cast<void>(::_setmode(::_fileno(stdin), _O_BINARY));
#endif
    const std::error_code error = ReadToEnd(text, limits, IsInputDevice(), [](auto& buffer) {
        return std::fread(buffer.data(), 1, buffer.size(), stdin);
    });
    if (error || std::ferror(stdin) == 0) {
        return error;
    }
    return {errno, std::generic_category()};
}

}  // namespace host

#pragma once

#include <string_view>
#include <system_error>

/// The program's standard streams.
namespace host {

enum class Stream { Output, Error };

/// How the command line names the standard input or output.
inline constexpr const char* kStandardStream = "-";

/// Prepares the standard streams as long as it exists: bytes are written as they are, a pipe that nobody
/// reads gives an error instead of a signal, and a Windows console shows UTF-8 and colours. A stream that the
/// program was started without stays closed: no other file gets its number.
class StandardStreams {
public:
    StandardStreams() noexcept;
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;

private:
#if defined(_WIN32)
    unsigned outputCodePage_;
#else
    void (*pipeHandler_)(int);
#endif
};

/// Whether the stream is a terminal.
bool IsTerminal(Stream stream);

/// Whether the standard output shows characters beyond ASCII: the character set of the locale, or on Windows
/// of the console, is UTF-8.
bool IsOutputUtf8();

/// Whether the standard output is a terminal that may show colours: NO_COLOR is not set, and TERM is not
/// "dumb".
bool IsOutputColoured();

/// Writes all bytes without a buffer. std::errc::broken_pipe means that nobody reads any more.
std::error_code WriteAll(Stream stream, std::string_view bytes);

}  // namespace host

#pragma once

#include <string_view>
#include <system_error>

/// The program's standard streams.
namespace host {

enum class Stream { Output, Error };

/// What the command line calls the standard input or output.
inline constexpr const char* kStandardStream = "-";

/// Prepares the streams for the program's time: bytes go out as they are, a pipe that nobody reads gives an
/// error instead of a signal, a console of Windows shows UTF-8 and understands colours. What was set is set
/// back at the end. A stream that the program was started without stays unusable: no file takes its place.
class StandardStreams {
public:
    StandardStreams();
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

/// Whether a person sees the stream.
bool IsTerminal(Stream stream);

/// Whether characters beyond ASCII may be drawn on the standard output: the locale's character set is UTF-8,
/// or on Windows the console's.
bool IsOutputUtf8();

/// Whether the standard output may be coloured: a terminal, and neither NO_COLOR is set nor TERM says "dumb".
bool IsOutputColoured();

/// Writes all bytes, past any buffer. std::errc::broken_pipe means that nobody reads any more.
std::error_code WriteAll(Stream stream, std::string_view bytes);

}  // namespace host

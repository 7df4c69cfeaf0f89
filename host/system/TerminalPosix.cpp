#include <fcntl.h>
#include <langinfo.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <string>

#include "MemoryReserve.h"
#include "Terminal.h"

namespace host {
namespace {

int DescriptorOf(Stream stream) {
    return stream == Stream::Output ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

StandardStreams::StandardStreams() noexcept : pipeHandler_(std::signal(SIGPIPE, SIG_IGN)) {
    // Beyond the limit for the size of files, writing fails with an error instead.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    // A file that is opened later would get the number of a closed stream, and messages would be written to
    // it.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF) {
            // Opened for the wrong direction, so that using it is an error.
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

StandardStreams::~StandardStreams() {
    static_cast<void>(std::signal(SIGPIPE, pipeHandler_));
}

bool IsTerminal(Stream stream) {
    return ::isatty(DescriptorOf(stream)) == 1;
}

bool IsOutputUtf8() {
    EnsureMemory();
    const locale_t locale = ::newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        return false;
    }
    const std::string characterSet = ::nl_langinfo_l(CODESET, locale);
    ::freelocale(locale);
    return characterSet == "UTF-8" || characterSet == "utf8";
}

bool IsOutputColoured() {
    const char* const noColour = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    const bool isRefused = noColour != nullptr && *noColour != '\0';
    return !isRefused && terminal != nullptr && std::string_view(terminal) != "dumb" &&
           IsTerminal(Stream::Output);
}

std::error_code WriteAll(Stream stream, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(DescriptorOf(stream), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0 && errno == EAGAIN) {
            // Another program has set the shared stream to non-blocking.
            pollfd waiting{DescriptorOf(stream), POLLOUT, 0};
            static_cast<void>(::poll(&waiting, 1, -1));
            continue;
        }
        if (count < 0) {
            return {errno, std::generic_category()};
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

}  // namespace host

#include <cstdlib>
#include <fstream>

#include "host/commands/Program.h"
#include "support/ProcessorTime.h"
#include "support/SmallStack.h"

/// korvane-json in a thread with a small stack, for Windows, where a process cannot be given one. The file
/// that the environment names gets the milliseconds that it took: Wine tells the time of a process to itself
/// only.
int main(int argumentCount, char** arguments) {
    // If a stack overflows, the process may end with status 0, which therefore means nothing here.
    constexpr int kCameBack = 100;
    int status = 0;
    OnSmallStack([&] { status = host::RunProgram(argumentCount, arguments); });
    const char* const timeFile = std::getenv("KORVANEJSON_TIME_FILE");
    std::ofstream file(timeFile == nullptr ? "" : timeFile);
    file << ProcessorTimeSoFar().count() << std::flush;
    return file ? kCameBack + status : 0;
}

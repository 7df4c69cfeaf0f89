#include "host/commands/Program.h"
#include "support/SmallStack.h"

/// korvane-json in a thread with a small stack, for Windows, where a process cannot be given one.
int main(int argumentCount, char** arguments) {
    // If a stack overflows, the process may end with status 0, which therefore means nothing here.
    constexpr int kCameBack = 100;
    int status = 0;
    OnSmallStack([&] { status = host::RunProgram(argumentCount, arguments); });
    return kCameBack + status;
}

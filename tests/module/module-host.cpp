// A host in small: loads the library at run time, wants to hear of unloading, gives the library back and ends
// in the way that its argument says. What the library writes goes to standard error.

#include <EmbeddedConsole.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>
#include <thread>

#include "LoadedLibrary.h"

namespace {

void Run(std::string_view ending) {
    PimuSetDLLUnloadWarning(true);
    {
        const LoadedLibrary library;
        LoadedLibrary::Find<void()>("KorvaneJsonInitialize")();
        std::thread([] { LoadedLibrary::Find<const char*(int)>("KorvaneJson_get_module_info")(0); }).join();
        LoadedLibrary::Find<void()>("KorvaneJsonTerminate")();
    }
    std::cout << LoadedLibrary::Find<const char*(int)>("KorvaneJson_get_module_info")(2) << std::endl;
    if (ending == "warning") {
        PimuWriteConsoleMessage(PIMU_MESSAGE_NORMAL, L"%s", L"a warning");
    }
    if (ending == "exit") {
        std::exit(0);
    }
    if (ending == "thread") {
        std::thread([] { std::exit(0); }).join();
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    try {
        Run(argumentCount > 1 ? arguments[1] : "");
        return 0;
    } catch (const std::exception& error) {
        std::fputs(error.what(), stderr);
        return 1;
    }
}

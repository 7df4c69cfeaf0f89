#include "Verbosity.h"

#include <CLI/CLI.hpp>

#include "host/system/Console.h"

namespace host {
namespace {

void Set(Console& console, Console::Verbosity verbosity) {
    if (console.GetVerbosity() != Console::Verbosity::Normal && console.GetVerbosity() != verbosity) {
        throw CLI::ValidationError("give either --quiet or --verbose");
    }
    console.SetVerbosity(verbosity);
}

void AddTo(CLI::App& app, Console& console) {
    app.add_flag_callback(
        "-q,--quiet", [&console] { Set(console, Console::Verbosity::Quiet); },
        "Say only what went wrong. What is written to the standard output stays");
    app.add_flag_callback(
        "-v,--verbose", [&console] { Set(console, Console::Verbosity::Verbose); },
        "Say also what was read, what was left out and why, and how long it took");
}

}  // namespace

void AddVerbosity(CLI::App& program, Console& console) {
    AddTo(program, console);
    for (CLI::App* const command : program.get_subcommands([](const CLI::App*) { return true; })) {
        AddTo(*command, console);
    }
}

}  // namespace host

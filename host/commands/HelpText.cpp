#include "HelpText.h"

#include <CLI/CLI.hpp>
#include <new>

namespace host {

std::string HelpText(const CLI::App& program, const CLI::App* command) {
    const CLI::App& asked = command != nullptr ? *command : program;
    const std::string name = program.get_name() + (command != nullptr ? ' ' + command->get_name() : "");
    const auto make = [&] {
        return asked.get_formatter()->make_help(&asked, name, CLI::AppFormatMode::Normal);
    };
    std::string text = make();
    // Without memory the streams of the parser drop text in silence, but not the same text twice.
    if (text.empty() || text != make()) {
        throw std::bad_alloc();
    }
    return text;
}

const CLI::App* CommandNamed(const std::string& name, const CLI::App& program) {
    const auto found =
        program.get_subcommands([&](const CLI::App* candidate) { return candidate->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

}  // namespace host

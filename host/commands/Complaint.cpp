#include "Complaint.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>

#include "host/system/NearestWord.h"
#include "host/system/Text.h"

namespace host {
namespace {

/// An argument that no command and no option has taken.
struct LeftOver {
    std::string text;
    bool isOption = false;
    bool isBeforeCommand = false;
};

/// What is left over, in the order in which it was given. The parser keeps it in pieces, by who found it.
std::vector<LeftOver> LeftOvers(const CLI::App& program, const CLI::App* command,
                                const std::vector<std::string>& arguments) {
    std::vector<std::string> waiting = program.remaining(true);
    // Of equal arguments the later ones are left over, because the first were taken.
    std::vector<bool> isLeft(arguments.size());
    for (std::size_t index = arguments.size(); index-- > 0;) {
        const auto found = std::ranges::find(waiting, arguments[index]);
        isLeft[index] = found != waiting.end();
        if (isLeft[index]) {
            waiting.erase(found);
        }
    }
    std::vector<LeftOver> left;
    bool isBeforeCommand = true;
    bool isBehindDashes = false;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& argument = arguments[index];
        if (argument == "--" && !isBehindDashes) {
            isBehindDashes = true;
            continue;
        }
        if (isLeft[index]) {
            const bool isOption = !isBehindDashes && argument.size() > 1 && argument.starts_with("-");
            left.push_back({argument, isOption, isBeforeCommand});
        } else if (command != nullptr && argument == command->get_name()) {
            isBeforeCommand = false;
        }
    }
    return left;
}

std::vector<std::string> OptionsOf(const CLI::App& asked) {
    std::vector<std::string> names;
    for (const CLI::Option* const option : asked.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
        for (const std::string& name : option->get_snames()) {
            names.push_back("-" + name);
        }
    }
    return names;
}

/// `later` is the command that comes after the option, if one does.
std::string NoSuchOption(const std::string& argument, const CLI::App& asked,
                         const CLI::App* later = nullptr) {
    const std::string name = argument.substr(0, argument.find('='));
    const std::vector<std::string> names = OptionsOf(asked);
    if (later != nullptr) {
        const std::vector<std::string> ofLater = OptionsOf(*later);
        if (std::ranges::find(ofLater, name) != ofLater.end()) {
            return Quoted(name) + " is an option of " + Quoted(later->get_name()) + " and comes after it";
        }
    }
    return "there is no option " + Quoted(name) + DidYouMean(NearestWord(name, names));
}

std::string TooMany(const std::vector<LeftOver>& left) {
    std::vector<std::string> names;
    for (const LeftOver& one : left) {
        if (!one.isOption) {
            names.push_back(Quoted(one.text));
        }
    }
    if (names.size() == 1) {
        return names.front() + " is one argument too many";
    }
    std::string list = names.front();
    for (std::size_t index = 1; index < names.size(); ++index) {
        list += (index + 1 < names.size() ? ", " : " and ") + names[index];
    }
    return list + " are " + std::to_string(names.size()) + " arguments too many";
}

/// The parser's own words, where people would use others.
std::string Reworded(const CLI::ParseError& error) {
    const std::string said = error.what();
    const std::string option = said.substr(0, said.find_first_of(": "));
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr &&
        said.find(": At Most 1 ") != std::string::npos) {
        return Quoted(option) + " is given more than once";
    }
    constexpr std::string_view kExcludes = " excludes ";
    if (const std::size_t place = said.find(kExcludes);
        dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr && place != std::string::npos) {
        return Quoted(said.substr(0, place)) + " and " + Quoted(said.substr(place + kExcludes.size())) +
               " cannot be given together";
    }
    return Printable(std::string_view(said));
}

}  // namespace

std::string NoSuchCommand(const std::string& name, const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* const command : program.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return "there is no command " + Quoted(name) + DidYouMean(NearestWord(name, names));
}

std::string ComplaintOf(const CLI::ParseError& error, const CLI::App& program,
                        const std::vector<std::string>& arguments) {
    const std::vector<CLI::App*> chosen = program.get_subcommands();
    const CLI::App* const command = chosen.empty() ? nullptr : chosen.front();
    const std::vector<LeftOver> left = LeftOvers(program, command, arguments);
    const bool isExtra = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    const bool isMissing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    const std::string ofCommand = command == nullptr ? "" : command->get_name();
    if (left.empty() || (!isExtra && !isMissing)) {
        return UsageMessage(Reworded(error), ofCommand);
    }
    const LeftOver& first = left.front();
    if (command == nullptr || first.isBeforeCommand) {
        return UsageMessage(first.isOption ? NoSuchOption(first.text, program, command)
                                           : NoSuchCommand(first.text, program));
    }
    // A misspelt option is reported, rather than that the name in whose place it stands is missing.
    const auto option = std::ranges::find_if(left, &LeftOver::isOption);
    if (first.isOption || (isMissing && option != left.end())) {
        return UsageMessage(NoSuchOption(option->text, *command), ofCommand);
    }
    return UsageMessage(isMissing ? Printable(std::string_view(error.what())) : TooMany(left), ofCommand);
}

std::string UsageMessage(const std::string& complaint, const std::string& command) {
    return complaint + (complaint.ends_with('?') ? "" : ".") + " See 'korvane-json " +
           (command.empty() ? "" : command + ' ') + "--help'";
}

}  // namespace host

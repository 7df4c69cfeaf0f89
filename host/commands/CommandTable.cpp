#include "CommandTable.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <string_view>

#include "host/system/Text.h"

namespace host {
namespace {

/// Names of arguments and values that are files, besides those with an ending, like PROJECT.kvp.
constexpr std::array<std::string_view, 5> kFileNames = {"DIR", "FIRST", "SECOND", "INPUT", "FILE"};
constexpr std::string_view kCommandName = "COMMAND";

struct Wording {
    std::string_view text;
    std::string_view ending;
};
/// What the description of a file says of it.
constexpr Wording kWordings[] = {
    {"project file", ".kvp"}, {"document", ".json"},        {"Another one", ".kvp"},
    {"Another one", ".json"}, {"server's database", ".db"},
};
constexpr std::string_view kDirectoryWordings[] = {"directory", "Another one"};

bool Has(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

/// The text up to the end of its first part, on one line.
std::string FirstPart(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    std::size_t end = std::min(text.size(), text.find(';'));
    for (const char* const mark : {". ", ": "}) {
        end = std::min(end, text.find(mark));
    }
    return text.substr(0, end);
}

/// `{PROJECT,STUDY}` as words.
std::vector<std::string> WordsOf(const std::string& typeName) {
    std::vector<std::string> words;
    const std::size_t open = typeName.find('{');
    if (open == std::string::npos) {
        return words;
    }
    const std::size_t close = typeName.find('}', open);
    std::size_t begin = open + 1;
    while (begin <= close) {
        const std::size_t end = std::min(typeName.find(',', begin), close);
        words.emplace_back(Trim(std::string_view(typeName).substr(begin, end - begin)));
        begin = end + 1;
    }
    return words;
}

ValueKind KindOf(const CLI::Option& option, const std::string& name) {
    ValueKind kind;
    kind.words = WordsOf(option.get_type_name());
    const std::size_t dot = name.find('.');
    const bool isNamedLikeFile = dot != std::string::npos && !name.starts_with('.');
    kind.isFile = isNamedLikeFile || std::ranges::find(kFileNames, name) != kFileNames.end();
    if (!kind.isFile) {
        return kind;
    }
    if (isNamedLikeFile) {
        kind.endings.push_back(name.substr(dot));
        return kind;
    }
    // An output can have any name.
    const std::string& description = option.get_description();
    if (option.check_lname("output")) {
        return kind;
    }
    for (const Wording& wording : kWordings) {
        if (Has(description, wording.text)) {
            kind.endings.emplace_back(wording.ending);
        }
    }
    kind.isDirectory = std::ranges::any_of(
        kDirectoryWordings, [&](std::string_view wording) { return Has(description, wording); });
    return kind;
}

CommandEntry EntryOf(const CLI::App& app, const std::vector<std::string>& commands) {
    CommandEntry entry{app.get_name(), FirstPart(app.get_description()), {}, {}};
    for (const CLI::Option* const option : app.get_options()) {
        if (option->get_positional()) {
            const std::string name = option->get_single_name();
            CommandArgument& argument = entry.arguments.emplace_back(
                CommandArgument{name, option->get_expected_max() > 1, KindOf(*option, name)});
            if (name == kCommandName) {
                argument.value.words = commands;
            }
            continue;
        }
        CommandOption& added = entry.options.emplace_back();
        added.longName = option->get_lnames().empty() ? "" : "--" + option->get_lnames().front();
        added.shortName = option->get_snames().empty() ? "" : "-" + option->get_snames().front();
        added.description = FirstPart(option->get_description());
        added.hasValue = option->get_items_expected_max() > 0;
        const std::string typeName = option->get_type_name();
        added.valueName = typeName.substr(0, typeName.find(':'));
        added.value = KindOf(*option, added.valueName);
    }
    return entry;
}

}  // namespace

std::vector<CommandEntry> CommandTableOf(const CLI::App& program) {
    const auto commands = program.get_subcommands([](const CLI::App*) { return true; });
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const CLI::App* const command : commands) {
        names.push_back(command->get_name());
    }
    std::vector<CommandEntry> table = {EntryOf(program, names)};
    for (const CLI::App* const command : commands) {
        table.push_back(EntryOf(*command, names));
    }
    return table;
}

}  // namespace host

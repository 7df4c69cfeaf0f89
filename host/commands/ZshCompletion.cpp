#include "CompletionScripts.h"

namespace host {
namespace {

/// A description within single quotes and brackets.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '\'') {
            escaped += "'\\''";
        } else if (character == '[' || character == ']' || character == ':' || character == '\\') {
            escaped += '\\';
            escaped += character;
        } else {
            escaped += character;
        }
    }
    return escaped;
}

/// What follows the name of a value: how it is completed.
std::string Action(const ValueKind& kind) {
    std::string action;
    if (!kind.words.empty()) {
        for (const std::string& word : kind.words) {
            action += (action.empty() ? "(" : " ") + word;
        }
        return action + ")";
    }
    if (!kind.isFile) {
        return " ";
    }
    if (kind.endings.size() == 1) {
        // In brackets one ending would be a condition for files.
        return "_files -g \"*" + kind.endings.front() + '"';
    }
    for (const std::string& ending : kind.endings) {
        action += (action.empty() ? "_files -g \"*(" : "|") + ending;
    }
    return action.empty() ? "_files" : action + ")\"";
}

void PutOption(const CommandOption& option, ScriptText& out) {
    const std::string value =
        option.hasValue ? ':' + Escaped(option.valueName) + ':' + Action(option.value) : "";
    const std::string described = '[' + Escaped(option.description) + ']' + value + "'";
    const std::string equals = option.hasValue ? "=" : "";
    if (option.shortName.empty()) {
        out << "'" << option.longName << equals << described;
    } else {
        out << "'(" << option.shortName << ' ' << option.longName << ")'{" << option.shortName
            << (option.hasValue ? "+" : "") << ',' << option.longName << equals << "}'" << described;
    }
}

void PutArgument(const CommandArgument& argument, std::size_t number, ScriptText& out) {
    out << "'" << (argument.isRepeated ? "*" : std::to_string(number)) << ':' << Escaped(argument.name) << ':'
        << Action(argument.value) << "'";
}

void PutCommand(const CommandEntry& entry, ScriptText& out) {
    out << "        " << entry.name << ")\n            _arguments -s -S";
    for (const CommandOption& option : entry.options) {
        out << " \\\n                ";
        PutOption(option, out);
    }
    for (std::size_t index = 0; index < entry.arguments.size(); ++index) {
        out << " \\\n                ";
        PutArgument(entry.arguments[index], index + 1, out);
    }
    out << "\n            ;;\n";
}

}  // namespace

std::string ZshCompletion(const std::vector<CommandEntry>& table) {
    ScriptText out;
    out << "#compdef korvane-json\n"
           "# zsh completion for korvane-json, printed by \"korvane-json completion zsh\".\n\n"
           "_korvane-json() {\n"
           "    local curcontext=$curcontext state line\n"
           "    local -a commands\n"
           "    commands=(\n";
    for (std::size_t index = 1; index < table.size(); ++index) {
        out << "        '" << table[index].name << ':' << Escaped(table[index].description) << "'\n";
    }
    out << "    )\n    _arguments -s -S -C";
    for (const CommandOption& option : table.front().options) {
        out << " \\\n        ";
        PutOption(option, out);
    }
    out << " \\\n        '1:command:->command' \\\n        '*::argument:->arguments'\n"
           "    case $state in\n"
           "    command) _describe -t commands command commands ;;\n"
           "    arguments)\n"
           "        case $line[1] in\n";
    for (std::size_t index = 1; index < table.size(); ++index) {
        PutCommand(table[index], out);
    }
    out << "        esac\n        ;;\n    esac\n}\n\n"
           "if [[ $funcstack[1] == _korvane-json ]]; then\n"
           "    _korvane-json \"$@\"\n"
           "else\n"
           "    compdef _korvane-json korvane-json\n"
           "fi\n";
    return out.Text();
}

}  // namespace host

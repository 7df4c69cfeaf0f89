#include "CompletionScripts.h"

namespace host {
namespace {

// The words before the one that is completed say which command it is for, and which of its arguments comes
// next.
constexpr const char* kBegin =
    R"(# bash completion for korvane-json, printed by "korvane-json completion bash".

# Completes files with one of the endings, and directories; any file if there is none with an ending.
_korvane_json_files() {
    local ending found
    compopt -o filenames 2>/dev/null
    for ending in "$@"; do
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -X "!*$ending" -- "$current")
    done
    found=${#COMPREPLY[@]}
    mapfile -t -O "$found" COMPREPLY < <(compgen -d -- "$current")
    if ((${#COMPREPLY[@]} == 0 || $# == 0)); then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}

_korvane_json_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

)";

constexpr const char* kEnd = R"(
_korvane_json() {
    # The completed word with its value in one piece, where bash parts words at =.
    local current=${COMP_WORDS[COMP_CWORD]} previous= command= number=1 index word
    for ((index = 1; index < COMP_CWORD; ++index)); do
        word=${COMP_WORDS[index]}
        if [[ $word == = ]]; then
            continue
        elif [[ -n $previous ]]; then
            previous=
        elif [[ $word == -* ]]; then
            if _korvane_json_takes_value "$command" "$word"; then
                previous=$word
            fi
        elif [[ -z $command ]]; then
            command=$word
        else
            ((++number))
        fi
    done
    [[ $current == = ]] && current=
    COMPREPLY=()
    if [[ -n $previous ]]; then
        _korvane_json_value "$command" "$previous"
    elif [[ $current == -* ]]; then
        _korvane_json_options "$command"
    elif [[ -z $command ]]; then
        _korvane_json_commands
    else
        _korvane_json_argument "$command" "$number"
    fi
}
complete -F _korvane_json korvane-json
)";

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// The command that completes a value of the kind.
std::string Completed(const ValueKind& kind) {
    if (!kind.words.empty()) {
        return "_korvane_json_words '" + Joined(kind.words) + "'";
    }
    return kind.isFile ? "_korvane_json_files " + Joined(kind.endings) : ":";
}

std::string Patterns(const std::string& command, const CommandOption& option) {
    std::string patterns;
    for (const std::string& name : {option.longName, option.shortName}) {
        if (!name.empty()) {
            patterns.append(patterns.empty() ? "'" : " | '")
                .append(command)
                .append(" ")
                .append(name)
                .append("'");
        }
    }
    return patterns;
}

void PutOptions(const std::vector<CommandEntry>& table, ScriptText& out) {
    out << "_korvane_json_options() {\n    case $1 in\n";
    for (const CommandEntry& entry : table) {
        const bool isProgram = &entry == &table.front();
        out << "    " << (isProgram ? "''" : entry.name) << ") _korvane_json_words '";
        for (const CommandOption& option : entry.options) {
            out << option.longName << (option.shortName.empty() ? "" : " ") << option.shortName
                << (&option == &entry.options.back() ? "" : " ");
        }
        out << "' ;;\n";
    }
    out << "    esac\n}\n\n";
}

void PutValues(const std::vector<CommandEntry>& table, ScriptText& out) {
    std::string known;
    out << "_korvane_json_value() {\n    case \"$1 $2\" in\n";
    for (const CommandEntry& entry : table) {
        for (const CommandOption& option : entry.options) {
            if (option.hasValue) {
                const std::string patterns = Patterns(entry.name, option);
                out << "    " << patterns << ") " << Completed(option.value) << " ;;\n";
                known += (known.empty() ? "" : " |\\\n        ") + patterns;
            }
        }
    }
    out << "    esac\n}\n\n_korvane_json_takes_value() {\n    case \"$1 $2\" in\n    " << known
        << ") return 0 ;;\n    esac\n    return 1\n}\n\n";
}

void PutArguments(const std::vector<CommandEntry>& table, ScriptText& out) {
    out << "_korvane_json_argument() {\n    case \"$1 $2\" in\n";
    for (const CommandEntry& entry : table) {
        for (std::size_t index = 0; index < entry.arguments.size(); ++index) {
            const CommandArgument& argument = entry.arguments[index];
            const std::string number = argument.isRepeated ? "'*" : std::to_string(index + 1) + "'";
            out << "    '" << entry.name << ' ' << number << ") " << Completed(argument.value) << " ;;\n";
        }
    }
    out << "    esac\n}\n";
}

}  // namespace

std::string BashCompletion(const std::vector<CommandEntry>& table) {
    ScriptText out;
    out << kBegin << "_korvane_json_commands() {\n    _korvane_json_words '";
    for (std::size_t index = 1; index < table.size(); ++index) {
        out << (index == 1 ? "" : " ") << table[index].name;
    }
    out << "'\n}\n\n";
    PutOptions(table, out);
    PutValues(table, out);
    PutArguments(table, out);
    out << kEnd;
    return out.Text();
}

}  // namespace host

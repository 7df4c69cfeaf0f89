#include "CompletionScripts.h"

namespace host {
namespace {

// The options that come before the command do not take values.
constexpr const char* kBegin =
    R"(# fish completion for korvane-json, printed by "korvane-json completion fish".

# The words behind the command that are not options; all options with values are asked for by their command.
function __korvane_json_command
    for word in (commandline -opc)[2..]
        if not string match -q -- '-*' $word
            echo $word
            return 0
        end
    end
    return 1
end

function __korvane_json_needs_command
    not __korvane_json_command >/dev/null
end

function __korvane_json_is
    test (__korvane_json_command; or echo '') = $argv[1]
end

# Whether the command is the first word, and its argument with the number in the second comes next. The options that
# follow take values.
function __korvane_json_argument
    __korvane_json_is $argv[1]; or return 1
    set -l number 0
    set -l value no
    for word in (commandline -opc)[2..]
        if test $value = yes
            set value no
        else if string match -q -- '-*' $word
            contains -- $word $argv[3..]; and set value yes
        else
            set number (math $number + 1)
        end
    end
    test $number = $argv[2]; or begin
        test $argv[2] = more; and test $number -ge 1
    end
end

# Files with one of the endings, and directories; any file if there is none with an ending.
function __korvane_json_files
    set -l paths (complete -C "'' "(commandline -ct | string escape --no-quoted) | string replace -r '\t.*' '')
    set -l chosen
    for ending in $argv
        set -a chosen (string match -- "*$ending" $paths)
    end
    set -a chosen (string match -- '*/' $paths)
    if test (count $argv) -eq 0 -o (count $chosen) -eq 0
        set chosen $paths
    end
    printf '%s\n' $chosen
end

complete -c korvane-json -f
)";

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\') {
            quoted += '\\';
        }
        quoted += character;
    }
    return quoted + "'";
}

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string Completed(const ValueKind& kind) {
    if (!kind.words.empty()) {
        return " -a " + Quoted(Joined(kind.words));
    }
    return kind.isFile ? " -a '(__korvane_json_files " + Joined(kind.endings) + ")'" : "";
}

void PutOption(const std::string& condition, const CommandOption& option, ScriptText& out) {
    out << "complete -c korvane-json -n " << Quoted(condition);
    if (!option.shortName.empty()) {
        out << " -s " << option.shortName.substr(1);
    }
    out << " -l " << option.longName.substr(2);
    if (option.hasValue) {
        out << " -x" << Completed(option.value);
    }
    out << " -d " << Quoted(option.description) << '\n';
}

void PutCommand(const CommandEntry& entry, ScriptText& out) {
    std::string valued;
    for (const CommandOption& option : entry.options) {
        PutOption("__korvane_json_is " + entry.name, option, out);
        if (option.hasValue) {
            valued.append(1, ' ').append(option.longName);
            valued.append(option.shortName.empty() ? 0 : 1, ' ').append(option.shortName);
        }
    }
    for (std::size_t index = 0; index < entry.arguments.size(); ++index) {
        const CommandArgument& argument = entry.arguments[index];
        const std::string completed = Completed(argument.value);
        if (!completed.empty()) {
            const std::string number = argument.isRepeated ? "more" : std::to_string(index + 1);
            std::string condition = "__korvane_json_argument ";
            condition.append(entry.name).append(1, ' ').append(number).append(valued);
            out << "complete -c korvane-json -n " << Quoted(condition) << completed << '\n';
        }
    }
}

}  // namespace

std::string FishCompletion(const std::vector<CommandEntry>& table) {
    ScriptText out;
    out << kBegin;
    for (const CommandOption& option : table.front().options) {
        PutOption("__korvane_json_needs_command", option, out);
    }
    for (std::size_t index = 1; index < table.size(); ++index) {
        out << "complete -c korvane-json -n __korvane_json_needs_command -a " << table[index].name << " -d "
            << Quoted(table[index].description) << '\n';
    }
    for (std::size_t index = 1; index < table.size(); ++index) {
        PutCommand(table[index], out);
    }
    return out.Text();
}

}  // namespace host

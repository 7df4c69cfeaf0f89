#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "CommandTable.h"

/// Scripts by which shells complete the commands, options, words and files of the table.
namespace host {

/// A text that grows. A stream of the standard library would drop what comes when there is no memory, in
/// silence.
class ScriptText {
public:
    ScriptText& operator<<(std::string_view text) {
        text_ += text;
        return *this;
    }
    ScriptText& operator<<(char character) {
        text_ += character;
        return *this;
    }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

std::string BashCompletion(const std::vector<CommandEntry>& table);
std::string ZshCompletion(const std::vector<CommandEntry>& table);
std::string FishCompletion(const std::vector<CommandEntry>& table);

}  // namespace host

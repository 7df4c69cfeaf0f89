#include "Command.h"

#include <CLI/CLI.hpp>

#include "host/system/NearestWord.h"
#include "host/system/Text.h"

namespace host {
namespace {

std::string Joined(const std::vector<std::string>& words, const std::string& between,
                   const std::string& beforeLast) {
    std::string text;
    for (std::size_t index = 0; index < words.size(); ++index) {
        text += (index == 0 ? "" : index + 1 < words.size() ? between : beforeLast) + words[index];
    }
    return text;
}

/// `neither a nor b`, `none of a, b and c`
std::string NoneOf(const std::vector<std::string>& words) {
    return words.size() == 2 ? "neither " + Joined(words, "", " nor ")
                             : "none of " + Joined(words, ", ", " and ");
}

/// Takes one of the words, in any letter case, as it is in the list.
CLI::Validator ChoiceOf(const std::vector<std::string>& words) {
    const auto choose = [words](std::string& text) -> std::string {
        for (const std::string& known : words) {
            if (ToUpperAscii(text) == ToUpperAscii(known)) {
                text = known;
                return "";
            }
        }
        return Quoted(text) + " is " + NoneOf(words) + DidYouMean(NearestWord(text, words));
    };
    return {choose, "{" + Joined(words, ",", ",") + "}"};
}

}  // namespace

Option& Option::Type(const std::string& name) {
    option_->type_name(name);
    return *this;
}

Option& Option::Description(const std::string& text) {
    option_->description(text);
    return *this;
}

Option& Option::Required() {
    option_->required();
    return *this;
}

Option& Option::OneEachTime() {
    option_->allow_extra_args(false);
    return *this;
}

Option& Option::Check(const std::function<std::string(const std::string& text)>& check) {
    option_->check(check);
    return *this;
}

Option& Option::OneOf(const std::vector<std::string>& words) {
    option_->transform(ChoiceOf(words));
    return *this;
}

Option& Option::ForEach(const std::function<void(const std::string& text)>& work) {
    option_->each(work);
    return *this;
}

Option& Option::Needs(const Option& other) {
    option_->needs(other.option_);
    return *this;
}

Option& Option::Excludes(const Option& other) {
    option_->excludes(other.option_);
    return *this;
}

Option Command::AddOption(const std::string& name, std::string& value, const std::string& description) const {
    return Option(*app_->add_option(name, value, description));
}

Option Command::AddOption(const std::string& name, std::optional<std::string>& value,
                          const std::string& description) const {
    return Option(*app_->add_option(name, value, description));
}

Option Command::AddOption(const std::string& name, std::optional<int>& value,
                          const std::string& description) const {
    return Option(*app_->add_option(name, value, description));
}

Option Command::AddOption(const std::string& name, std::optional<std::size_t>& value,
                          const std::string& description) const {
    return Option(*app_->add_option(name, value, description));
}

Option Command::AddOption(const std::string& name, std::vector<std::string>& values,
                          const std::string& description) const {
    return Option(*app_->add_option(name, values, description));
}

Option Command::AddFlag(const std::string& name, bool& isGiven, const std::string& description) const {
    return Option(*app_->add_flag(name, isGiven, description));
}

void Command::SetEnd(const std::string& text) const {
    app_->footer(text);
}

void Command::Call(const std::function<void()>& work) const {
    app_->callback(work);
}

Command AddCommand(CLI::App& program, const std::string& name, const std::string& purpose) {
    return Command(*program.add_subcommand(name, purpose));
}

}  // namespace host

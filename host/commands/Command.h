#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// What a command takes from its command line. It is CLI11 that reads it; its header, which takes longer to
/// compile than a command, stays out of the commands.
namespace host {

/// An option, a flag or an argument of a command.
class Option {
public:
    explicit Option(CLI::Option& option) : option_(&option) {}

    /// What the help calls its value; an argument is called as it is named, so it has an empty type.
    Option& Type(const std::string& name);
    Option& Description(const std::string& text);
    Option& Required();
    /// One value each time that it is given. A list takes all words that follow otherwise.
    Option& OneEachTime();
    /// The check says what is wrong with a value, and nothing if it is right.
    Option& Check(const std::function<std::string(const std::string& text)>& check);
    /// One of several words, in any letter case. The value becomes the word as it is in the list.
    Option& OneOf(const std::vector<std::string>& words);
    /// What is called with each value, once it is checked.
    Option& ForEach(const std::function<void(const std::string& text)>& work);
    Option& Needs(const Option& other);
    Option& Excludes(const Option& other);

private:
    CLI::Option* option_;
};

class Command {
public:
    explicit Command(CLI::App& app) : app_(&app) {}

    /// Adds an option, if the name begins with a hyphen, else an argument. The value is set when the command
    /// runs; it has to live until then.
    Option AddOption(const std::string& name, std::string& value, const std::string& description) const;
    Option AddOption(const std::string& name, std::optional<std::string>& value,
                     const std::string& description) const;
    Option AddOption(const std::string& name, std::optional<int>& value,
                     const std::string& description) const;
    Option AddOption(const std::string& name, std::optional<std::size_t>& value,
                     const std::string& description) const;
    Option AddOption(const std::string& name, std::vector<std::string>& values,
                     const std::string& description) const;
    Option AddFlag(const std::string& name, bool& isGiven, const std::string& description) const;

    /// What the help ends with.
    void SetEnd(const std::string& text) const;
    /// What is called when the command line is read.
    void Call(const std::function<void()>& work) const;

private:
    CLI::App* app_;
};

/// Adds a command to the program. The purpose is one line of its help.
Command AddCommand(CLI::App& program, const std::string& name, const std::string& purpose);

}  // namespace host

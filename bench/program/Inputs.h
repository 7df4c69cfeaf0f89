#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// What is measured, and the program that runs the floors.
struct Programs {
    std::string self;
    std::string program;

    /// The command lines of a command and of a floor.
    std::vector<std::string> Command(std::vector<std::string> arguments) const;
    std::vector<std::string> Floor(std::vector<std::string> arguments) const;
};

/// The files that the commands of one size read.
struct Inputs {
    std::filesystem::path folder;
    std::string document;
    std::string project;
    std::string answered;
    std::string answer;
    std::string database;
    std::string fetched;
    std::string key;
};

/// Makes them, and checks that they have as many objects. Throws std::runtime_error.
Inputs MakeInputs(const Programs& programs, const std::filesystem::path& folder, int objects);

}  // namespace bench

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "GlobPattern.h"

namespace host {

/// The file with rules for what is left out of its directory and those below.
inline constexpr std::string_view kIgnoreFile = ".korvaneignore";

/// Rules about what is left out, with the syntax of a gitignore file.
class IgnoreRules {
public:
    /// Reads the lines of a file.
    void AddLines(std::string_view text);
    /// Adds a line without regard to comments.
    void AddRule(std::string_view line);

    bool IsEmpty() const { return rules_.empty(); }

    enum class Verdict { None, LeftOut, TakenIn };
    /// What the last rule says that fits. The path has slashes, and begins below the directory of the rules.
    Verdict About(std::string_view path, bool isDirectory) const;

private:
    struct Rule {
        GlobPattern pattern;
        bool takesIn = false;
        bool isForDirectories = false;
        /// It is about names, wherever they are; the others are about paths.
        bool isForNames = false;
    };
    std::vector<Rule> rules_;
};

}  // namespace host

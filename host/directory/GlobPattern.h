#pragma once

#include <bitset>
#include <cstddef>
#include <string_view>
#include <vector>

namespace host {

/// A pattern for paths with slashes, with the signs that gitignore knows: `*` and `?` for characters of one
/// name, `[a-z]` and `[[:digit:]]` for one of several, `**` between slashes for any number of names, and a
/// backslash before a character that stands for itself. Characters are bytes, as git sees them.
///
/// Matching takes time in proportion to the lengths of the pattern and of the path multiplied, and no stack.
class GlobPattern {
public:
    explicit GlobPattern(std::string_view pattern);

    /// Whether it is closed and does not end with a backslash.
    bool IsValid() const { return isValid_; }
    /// Whether the whole path fits. A pattern that is not closed, such as `[a`, fits nothing.
    bool Fits(std::string_view path) const;

private:
    struct Sign {
        enum class Kind { One, Many };
        Kind kind = Kind::One;
        /// The characters that One stands for.
        std::bitset<256> characters;
    };
    struct Name {
        std::vector<Sign> signs;
        /// It is `**` alone.
        bool isAnyNames = false;
    };
    class Parser;

    static bool FitsName(const Name& name, std::string_view text);

    std::vector<Name> names_;
    bool isValid_ = true;
};

}  // namespace host

#pragma once

#include <string>
#include <string_view>
#include <vector>

/// How conditions compare texts: letter case does not count.
namespace host {

/// A text that two UTF-8 texts share if they differ at most in letter case.
std::string FoldCase(std::string_view utf8);

/// What stars in a pattern stand for.
enum class GlobStyle {
    /// A star stands for any text.
    Name,
    /// A star, a question mark and brackets stay within one name; two stars stand for any text, and `**/`
    /// also for
    /// nothing.
    Path,
};

/// A pattern: `*` stands for any text, `?` for one character, `[a-c]` for one of these, `[!a-c]` for any
/// other. Letter case does not count. A `[` without an end stands for itself.
class Glob {
public:
    Glob(std::string_view pattern, GlobStyle style);

    /// Whether the whole text fits. Takes time in proportion to the product of the lengths at most.
    bool Fits(std::string_view utf8) const;

private:
    enum class TokenKind { Character, One, OneOf, AnyWithinName, Any, StartOfName };
    struct Range {
        char32_t first;
        char32_t last;
    };
    struct Token {
        TokenKind kind;
        char32_t character = 0;
        /// OneOf: the ranges, and whether the character must be outside of them.
        std::vector<Range> ranges = {};
        bool isNegated = false;
    };
    std::size_t AddStars(std::u32string_view pattern, std::size_t place);
    std::size_t AddClass(std::u32string_view pattern, std::size_t place);
    bool Accepts(const Token& token, char32_t character) const;

    GlobStyle style_;
    std::vector<Token> tokens_;
};

}  // namespace host

#pragma once

#include <cstddef>
#include <string_view>

namespace format {

/// The name of a member of a document. Its length is known when the code is compiled, and it consists of
/// ASCII letters only, so it is written as it stands.
class MemberName {
public:
    template <std::size_t Size>
    consteval MemberName(const char (&text)[Size]) : text_(text), length_(Size - 1) {
        for (std::size_t index = 0; index < length_; ++index) {
            const char letter = text[index];
            if ((letter < 'a' || letter > 'z') && (letter < 'A' || letter > 'Z')) {
                throw "a member name has letters only";
            }
        }
    }

    constexpr const char* c_str() const { return text_; }
    constexpr std::string_view View() const { return {text_, length_}; }

    friend constexpr bool operator==(MemberName left, MemberName right) {
        return left.View() == right.View();
    }
    friend constexpr bool operator==(MemberName left, std::string_view right) { return left.View() == right; }

private:
    const char* text_;
    std::size_t length_;
};

}  // namespace format

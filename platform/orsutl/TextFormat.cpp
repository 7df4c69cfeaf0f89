#include "TextFormat.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <utility>

#include "OuString.h"

// The runtime libraries disagree about "%s" in a wide format, convert narrow texts by the locale, and none of
// them says how long the result of a wide format will be. So texts are inserted here, and only numbers go to
// snprintf, one by one.

namespace orsutl::detail {

namespace {

enum class Length { kNone, kChar, kShort, kLong, kLongLong, kIntMax, kSize, kPointerDifference, kLongDouble };

/// One "%..." of a format.
struct Conversion {
    std::string flags;
    int width = 0;
    int precision = -1;
    Length length = Length::kNone;
    wchar_t letter = L'\0';

    bool IsLeftAligned() const { return flags.find('-') != std::string::npos; }
};

/// A list of arguments that functions can pass on: a va_list itself is an array on some platforms.
class Arguments {
public:
    explicit Arguments(std::va_list list) { va_copy(list_, list); }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments() { va_end(list_); }

    template <typename T>
    T Next() {
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the constructor has copied the list.
        return va_arg(list_, T);
    }

private:
    std::va_list list_;
};

class Formatter {
public:
    Formatter(std::wstring_view format, std::va_list arguments) : format_(format), arguments_(arguments) {}

    /// False when the format is wrong.
    bool Run();
    std::wstring TakeText() { return std::move(text_); }

private:
    bool AtEnd() const { return place_ == format_.size(); }
    bool Skip(wchar_t character);
    std::optional<int> ReadNumber();
    std::optional<int> ReadNumberOrArgument();
    Length ReadLength();
    bool ReadConversion(Conversion& conversion);

    bool Put(const Conversion& conversion);
    bool PutSigned(const Conversion& conversion);
    bool PutUnsigned(const Conversion& conversion);
    bool PutFloating(const Conversion& conversion);
    bool PutCharacter(const Conversion& conversion, bool narrow);
    bool PutText(const Conversion& conversion, bool narrow);
    void PutAligned(const Conversion& conversion, std::wstring_view text);
    template <typename T>
    bool PutNumber(const Conversion& conversion, const char* length, T number);

    std::wstring_view format_;
    std::size_t place_ = 0;
    Arguments arguments_;
    std::wstring text_;
};

bool Formatter::Run() {
    while (!AtEnd()) {
        const std::size_t percent = std::min(format_.find(L'%', place_), format_.size());
        text_.append(format_, place_, percent - place_);
        place_ = percent;
        if (!Skip(L'%')) {
            break;
        }
        if (Skip(L'%')) {
            text_ += L'%';
            continue;
        }
        Conversion conversion;
        if (!ReadConversion(conversion) || !Put(conversion)) {
            return false;
        }
    }
    return true;
}

bool Formatter::Skip(wchar_t character) {
    if (AtEnd() || format_[place_] != character) {
        return false;
    }
    ++place_;
    return true;
}

/// The number at the place, 0 where there are no digits; nothing when it is beyond the range of int.
std::optional<int> Formatter::ReadNumber() {
    long long number = 0;
    for (; !AtEnd() && format_[place_] >= L'0' && format_[place_] <= L'9'; ++place_) {
        number = number * 10 + (format_[place_] - L'0');
        if (number > std::numeric_limits<int>::max()) {
            return std::nullopt;
        }
    }
    return static_cast<int>(number);
}

std::optional<int> Formatter::ReadNumberOrArgument() {
    return Skip(L'*') ? arguments_.Next<int>() : ReadNumber();
}

Length Formatter::ReadLength() {
    if (Skip(L'h')) {
        return Skip(L'h') ? Length::kChar : Length::kShort;
    }
    if (Skip(L'l')) {
        return Skip(L'l') ? Length::kLongLong : Length::kLong;
    }
    return Skip(L'j')   ? Length::kIntMax
           : Skip(L'z') ? Length::kSize
           : Skip(L't') ? Length::kPointerDifference
           : Skip(L'L') ? Length::kLongDouble
                        : Length::kNone;
}

bool Formatter::ReadConversion(Conversion& conversion) {
    constexpr std::string_view kFlags = "-+ #0";
    while (!AtEnd()) {
        const auto flag = std::find(kFlags.begin(), kFlags.end(), format_[place_]);
        if (flag == kFlags.end()) {
            break;
        }
        if (conversion.flags.find(*flag) == std::string::npos) {
            conversion.flags += *flag;
        }
        ++place_;
    }
    const std::optional<int> width = ReadNumberOrArgument();
    if (!width || *width == std::numeric_limits<int>::min()) {
        return false;
    }
    conversion.width = *width;
    if (conversion.width < 0) {
        conversion.width = -conversion.width;
        conversion.flags += '-';
    }
    if (Skip(L'.')) {
        const std::optional<int> precision = ReadNumberOrArgument();
        if (!precision) {
            return false;
        }
        conversion.precision = std::max(-1, *precision);
    }
    conversion.length = ReadLength();
    if (AtEnd()) {
        return false;
    }
    conversion.letter = format_[place_++];
    return true;
}

bool Formatter::Put(const Conversion& conversion) {
    const bool isShort = conversion.length == Length::kShort;
    const bool isLong = conversion.length == Length::kLong;
    switch (conversion.letter) {
        case L'd':
        case L'i':
            return PutSigned(conversion);
        case L'u':
        case L'o':
        case L'x':
        case L'X':
            return PutUnsigned(conversion);
        case L'a':
        case L'A':
        case L'e':
        case L'E':
        case L'f':
        case L'F':
        case L'g':
        case L'G':
            return PutFloating(conversion);
        case L'p':
            return PutNumber(conversion, "", arguments_.Next<void*>());
        case L'c':
            return PutCharacter(conversion, isShort);
        case L'C':
            return PutCharacter(conversion, !isLong);
        case L's':
            return PutText(conversion, isShort);
        case L'S':
            return PutText(conversion, !isLong);
        default:
            return false;
    }
}

bool Formatter::PutSigned(const Conversion& conversion) {
    switch (conversion.length) {
        case Length::kNone:
            return PutNumber(conversion, "", arguments_.Next<int>());
        case Length::kChar:
            return PutNumber(conversion, "hh", arguments_.Next<int>());
        case Length::kShort:
            return PutNumber(conversion, "h", arguments_.Next<int>());
        case Length::kLong:
            return PutNumber(conversion, "l", arguments_.Next<long>());
        case Length::kLongLong:
            return PutNumber(conversion, "ll", arguments_.Next<long long>());
        case Length::kIntMax:
            return PutNumber(conversion, "j", arguments_.Next<std::intmax_t>());
        case Length::kSize:
        case Length::kPointerDifference:
            return PutNumber(conversion, "t", arguments_.Next<std::ptrdiff_t>());
        case Length::kLongDouble:
            break;
    }
    return false;
}

bool Formatter::PutUnsigned(const Conversion& conversion) {
    switch (conversion.length) {
        case Length::kNone:
            return PutNumber(conversion, "", arguments_.Next<unsigned int>());
        case Length::kChar:
            return PutNumber(conversion, "hh", arguments_.Next<unsigned int>());
        case Length::kShort:
            return PutNumber(conversion, "h", arguments_.Next<unsigned int>());
        case Length::kLong:
            return PutNumber(conversion, "l", arguments_.Next<unsigned long>());
        case Length::kLongLong:
            return PutNumber(conversion, "ll", arguments_.Next<unsigned long long>());
        case Length::kIntMax:
            return PutNumber(conversion, "j", arguments_.Next<std::uintmax_t>());
        case Length::kSize:
        case Length::kPointerDifference:
            return PutNumber(conversion, "z", arguments_.Next<std::size_t>());
        case Length::kLongDouble:
            break;
    }
    return false;
}

bool Formatter::PutFloating(const Conversion& conversion) {
    switch (conversion.length) {
        case Length::kNone:
        case Length::kLong:
            return PutNumber(conversion, "", arguments_.Next<double>());
        case Length::kLongDouble:
            return PutNumber(conversion, "L", arguments_.Next<long double>());
        default:
            return false;
    }
}

bool Formatter::PutCharacter(const Conversion& conversion, bool narrow) {
    const int character = arguments_.Next<int>();
    if (!narrow) {
        const auto wide = static_cast<wchar_t>(character);
        PutAligned(conversion, {&wide, 1});
    } else if (const char text[] = {static_cast<char>(character), '\0'}; text[0] != '\0') {
        const OuString wide(text, 0);
        PutAligned(conversion, {wide.GetBuffer(), wide.GetLength()});
    } else {
        PutAligned(conversion, {L"\0", 1});
    }
    return true;
}

bool Formatter::PutText(const Conversion& conversion, bool narrow) {
    // A text that is cut need not end with a NUL.
    const auto lengthOf = [&conversion](const auto* text) {
        std::size_t length = 0;
        const std::size_t most = conversion.precision < 0 ? std::numeric_limits<std::size_t>::max()
                                                          : static_cast<std::size_t>(conversion.precision);
        while (length < most && text[length] != 0) {
            ++length;
        }
        return length;
    };
    const void* argument = arguments_.Next<void*>();
    if (narrow && argument != nullptr) {
        const auto* text = static_cast<const char*>(argument);
        const OuString wide(std::string(text, lengthOf(text)).c_str(), 0);
        PutAligned(conversion, {wide.GetBuffer(), wide.GetLength()});
    } else {
        const wchar_t* text = argument == nullptr ? L"(null)" : static_cast<const wchar_t*>(argument);
        PutAligned(conversion, {text, lengthOf(text)});
    }
    return true;
}

void Formatter::PutAligned(const Conversion& conversion, std::wstring_view text) {
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t blanks = width > text.size() ? width - text.size() : 0;
    if (!conversion.IsLeftAligned()) {
        text_.append(blanks, L' ');
    }
    text_ += text;
    if (conversion.IsLeftAligned()) {
        text_.append(blanks, L' ');
    }
}

template <typename T>
bool Formatter::PutNumber(const Conversion& conversion, const char* length, T number) {
    std::string format(1, '%');
    format += conversion.flags;
    if (conversion.width > 0) {
        format += std::to_string(conversion.width);
    }
    if (conversion.precision >= 0) {
        format += '.';
        format += std::to_string(conversion.precision);
    }
    format += length;
    format += static_cast<char>(conversion.letter);
    const int size = std::snprintf(nullptr, 0, format.c_str(), number);
    if (size < 0) {
        return false;
    }
    std::string narrow(static_cast<std::size_t>(size) + 1, '\0');
    std::snprintf(narrow.data(), narrow.size(), format.c_str(), number);
    const OuString wide(narrow.c_str(), 0);
    text_.append(wide.GetBuffer(), wide.GetLength());
    return true;
}

}  // namespace

std::wstring FormatText(std::wstring_view format, std::va_list arguments) {
    Formatter formatter(format, arguments);
    return formatter.Run() ? formatter.TakeText() : std::wstring();
}

}  // namespace orsutl::detail

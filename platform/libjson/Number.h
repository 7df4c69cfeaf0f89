#pragma once

namespace libjson::detail {

/// Where a number ends; or, with the reason, where it fails to be one.
struct NumberScan {
    const char* end;
    const char* fault;
};

constexpr bool IsDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

inline const char* SkipDigits(const char* at, const char* end) noexcept {
    while (at != end && IsDigit(*at)) {
        ++at;
    }
    return at;
}

/// Reads the number, by the grammar of JSON, that a text starts with.
inline NumberScan ScanNumber(const char* at, const char* end) noexcept {
    if (at != end && *at == '-') {
        ++at;
    }
    if (at == end || !IsDigit(*at)) {
        return {at, "a number needs a digit here"};
    }
    if (*at == '0') {
        ++at;
        if (at != end && IsDigit(*at)) {
            return {at, "a number must not begin with a zero that another digit follows"};
        }
    } else {
        at = SkipDigits(at, end);
    }
    if (at != end && *at == '.') {
        ++at;
        if (at == end || !IsDigit(*at)) {
            return {at, "a number needs a digit after its decimal point"};
        }
        at = SkipDigits(at, end);
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        if (at != end && (*at == '+' || *at == '-')) {
            ++at;
        }
        if (at == end || !IsDigit(*at)) {
            return {at, "a number needs a digit in its exponent"};
        }
        at = SkipDigits(at, end);
    }
    return {at, nullptr};
}

}  // namespace libjson::detail

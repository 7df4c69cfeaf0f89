// Nodes as plain values.

#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

#include "Node.h"
#include "Number.h"
#include "libjson.h"
#include "node_views.h"

using namespace libjson::detail;

namespace {

constexpr json_int_t kLeastInteger = std::numeric_limits<json_int_t>::min();
constexpr json_int_t kGreatestInteger = std::numeric_limits<json_int_t>::max();

/// The number that a number or a string spells; empty where it spells none.
std::string_view NumberText(const JSONNode& node) noexcept {
    if (TypeOf(node) != JSON_NUMBER && TypeOf(node) != JSON_STRING) {
        return {};
    }
    const std::string_view text = TextOf(node);
    const char* const end = text.data() + text.size();
    const NumberScan scan = ScanNumber(text.data(), end);
    return scan.fault == nullptr && scan.end == end ? text : std::string_view();
}

bool IsTrue(const JSONNode& node) noexcept {
    return TypeOf(node) == JSON_BOOL && TextOf(node) == "true";
}

/// Whether a number that does not fit into a double is too large, not too small.
bool IsLarge(std::string_view number) noexcept {
    const std::size_t exponentAt = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, exponentAt);
    long long exponent = 0;
    if (exponentAt != std::string_view::npos) {
        std::string_view digits = number.substr(exponentAt + 1);
        if (digits.front() == '+') {
            digits.remove_prefix(1);
        }
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (result.ec == std::errc::result_out_of_range) {
            return digits.front() != '-';
        }
    }
    const auto point = static_cast<long long>(
        mantissa.find('.') == std::string_view::npos ? mantissa.size() : mantissa.find('.'));
    const auto firstDigit = static_cast<long long>(mantissa.find_first_of("123456789"));
    return exponent > firstDigit - point;
}

double ToDouble(std::string_view number) noexcept {
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec != std::errc::result_out_of_range) {
        return value;
    }
    const double limit = IsLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    return number.front() == '-' ? -limit : limit;
}

json_int_t ToInteger(std::string_view number) noexcept {
    if (number.find_first_of("eE") == std::string_view::npos) {
        // The digits before the point are the value truncated towards zero, however large it is.
        json_int_t value = 0;
        const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
        if (result.ec != std::errc::result_out_of_range) {
            return value;
        }
        return number.front() == '-' ? kLeastInteger : kGreatestInteger;
    }
    const double value = ToDouble(number);
    // 2^63: the limit itself is not a double.
    constexpr double kBeyondGreatest = 9223372036854775808.0;
    if (value >= kBeyondGreatest) {
        return kGreatestInteger;
    }
    return value < -kBeyondGreatest ? kLeastInteger : static_cast<json_int_t>(value);
}

bool IsZero(std::string_view number) noexcept {
    return number.substr(0, number.find_first_of("eE")).find_first_of("123456789") == std::string_view::npos;
}

}  // namespace

std::string_view libjson::name_view(const JSONNode& node) noexcept {
    return TextOf(NameOf(node));
}

std::string_view libjson::text_view(const JSONNode& node) noexcept {
    return IsContainer(node) ? std::string_view() : TextOf(node);
}

json_string JSONNode::as_string() const {
    return json_string(libjson::text_view(*this));
}

json_int_t JSONNode::as_int() const noexcept {
    const std::string_view number = NumberText(*this);
    return number.empty() ? json_int_t{IsTrue(*this) ? 1 : 0} : ToInteger(number);
}

double JSONNode::as_float() const noexcept {
    const std::string_view number = NumberText(*this);
    return number.empty() ? (IsTrue(*this) ? 1.0 : 0.0) : ToDouble(number);
}

bool JSONNode::as_bool() const noexcept {
    const std::string_view number = NumberText(*this);
    if (!number.empty()) {
        return !IsZero(number);
    }
    return IsTrue(*this) || (TypeOf(*this) == JSON_STRING && TextOf(*this) == "true");
}

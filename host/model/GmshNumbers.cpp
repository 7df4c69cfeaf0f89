#include "GmshNumbers.h"

#include <bit>
#include <optional>
#include <utility>

#include "Numbers.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::size_t kLongestName = 64;

/// The lowest byte comes first.
std::uint64_t NumberOf(std::string_view bytes) {
    std::uint64_t number = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        number |= std::uint64_t{static_cast<unsigned char>(bytes[index])} << 8U * index;
    }
    return number;
}

}  // namespace

bool GmshNumbers::NextSection(std::string& name) {
    isAtEnd_ = false;
    std::string_view line;
    while (next_.empty() && file_.NextLine(line)) {
        line = Trim(line);
        if (line.starts_with('$') && !line.starts_with("$End")) {
            next_ = line.substr(1, kLongestName);
        }
    }
    name_ = std::exchange(next_, std::string());
    hasEnd_ = false;
    name = name_;
    return !name.empty();
}

bool GmshNumbers::NextLine() {
    isInLine_ = true;
    line_ = {};
    while (!isAtEnd_ && line_.empty()) {
        isAtEnd_ = !file_.NextLine(line_);
        line_ = isAtEnd_ ? std::string_view() : Trim(line_);
    }
    if (line_.starts_with('$')) {
        isAtEnd_ = true;
        hasEnd_ = line_.substr(1) == "End" + name_;
        next_ = line_.starts_with("$End") ? std::string_view() : line_.substr(1, kLongestName);
    }
    return !isAtEnd_;
}

bool GmshNumbers::NextRecord() {
    if (hasBytes_) {
        isInLine_ = false;
        return !isAtEnd_;
    }
    return NextLine();
}

bool GmshNumbers::EndSection() {
    if (hasBytes_ && !isAtEnd_) {
        // A line ends between the bytes and the name.
        constexpr std::size_t kMostBlanks = 2;
        const std::string end = "$End" + name_;
        const bool isNext = file_.Peek(end.size() + kMostBlanks).find(end) != std::string_view::npos;
        isAtEnd_ = true;
        return file_.SkipBehind(end) && isNext;
    }
    const bool isNext = !NextLine();
    while (NextLine()) {
    }
    return isNext && hasEnd_;
}

std::string_view GmshNumbers::Word() {
    return NextWord(line_);
}

bool GmshNumbers::IntegerOf(std::size_t size, std::int64_t& number) {
    if (isInLine_) {
        const std::optional<std::int64_t> value = ParseInteger(NextWord(line_));
        number = value.value_or(0);
        return value.has_value();
    }
    std::string_view bytes;
    if (!file_.Next(size, bytes)) {
        return false;
    }
    const std::uint64_t value = NumberOf(bytes);
    number = size == 4 ? std::bit_cast<std::int32_t>(static_cast<std::uint32_t>(value))
                       : std::bit_cast<std::int64_t>(value);
    return true;
}

bool GmshNumbers::Integer(std::int64_t& number) {
    return IntegerOf(4, number);
}

bool GmshNumbers::Size(std::int64_t& number) {
    return IntegerOf(8, number);
}

bool GmshNumbers::Real(double& number) {
    if (isInLine_) {
        const std::optional<double> value = ParseReal(NextWord(line_));
        number = value.value_or(0);
        return value.has_value();
    }
    std::string_view bytes;
    if (!file_.Next(8, bytes)) {
        return false;
    }
    number = std::bit_cast<double>(NumberOf(bytes));
    return true;
}

}  // namespace host

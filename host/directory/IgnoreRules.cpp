#include "IgnoreRules.h"

#include <algorithm>

namespace host {
namespace {

/// The line without blanks at its end, unless a backslash keeps one.
std::string_view WithoutBlanks(std::string_view line) {
    std::size_t end = 0;
    for (std::size_t index = 0; index < line.size(); ++index) {
        if (line[index] == '\\' && index + 1 < line.size()) {
            ++index;
            end = index + 1;
        } else if (line[index] != ' ') {
            end = index + 1;
        }
    }
    return line.substr(0, end);
}

}  // namespace

void IgnoreRules::AddLines(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (!line.starts_with('#')) {
            AddRule(WithoutBlanks(line));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void IgnoreRules::AddRule(std::string_view line) {
    const bool takesIn = line.starts_with('!');
    if (takesIn) {
        line.remove_prefix(1);
    }
    const bool isForDirectories = line.ends_with('/');
    if (isForDirectories) {
        line.remove_suffix(1);
    }
    if (line.empty()) {
        return;
    }
    const bool isForNames = line.find('/') == std::string_view::npos;
    if (line.starts_with('/')) {
        line.remove_prefix(1);
    }
    rules_.push_back({GlobPattern(line), takesIn, isForDirectories, isForNames});
}

IgnoreRules::Verdict IgnoreRules::About(std::string_view path, bool isDirectory) const {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const auto rule = std::find_if(rules_.rbegin(), rules_.rend(), [&](const Rule& candidate) {
        return (isDirectory || !candidate.isForDirectories) &&
               candidate.pattern.Fits(candidate.isForNames ? name : path);
    });
    if (rule == rules_.rend()) {
        return Verdict::None;
    }
    return rule->takesIn ? Verdict::TakenIn : Verdict::LeftOut;
}

}  // namespace host

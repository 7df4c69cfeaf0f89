#include "Description.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::size_t kMostRead = std::size_t{64} * 1024;

bool HasWords(std::string_view line) {
    return std::ranges::any_of(line, [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
               (byte >= 'a' && byte <= 'z');
    });
}

bool IsBlank(char character) {
    return character == ' ' || character == '\t';
}

/// A line of at least three equals signs or dashes, which underlines a heading.
bool IsUnderline(std::string_view line) {
    return line.size() >= 3 && (line[0] == '=' || line[0] == '-') &&
           line.find_first_not_of(line[0]) == std::string_view::npos;
}

/// The heading on a line that begins with one to six number signs (Markdown) or equals signs (AsciiDoc) and a
/// blank.
std::optional<std::string_view> MarkedHeading(std::string_view line) {
    const char mark = line.empty() ? '\0' : line.front();
    if (mark != '#' && mark != '=') {
        return std::nullopt;
    }
    constexpr std::size_t kMostMarks = 6;
    const std::size_t end = std::min(line.find_first_not_of(mark), line.size());
    if (end > kMostMarks || end == line.size() || !IsBlank(line[end])) {
        return std::nullopt;
    }
    std::string_view heading = Trim(line.substr(end));
    const std::size_t last = heading.find_last_not_of(mark);
    // Closing marks follow a blank; "C#" keeps its own.
    if (last != std::string_view::npos && IsBlank(heading[last])) {
        heading = Trim(heading.substr(0, last));
    }
    return HasWords(heading) ? std::optional(heading) : std::nullopt;
}

class LineReader {
public:
    explicit LineReader(std::string_view text) : rest_(text) {}

    bool Next(std::string_view& line) {
        if (rest_.empty()) {
            return false;
        }
        const std::size_t end = std::min(rest_.find_first_of("\n\r"), rest_.size());
        line = Trim(rest_.substr(0, end));
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return true;
    }

    /// Skips the lines up to the first one that meets the condition, and that one too.
    template <typename Condition>
    void SkipThrough(Condition condition) {
        std::string_view line;
        while (Next(line) && !condition(line)) {
        }
    }

private:
    std::string_view rest_;
};

}  // namespace

std::string FirstHeading(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    const std::size_t endOfFrontMatter = text.find("\n---", 3);
    if ((text.starts_with("---\n") || text.starts_with("---\r\n")) &&
        endOfFrontMatter != std::string_view::npos) {
        text.remove_prefix(endOfFrontMatter + 4);
    }
    LineReader lines(text);
    std::string_view line;
    std::string_view previous;
    std::optional<std::string_view> firstLine;
    while (lines.Next(line)) {
        if (line.starts_with("<!--")) {
            if (line.find("-->") == std::string_view::npos) {
                lines.SkipThrough(
                    [](std::string_view next) { return next.find("-->") != std::string_view::npos; });
            }
            continue;
        }
        if (line.starts_with("```") || line.starts_with("~~~")) {
            const std::string_view fence = line.substr(0, 3);
            lines.SkipThrough([&](std::string_view next) { return next.starts_with(fence); });
            continue;
        }
        if (const std::optional<std::string_view> heading = MarkedHeading(line)) {
            return std::string(*heading);
        }
        if (IsUnderline(line) && HasWords(previous)) {
            return std::string(previous);
        }
        if (!firstLine && HasWords(line)) {
            firstLine = line;
        }
        previous = line;
    }
    return std::string(firstLine.value_or(std::string_view()));
}

std::string DescribeDirectory(const ScannedDirectory& directory) {
    for (const std::string_view beginning : {std::string_view("README"), std::string_view("NOTE")}) {
        for (const ScannedFile& file : directory.files) {
            const OuString name = ToOuString(file.name);
            const bool isText = file.type == CAE_FILE_REPORT && file.format == CAE_FORMAT_ASCII;
            if (!isText || !ToUpperAscii(name.GetAnsiBuffer()).starts_with(beginning)) {
                continue;
            }
            if (file.isRemembered) {
                return {};
            }
            FileSample sample;
            const std::error_code error = ReadSample(directory.path / file.name, kMostRead, 0, sample);
            ThrowIfOutOfMemory(error);
            if (error) {
                continue;
            }
            std::string heading = FirstHeading(sample.head);
            if (!heading.empty()) {
                return heading;
            }
        }
    }
    return {};
}

}  // namespace host

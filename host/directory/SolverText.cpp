#include "SolverText.h"

#include "host/model/InputLines.h"
#include "host/system/Text.h"

namespace host {

Lines SplitLines(const FileSample& sample) {
    Lines lines;
    const auto split = [&](std::string_view text, bool isCutInFront) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            if (!isCutInFront) {
                lines.push_back(Trim(text.substr(0, end)));
            }
            isCutInFront = false;
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    };
    split(sample.head, false);
    split(sample.tail, true);
    return lines;
}

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

std::string FirstWord(std::string_view line) {
    return ToUpperAscii(line.substr(0, std::min(line.find_first_of(" \t,=/*", 1), line.size())));
}

std::string UpperBeginning(std::string_view line, std::size_t most) {
    return ToUpperAscii(line.substr(0, std::min(line.size(), most)));
}

void AddInclude(SolverInput& input, std::string_view text) {
    std::string reference = FileReference(text);
    if (!reference.empty()) {
        input.includes.push_back(std::move(reference));
    }
}

InputRole RoleOf(bool isDeck, bool hasMesh, bool hasOther) {
    if (isDeck) {
        return InputRole::Deck;
    }
    if (hasOther) {
        return InputRole::Include;
    }
    return hasMesh ? InputRole::Mesh : InputRole::Unclear;
}

}  // namespace host

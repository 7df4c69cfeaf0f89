// Reads any text as a document of KorvaneExchange, as a text and as a file: what libjson accepts is the
// document, and anything else has a fault at the first place from which nothing makes a document of the text.

#include <korvaneexchange/ParseDocument.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Expect.h"
#include "FuzzedFiles.h"
#include "exchange/DocumentFault.h"

namespace {

using korvane::exchange::DocumentError;
using korvane::exchange::FaultOfMessage;

bool IsValid(const std::string& text) {
    return libjson::is_valid(json_string(text.data(), text.size()));
}

/// What closes the brackets that are open at the end of a text, and whether it ends in a string, for somebody
/// who only knows brackets and quotes.
struct Open {
    std::string closings;
    bool isInString = false;
};

Open FindOpen(std::string_view text) {
    Open open;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (character == '"') {
            open.isInString = !open.isInString;
        } else if (open.isInString) {
            at += character == '\\' ? 1 : 0;
        } else if (character == '{' || character == '[') {
            open.closings += character == '{' ? '}' : ']';
        } else if ((character == '}' || character == ']') && !open.closings.empty()) {
            open.closings.pop_back();
        }
    }
    std::ranges::reverse(open.closings);
    return open;
}

/// Whether there is a way to go on after the text that makes it a document.
bool CanBeCompleted(std::string_view text) {
    constexpr std::array kRests = {"",     "0",   "\"\":0", ":0",  "rue", "ue", "e",
                                   "alse", "lse", "se",     "ull", "ll",  "l"};
    // After a character, a backslash, and the digits of a code.
    constexpr std::array kStringRests = {"\"", "\"\"", "n\"", "0\"", "00\"", "000\"", "0000\""};
    const Open open = FindOpen(text);
    const std::string begin(text);
    if (!open.isInString) {
        for (const char* const rest : kRests) {
            if (IsValid(begin + rest + open.closings)) {
                return true;
            }
        }
        return false;
    }
    for (const char* const rest : kStringRests) {
        for (const char* const value : {"", ":0"}) {
            if (IsValid(begin + rest + value + open.closings)) {
                return true;
            }
        }
    }
    return false;
}

/// Line and column of a place, counted byte by byte.
std::pair<std::size_t, std::size_t> CountTo(std::string_view text, std::size_t place) {
    std::size_t line = 1;
    std::size_t column = 1;
    for (std::size_t at = 0; at < place; ++at) {
        const bool isBeforeFeed = text.substr(at, 2) == "\r\n";
        const bool isEnd = text[at] == '\n' || (text[at] == '\r' && !isBeforeFeed);
        line += isEnd ? 1 : 0;
        column = isEnd ? 1 : column + 1;
    }
    return {line, column};
}

/// Whether the text ends within one of the words that are values: all of it is what is wrong then.
bool IsPartOfAWord(std::string_view text) {
    for (const std::string_view word : {"true", "false", "null"}) {
        if (!text.empty() && text.size() < word.size() && word.starts_with(text)) {
            return true;
        }
    }
    return false;
}

void ExpectFault(const DocumentError& fault, std::string_view text) {
    const std::size_t place = fault.Offset();
    Expect(place <= text.size(), "a fault lies in the text");
    Expect(std::pair(fault.Line(), fault.Column()) == CountTo(text, place), "line and column are counted");
    const auto isAscii = [&](std::size_t at) { return static_cast<unsigned char>(text[at]) < 0x80; };
    Expect(place == 0 || place == text.size() || isAscii(place) || isAscii(place - 1),
           "a fault is at the beginning of a character");
    Expect(!fault.Reason().empty() && std::string_view(fault.what()).ends_with(fault.Reason()),
           "a fault has a reason");

    Expect(CanBeCompleted(text.substr(0, place)), "what is before a fault can become a document");
    if (place < text.size() && !IsPartOfAWord(text.substr(place))) {
        Expect(!CanBeCompleted(text), "with its fault a text cannot become a document");
    }

    const DocumentError read = FaultOfMessage(fault.what(), text);
    Expect(read.Line() == fault.Line() && read.Column() == fault.Column() && read.Offset() == place &&
               read.Reason() == fault.Reason(),
           "a message has the place and the reason");
}

/// The text itself as what another library says of it.
void ExpectFaultOfMessage(std::string_view text) {
    const DocumentError fault = FaultOfMessage(text, text);
    Expect(fault.Offset() <= text.size(), "the fault of a message lies in the text");
    Expect((fault.Line() == 0) == (fault.Column() == 0), "a message has a whole place or none");
    Expect(fault.Line() != 0 || (fault.Offset() == 0 && fault.Reason() == text),
           "a message without a place is the reason");
}

template <class Read>
std::optional<DocumentError> Try(const Read& read, JSONNode& document) {
    try {
        document = read();
        return std::nullopt;
    } catch (const DocumentError& error) {
        return error;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path file = PlaceInMemory("document.json");
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    JSONNode document;
    const std::optional<DocumentError> fault =
        Try([&] { return korvane::exchange::ParseDocument(text); }, document);
    Expect(IsValid(std::string(text)) == !fault, "a text is a document if libjson accepts it");
    if (fault) {
        ExpectFault(*fault, text);
    } else {
        Expect(document == libjson::parse(json_string(text.data(), size)),
               "a document is what libjson reads");
    }

    WriteBytes(file, text);
    JSONNode ofFile;
    const std::optional<DocumentError> faultOfFile =
        Try([&] { return korvane::exchange::ReadDocument(file); }, ofFile);
    Expect(faultOfFile.has_value() == fault.has_value() && ofFile == document,
           "a file is read as its text is");
    Expect(!fault || (faultOfFile->Offset() == fault->Offset() &&
                      std::string_view(faultOfFile->what()) == fault->what()),
           "a file has the fault of its text");
    std::filesystem::remove(file);
    ExpectFaultOfMessage(text);
    return 0;
}

// Takes the heading out of any text and shows it: one line of the text, printable.

#include <OuString.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Expect.h"
#include "host/directory/Description.h"
#include "host/system/Notes.h"
#include "host/system/Text.h"

namespace {

void ExpectPrintable(const std::string& text) {
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        Expect(byte >= 0x20 && byte != 0x7F, "printable text has no control characters");
    }
    Expect(host::Printable(std::string_view(text)) == text, "printable text stays as it is");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string heading = host::FirstHeading(text);
    Expect(text.find(heading) != std::string_view::npos, "a heading is a part of its text");
    Expect(heading.find_first_of("\n\r") == std::string::npos, "a heading is one line");
    Expect(host::Trim(heading) == heading, "a heading has no blanks at its ends");
    ExpectPrintable(host::Printable(std::string_view(heading)));
    ExpectPrintable(host::Printable(text));
    static_cast<void>(host::Excerpt(text));
    static_cast<void>(host::DisplayWidth(host::Printable(text)));
    Expect(host::CutUtf8(text, 10).size() <= 10, "a text is cut");
    return 0;
}

#include "FileFormat.h"

#include <algorithm>
#include <array>

namespace host {
namespace {

using namespace std::string_view_literals;

constexpr std::array kBinaryBeginnings = {"\xFF\xFE"sv, "\xFE\xFF"sv, "%PDF-"sv};

constexpr std::string_view kControlsOfText = "\b\t\n\v\f\r\x1A\x1B"sv;

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 && kControlsOfText.find(byte) == std::string_view::npos;
}

}  // namespace

_tagFileFormat DetectFormat(std::string_view head) {
    const bool opensAsBinary = std::ranges::any_of(
        kBinaryBeginnings, [&](std::string_view beginning) { return head.starts_with(beginning); });
    return opensAsBinary || std::ranges::any_of(head, IsControl) ? CAE_FORMAT_BINARY : CAE_FORMAT_ASCII;
}

}  // namespace host

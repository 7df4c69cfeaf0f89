#include <algorithm>
#include <cstdio>
#include <vector>

#include "SecondReading.h"

namespace reference {
namespace {

/// What is escaped together: the bytes of a code point, or a byte that belongs to none.
struct Piece {
    unsigned code;
    std::string bytes;
    bool isByte;
};

unsigned ByteAt(const std::string& text, std::size_t position) {
    return static_cast<unsigned char>(text[position]);
}

std::size_t SequenceLength(unsigned lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC0 || lead >= 0xF8) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// The UTF-8 sequence at a place, including a surrogate's three bytes; otherwise the one byte that is there.
Piece SequenceAt(const std::string& text, std::size_t position) {
    const unsigned lead = ByteAt(text, position);
    const Piece byte{lead, text.substr(position, 1), true};
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || position + length > text.size()) {
        return byte;
    }
    const unsigned leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    const unsigned smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    unsigned code = lead & leadBits[length];
    for (std::size_t i = 1; i < length; ++i) {
        if ((ByteAt(text, position + i) & 0xC0) != 0x80) {
            return byte;
        }
        code = (code << 6) | (ByteAt(text, position + i) & 0x3F);
    }
    if (code < smallest[length] || code > 0x10FFFF) {
        return byte;
    }
    return {code, text.substr(position, length), false};
}

std::string Escape(unsigned code) {
    char escape[16];
    std::snprintf(escape, sizeof escape, "\\u%04X", code);
    return escape;
}

/// An escape that a reader would join with a high surrogate before it.
bool IsLowSurrogate(unsigned code) {
    return code >= 0xDC00 && code <= 0xDFFF;
}
bool IsHighSurrogate(unsigned code) {
    return code >= 0xD800 && code <= 0xDBFF;
}
/// The escapes that stand for single bytes.
bool StandsForByte(unsigned code) {
    return code >= 0xDC80 && code <= 0xDCFF;
}

/// A run of bytes beyond ASCII, from its end to its start, as what follows decides how a surrogate is
/// written: one that a reader would take for half of a pair, or for a byte, is written as its three bytes.
std::string EscapeUtf8(const std::string& run) {
    std::vector<Piece> pieces;
    for (std::size_t position = 0; position < run.size(); position += pieces.back().bytes.size()) {
        pieces.push_back(SequenceAt(run, position));
    }
    std::string written;
    bool isLowNext = false;
    std::ranges::reverse(pieces);
    for (const Piece& piece : pieces) {
        const bool asBytes =
            piece.isByte || StandsForByte(piece.code) || (IsHighSurrogate(piece.code) && isLowNext);
        std::string escapes;
        if (asBytes) {
            for (const char byte : piece.bytes) {
                escapes += Escape(0xDC00 + static_cast<unsigned char>(byte));
            }
        } else if (piece.code >= 0x10000) {
            const unsigned offset = piece.code - 0x10000;
            escapes = Escape(0xD800 + (offset >> 10)) + Escape(0xDC00 + (offset & 0x3FF));
        } else {
            escapes = Escape(piece.code);
        }
        isLowNext = asBytes || IsLowSurrogate(piece.code);
        written.insert(0, escapes);
    }
    return written;
}

std::string EscapeBytes(const std::string& run) {
    std::string written;
    for (const char byte : run) {
        written += Escape(static_cast<unsigned char>(byte));
    }
    return written;
}

bool IsAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

std::string EscapeAscii(char character) {
    const std::map<char, std::string> named = {{'"', "\\\""}, {'\\', "\\\\"}, {'/', "\\/"},  {'\b', "\\b"},
                                               {'\t', "\\t"}, {'\n', "\\n"},  {'\f', "\\f"}, {'\r', "\\r"}};
    if (const auto found = named.find(character); found != named.end()) {
        return found->second;
    }
    const unsigned code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F ? Escape(code) : std::string(1, character);
}

std::string Quote(const json_string& value) {
    const bool isUtf8 = libjson::get_text_units() == libjson::text_units::utf8;
    const std::string text(value.c_str(), value.size());
    std::string written = "\"";
    for (std::size_t start = 0, end = 0; start < text.size(); start = end) {
        if (IsAscii(text[start])) {
            written += EscapeAscii(text[start]);
            end = start + 1;
            continue;
        }
        while (end < text.size() && !IsAscii(text[end])) {
            ++end;
        }
        const std::string run = text.substr(start, end - start);
        written += isUtf8 ? EscapeUtf8(run) : EscapeBytes(run);
    }
    return written + "\"";
}

}  // namespace

std::string WriteText(const JSONNode& node) {
    if (node.type() == JSON_STRING) {
        return Quote(node.as_string());
    }
    if (node.type() != JSON_NODE && node.type() != JSON_ARRAY) {
        return node.as_string().c_str();
    }
    std::string text;
    for (const JSONNode& child : node) {
        text += text.empty() ? "" : ",";
        text += node.type() == JSON_NODE ? Quote(child.name()) + ":" : "";
        text += WriteText(child);
    }
    return node.type() == JSON_NODE ? "{" + text + "}" : "[" + text + "]";
}

}  // namespace reference

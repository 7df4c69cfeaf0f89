#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "Access.h"
#include "EmbeddedRecording.h"
#include "OddAnswers.h"
#include "Recorded.h"

namespace korvane {
namespace {

struct Recording {
    bool isRunning = false;
    int depth = 0;
    std::vector<std::string> notes;
};

thread_local Recording recording;
/// A thread's first use needs memory for the end of the thread, and glibc aborts if there is none. The main
/// thread has it from the beginning.
[[maybe_unused]] const bool isMainThreadRecording = recording.isRunning;

constexpr std::uint32_t kFirstLeadSurrogate = 0xD800;
constexpr std::uint32_t kFirstTrailSurrogate = 0xDC00;
constexpr std::uint32_t kLastTrailSurrogate = 0xDFFF;
/// Lone surrogates from here on are bytes that were not text when they were read.
constexpr std::uint32_t kFirstKeptByte = 0xDC80;
constexpr std::uint32_t kLastKeptByte = 0xDCFF;

std::uint32_t NumberOf(wchar_t character) {
    return static_cast<std::make_unsigned_t<wchar_t>>(character);
}

void AppendByte(std::string& text, std::uint32_t byte) {
    text += static_cast<char>(byte & 0xFFU);
}

void AppendUtf8(std::string& text, std::uint32_t character) {
    if (character < 0x80 || (character >= kFirstKeptByte && character <= kLastKeptByte)) {
        AppendByte(text, character);
    } else if (character < 0x800) {
        AppendByte(text, 0xC0U | (character >> 6U));
        AppendByte(text, 0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        AppendByte(text, 0xE0U | (character >> 12U));
        AppendByte(text, 0x80U | ((character >> 6U) & 0x3FU));
        AppendByte(text, 0x80U | (character & 0x3FU));
    } else {
        AppendByte(text, 0xF0U | (character >> 18U));
        AppendByte(text, 0x80U | ((character >> 12U) & 0x3FU));
        AppendByte(text, 0x80U | ((character >> 6U) & 0x3FU));
        AppendByte(text, 0x80U | (character & 0x3FU));
    }
}

}  // namespace

void StartRecording() {
    recording.notes.clear();
    recording.isRunning = true;
}

std::vector<std::string> TakeRecording() {
    recording.isRunning = false;
    return std::exchange(recording.notes, {});
}

bool Recorded::Enter() noexcept {
    return recording.depth++ == 0 && (recording.isRunning || HasOddAnswers());
}

void Recorded::Leave() noexcept {
    --recording.depth;
}

void Recorded::Keep(const std::string& note) {
    if (recording.isRunning) {
        recording.notes.push_back(note);
    }
}

void Recorded::Append(std::string& note, const CAEObjectIdentification& object) {
    note += '#';
    note += std::to_string(Access::Id(object));
}

void Recorded::Append(std::string& note, const CAEObjectIdentification* object) {
    if (object != nullptr) {
        Append(note, *object);
    } else {
        note += "null";
    }
}

void Recorded::Append(std::string& note, const OuString& text) {
    const wchar_t* const buffer = text.GetBuffer();
    const std::size_t length = text.GetLength();
    note += '"';
    for (std::size_t i = 0; i < length; ++i) {
        std::uint32_t character = NumberOf(buffer[i]);
        if (character >= kFirstLeadSurrogate && character < kFirstTrailSurrogate && i + 1 < length) {
            const std::uint32_t trail = NumberOf(buffer[i + 1]);
            if (trail >= kFirstTrailSurrogate && trail <= kLastTrailSurrogate) {
                character =
                    0x10000 + ((character - kFirstLeadSurrogate) << 10U) + (trail - kFirstTrailSurrogate);
                ++i;
            }
        }
        AppendUtf8(note, character);
    }
    note += '"';
}

void Recorded::Append(std::string& note, const OuString* text) {
    if (text != nullptr) {
        Append(note, *text);
    } else {
        note += "null";
    }
}

void Recorded::Append(std::string& note, bool value) {
    note += value ? "true" : "false";
}

void Recorded::Append(std::string& note, int value) {
    note += std::to_string(value);
}

}  // namespace korvane

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "libjson.h"

namespace libjson::detail {

/// Where pages of text come from and go to.
class TextPages {
public:
    /// The page to write next, which has kPageBytes; it may be the one before.
    virtual char* Next() = 0;
    /// Takes what was written to the last page.
    virtual void Take(std::size_t length) = 0;

    static constexpr std::size_t kPageBytes = std::size_t{16} * 1024;

protected:
    ~TextPages() = default;
};

/// The one place where the text of documents is made: separators, names, escapes and layout.
class TextEmitter {
public:
    TextEmitter(TextPages& pages, bool isFormatted);

    /// What stands before a member or an element: a comma where there is one before it, and a new line.
    void BeginElement() {
        if (needsComma_) {
            Put(',');
        }
        needsComma_ = true;
        if (isFormatted_ && !isArray_.empty()) {
            BreakLine();
        }
    }

    /// What stands before the value of a member: what BeginElement writes, and a name that needs no escape.
    void BeginMember(std::string_view name);

    /// A name that needs no escape, with its colon.
    void PutPlainName(std::string_view name);
    void PutName(std::string_view name) {
        PutString(name);
        PutColon();
    }
    /// A name as those of nodes are.
    void PutNodeName(std::string_view name) {
        PutNodeString(name);
        PutColon();
    }

    /// A text with its quotes.
    void PutString(std::string_view text);
    /// The same for a text as those of nodes are: all of each block of kBlock characters, counted from
    /// address 0, that a character of it is in can be read.
    /// Measured: with PutString for them too, writing takes 1.10 times as long (1,111 objects, gcc 12).
    void PutNodeString(std::string_view text);
    /// Characters as they are.
    void PutRaw(std::string_view characters);

    void Open(bool isArray) {
        Put(isArray ? '[' : '{');
        isArray_.push_back(isArray ? 1 : 0);
        needsComma_ = false;
    }
    void Close() {
        const bool isArray = isArray_.back() != 0;
        isArray_.pop_back();
        // Nothing stands between the brackets of an empty container.
        if (isFormatted_ && needsComma_) {
            BreakLine();
        }
        Put(isArray ? ']' : '}');
        needsComma_ = true;
    }

    bool IsFormatted() const noexcept { return isFormatted_; }
    /// In compact text: room for an element, after the comma where there is one before it.
    char* RoomForElement(std::size_t bytes) {
        char* to = Room(1 + bytes);
        if (needsComma_) {
            *to++ = ',';
        }
        needsComma_ = true;
        return to;
    }
    static constexpr std::size_t kMostRoom = 512;
    /// Room for that many bytes and a block more, at most kMostRoom. What is written there counts after
    /// Advance.
    char* Room(std::size_t bytes) {
        if (static_cast<std::size_t>(end_ - at_) < bytes) {
            Finish();
            NextPage();
        }
        return at_;
    }
    void Advance(char* to) noexcept { at_ = to; }

    /// Hands over what was written to the last page. Nothing may be written after it.
    void Finish() { pages_.Take(static_cast<std::size_t>(at_ - page_)); }

private:
    void NextPage();

    void Put(char character) {
        char* const to = Room(1);
        *to = character;
        Advance(to + 1);
    }
    void PutLongString(std::string_view text);
    void PutColon();
    void BreakLine();
    const char* PutSpecial(const char* at, const char* end);
    const char* PutUtf8Special(const char* at, const char* end);
    const char* PutHighSurrogates(const char* at, const char* end);
    void PutCode(std::uint32_t code);

    TextPages& pages_;
    char* page_ = nullptr;
    char* at_ = nullptr;
    char* end_ = nullptr;
    bool needsComma_ = false;
    const bool isFormatted_;
    const bool isUtf8_;
    /// Of every open container.
    std::vector<char> isArray_;
};

}  // namespace libjson::detail

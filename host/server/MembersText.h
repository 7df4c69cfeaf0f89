#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Whether a text is written as it is, between its quotes.
bool NeedsNoEscape(std::string_view text);

/// A place in the members of a node at which a document has something else.
struct MembersEdit {
    enum class Kind {
        /// After "type": where the key comes if it has no place.
        AfterType,
        /// The value of "dbkey".
        Key,
        /// A second "dbkey", with the comma before it.
        RepeatedKey,
        /// The arrays of these names, or the objects in their place.
        Children,
        Files,
    };
    Kind kind;
    std::size_t begin;
    std::size_t end;
};

/// What the text of a node's members has, in its order.
struct MembersLayout {
    std::vector<MembersEdit> edits;
    bool isEmpty = true;
    bool hasKey = false;
    bool hasType = false;
    bool hasSubType = false;
};

/// Finds the places in the members of nodes without making nodes of them.
class MembersText {
public:
    MembersText();

    /// Returns the text as JSONNode::write writes it, with its layout. The text, which has a NUL after its
    /// end, is nearly always written so already: then it is returned itself. The result is there until the
    /// next call. Throws std::invalid_argument if the text cannot be read or is not an object.
    std::string_view Read(std::string_view text, MembersLayout& layout);

private:
    bool Scan(std::string_view text, bool isWritten, MembersLayout& layout);
    void AddMember(std::string_view text, std::string_view name, const char* value, MembersLayout& layout);
    bool SkipMember();
    bool SkipValue();
    bool SkipName();
    bool SkipText();
    bool SkipEscape();
    bool SkipCode();
    bool SkipWordOrNumber();
    bool SkipNumber();

    /// Whether code points beyond U+00FF are written as they were read, and not as the bytes of a code page.
    bool keepsCodePoints_;
    /// Whether JSONNode::write has written the text that is scanned, so that all its escapes are right.
    bool isWritten_ = false;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    /// The closing brackets of the values around the place.
    std::string open_;
    std::string rewritten_;
};

}  // namespace host

#pragma once

/// @file
/// All that the product takes from the suite: its headers, and what these may name or declare in another way.
/// The rest of the product includes none of them, names no enumerator, does not know how lists and arrays are
/// walked or what is const in a text, and calls the operations of the object model on objects that are not
/// const. To build against a suite with other headers, edit this file alone (docs/embedding.md says how).

#include <CAEFile.h>
#include <CAEFunctions.h>
#include <CAEObject.h>
#include <CAEPart.h>
#include <CAEProject.h>
#include <CAERunAssembly.h>
#include <CAESubAssembly.h>
#include <CAETypes.h>
#include <CAEViewItem.h>
#include <OuArray.h>
#include <OuCRTAllocator.h>
#include <OuList.h>
#include <OuString.h>
#include <OuStringFileName.h>
#include <OuTemplateArray.h>
#if defined(_WIN32)
#include <PimuUtil.h>
#endif

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "format/Kinds.h"

// Enumerations, under names of our own. Their numbers are fixed.

inline format::Kind KindOf(CAEObject& object) {
    return static_cast<format::Kind>(object.getType());
}

inline _tagCAEObjectType ToObjectType(format::Kind kind) {
    return static_cast<_tagCAEObjectType>(kind);
}

inline format::FileType FileTypeOf(CAEFile& file) {
    return static_cast<format::FileType>(file.getFileType());
}

inline _tagFileType ToFileType(format::FileType type) {
    return static_cast<_tagFileType>(type);
}

inline format::FileFormat FileFormatOf(CAEFile& file) {
    return static_cast<format::FileFormat>(file.getFileFormat());
}

inline _tagFileFormat ToFileFormat(format::FileFormat format) {
    return static_cast<_tagFileFormat>(format);
}

// Texts.

/// A text that the object model owns; a null one counts as empty.
inline OuString TextOfModel(const char* text) {
    return text == nullptr ? OuString() : OuString(text, 0);
}

/// A text in the ANSI code page, which has no NUL, widened; without a copy of it where the suite's texts can.
template <typename Text = OuString>
Text TextFromAnsi(std::string_view text) {
    if constexpr (requires { Text::FromAnsi(text.data(), text.size()); }) {
        return Text::FromAnsi(text.data(), text.size());
    } else {
        return Text(std::string(text).c_str(), 0);
    }
}

inline bool IsEmpty(const OuString& text) {
    return text.IsEmpty();
}

/// The characters, ended by a NUL; valid until the text is changed or destroyed.
inline const wchar_t* CharactersOf(const OuString& text) {
    return text.GetBuffer();
}

/// How many characters it has, NUL characters among them; those before the first NUL where the suite's texts
/// do not tell.
template <typename Text>
std::size_t LengthOf(const Text& text) {
    if constexpr (requires { text.GetLength(); }) {
        return text.GetLength();
    } else {
        return std::char_traits<wchar_t>::length(CharactersOf(text));
    }
}

/// The characters in the ANSI code page.
inline const char* AnsiFormOf(const OuString& text) {
    return text.GetAnsiBuffer();
}

inline bool AreEqual(const OuString& left, const OuString& right) {
    return left.Compare(right) == 0;
}

inline bool AreEqualInAnyCase(const OuString& left, const OuString& right) {
    return left.CompareNoCase(right) == 0;
}

// Arrays.

/// The texts that the object model fills in.
using TextArray = OuTemplateArray<OuString, OuCRTAllocator>;

inline int SizeOf(TextArray& texts) {
    return texts.GetSize();
}

/// The text itself where the array gives that, a copy where it gives one.
inline decltype(auto) TextAt(TextArray& texts, int index) {
    return texts[index];
}

inline int SizeOf(OuArray& numbers) {
    return numbers.GetSize();
}

/// A slot as it is: the number stands in its low 32 bits.
inline std::uintptr_t SlotAt(OuArray& numbers, int index) {
    return reinterpret_cast<std::uintptr_t>(numbers.GetAt(index));
}

// Lists.

/// The way through a list, from its head to its tail. The list must stay as it is meanwhile.
class ListWalk {
public:
    explicit ListWalk(OuList& list) : list_(list), next_(list.GetHeadPosition()) {}
    ListWalk(const ListWalk&) = delete;
    ListWalk& operator=(const ListWalk&) = delete;

    /// False behind the tail, where there is nothing to take.
    bool HasNext() const { return next_ != nullptr; }
    /// Takes what stands next: in a list of objects (null among them), or in one of identifiers.
    CAEObject* NextObject() { return static_cast<CAEObject*>(list_.GetNext(next_)); }
    int NextIdentifier() { return list_.GetNextID(next_); }

private:
    OuList& list_;
    OuListPosition* next_;
};

#pragma once

/// @file
/// What objectjson/ObjectModel.h is where the product is built against the strange suite, whose headers
/// make-suite writes.

#include <caeassemblies.hxx>
#include <caefile.hxx>
#include <caefunctions.hxx>
#include <caeobject.hxx>
#include <caeproject.hxx>
#include <caetypes.hxx>
#include <ouarray.hxx>
#include <oucrtallocator.hxx>
#include <oulist.hxx>
#include <oustring.hxx>
#include <oustringfilename.hxx>
#include <outemplatearray.hxx>
#if defined(_WIN32)
#include <pimuutil.hxx>
#endif

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "format/Kinds.h"

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

inline OuString TextOfModel(const char* text) {
    return text == nullptr ? OuString() : OuString(text, 0);
}

/// The strange suite takes narrow texts only up to a NUL.
inline OuString TextFromAnsi(std::string_view text) {
    return OuString(std::string(text).c_str(), 0);
}

/// The strange suite's texts answer only those who might change them. No question changes what they hold.
inline OuString& Asked(const OuString& text) {
    return const_cast<OuString&>(text);
}

inline bool IsEmpty(const OuString& text) {
    return Asked(text).IsEmpty();
}

inline const wchar_t* CharactersOf(const OuString& text) {
    return text.Characters();
}

inline std::size_t LengthOf(const OuString& text) {
    return text.NumberOfCharacters();
}

inline const char* AnsiFormOf(const OuString& text) {
    return Asked(text).GetAnsiBuffer();
}

inline bool AreEqual(const OuString& left, const OuString& right) {
    return Asked(left).Compare(right) == 0;
}

inline bool AreEqualInAnyCase(const OuString& left, const OuString& right) {
    return Asked(left).CompareNoCase(right) == 0;
}

using TextArray = OuTemplateArray<OuString, OuCRTAllocator>;

inline int SizeOf(TextArray& texts) {
    return texts.Count();
}

inline OuString TextAt(TextArray& texts, int index) {
    return texts[index];
}

inline int SizeOf(OuArray& numbers) {
    return numbers.Count();
}

inline std::uintptr_t SlotAt(OuArray& numbers, int index) {
    return reinterpret_cast<std::uintptr_t>(numbers.Slot(index));
}

class ListWalk {
public:
    explicit ListWalk(OuList& list) : list_(list), next_(list.First()) {}
    ListWalk(const ListWalk&) = delete;
    ListWalk& operator=(const ListWalk&) = delete;

    bool HasNext() const { return list_.Has(next_); }
    CAEObject* NextObject() { return static_cast<CAEObject*>(list_.Take(next_)); }
    int NextIdentifier() { return list_.TakeIdentifier(next_); }

private:
    OuList& list_;
    OuPlace next_;
};

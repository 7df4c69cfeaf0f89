#pragma once

#include <libjson.h>

#include <string_view>

#include "ObjectModel.h"
#include "format/MemberName.h"

inline bool IsContainer(const JSONNode& node) {
    return node.type() == JSON_NODE || node.type() == JSON_ARRAY;
}

/// The first member of the name; null where there is none. Only object nodes have members: the elements of an
/// array are none, even where they carry names.
inline const JSONNode* FindMember(const JSONNode& node, format::MemberName name) {
    if (node.type() != JSON_NODE) {
        return nullptr;
    }
    const auto found = node.find(name.c_str());
    return found == node.end() ? nullptr : &*found;
}

/// A value as text, widened from the ANSI code page up to its first NUL.
inline OuString WideValue(const JSONNode& value) {
    return OuString(value.as_string().c_str(), 0);
}

/// The text of the first member of the name; empty where there is none.
inline OuString WideMember(const JSONNode& node, format::MemberName name) {
    const JSONNode* const member = FindMember(node, name);
    return member == nullptr ? OuString() : WideValue(*member);
}

/// Whether the text is exactly this one, which has ASCII characters only.
bool IsText(const OuString& text, std::string_view ascii);

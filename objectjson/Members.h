#pragma once

#include <OuString.h>
#include <libjson.h>

/// A string node whose name is the member name and whose value is the text in the ANSI code page.
inline JSONNode StringMember(const char* name, const OuString& value) {
    return JSONNode(name, value.GetAnsiBuffer());
}

/// An empty container with the name of a document section.
inline JSONNode NamedContainer(const char* name, char type) {
    JSONNode container(type);
    container.set_name(name);
    return container;
}

/// A member's value as text, widened from the ANSI code page up to its first NUL.
inline OuString TextOf(const JSONNode& member) {
    return OuString(member.as_string().c_str(), 0);
}

#pragma once

#include "ObjectModel.h"
#include "format/MemberName.h"

/// Where the sections of a document are written to, member by member, in the order of the calls. Texts are in
/// the ANSI code page and end at their NUL; null is the empty text. Names are not tested for duplicates.
class DocumentWriter {
public:
    virtual void Text(format::MemberName name, const char* value) = 0;
    void Text(format::MemberName name, const OuString& value) { Text(name, AnsiFormOf(value)); }

    /// Opens a member that is an object or an array; what follows goes into it.
    virtual void OpenObject(format::MemberName name) = 0;
    virtual void OpenArray(format::MemberName name) = 0;
    /// Opens a member whose name is not the format's: a metadata record.
    virtual void OpenObject(const char* name) = 0;
    /// Opens an element of an array.
    virtual void OpenElement() = 0;

    /// Ends what was opened last.
    virtual void End() = 0;

protected:
    ~DocumentWriter() = default;
};

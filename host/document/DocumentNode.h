#pragma once

#include <libjson.h>

#include <string>

#include "format/MemberName.h"
#include "host/system/Notes.h"

/// What the program itself reads of the nodes of documents and answers.
namespace host {

/// The value of a node as text, up to its first NUL.
std::string ValueText(const JSONNode& value);
/// The value of the first member with the name as text; empty if there is none.
std::string MemberText(const JSONNode& node, format::MemberName name);
/// The name of a metadata entry as the object model compares it: without regard to letter case, and up to its
/// first NUL.
std::string ComparedName(const std::string& name);

/// The name of a member, NUL characters included.
std::string NameOfMember(const JSONNode& value);

/// A node as messages show it: 'bracket' (id '12').
std::string Describe(const JSONNode& node);

/// Removes every "dbkey" that is null from the document or answer, and notes it, so that no object gets the
/// key "null".
void RemoveNullKeys(JSONNode& document, Notes& notes);

}  // namespace host

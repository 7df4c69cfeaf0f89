#pragma once

#include <libjson.h>

#include <string>

#include "format/MemberName.h"
#include "host/system/Notes.h"

/// What the host itself reads of the nodes of documents and answers.
namespace host {

/// The text of a node's own value, up to its first NUL.
std::string ValueText(const JSONNode& value);
/// The text of the first member of the name; empty where there is none.
std::string MemberText(const JSONNode& node, format::MemberName name);
/// The name of a member, NUL characters included.
std::string NameOfMember(const JSONNode& value);

/// An element of "children" or "files" for a message: 'bracket' (id 12).
std::string Describe(const JSONNode& node);

/// Takes every "dbkey" that is null out of the document or answer, so that no object gets the key "null", and
/// notes each.
void RemoveNullKeys(JSONNode& document, Notes& notes);

}  // namespace host

#pragma once

#include <libjson.h>

#include <string>
#include <string_view>

#include "objectjson/ObjectModel.h"

/// The texts of nodes and objects as reports show them, in UTF-8.
namespace korvane::exchange {

/// Whether every code page has the text with the same bytes.
bool IsAscii(std::string_view text);

/// A narrow text of a node or of the object model, which is in the ANSI code page.
std::string Utf8OfAnsi(std::string_view text);
std::string Utf8Of(const OuString& text);

/// The value as text, up to its first NUL.
std::string Utf8OfValue(const JSONNode& value);

/// A node as messages show it: 'bracket' (id '12').
std::string Describe(const JSONNode& node);
/// An object of the tree in the same way.
std::string Describe(CAEObject& object);

/// The text as a component of a JSON Pointer, behind its slash.
std::string PointerTo(std::string_view name);

/// Whether a document has the text of the object model as this value: the code page may lack some of its
/// characters.
bool IsWrittenAs(const OuString& text, const OuString& value);

/// The text as the object model compares the names of metadata entries: in any letter case.
std::string ComparedName(const OuString& name);

OuString NameOf(CAEObject& object);
/// The name of an object as an export writes it.
OuString ExportedName(CAEObject& object);

}  // namespace korvane::exchange

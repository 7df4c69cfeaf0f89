#pragma once

#include <libjson.h>

#include <map>
#include <string>

#include "Export.h"

class CAEObject;

/// What the data-management server sends back: documents that become objects again, and answers that give
/// objects their database keys.
///
/// Nothing is reported: what is not recognised, not found or not as it should be is left out in silence. What
/// the object model or libjson throws passes through, std::bad_alloc among it; what was done before stays,
/// and the nodes are as they were. Nothing else is thrown, except where a function says otherwise. The
/// functions run on the caller's thread; neither the nodes nor the project may be changed meanwhile. Nodes
/// are shared and never modified, and no depth of nesting exhausts the stack. The elements of an array are
/// not members of it, even where they carry names.
namespace caerest::json {

/// Writes a document onto an object of a project: the members of the object node onto the object itself, a
/// new object for every element of "children", with everything under it, and a new file for every record of
/// "files". Nothing is ever removed or matched against what is there.
///
/// Imports nothing where the node has no "type" or an empty one, the object is null or it has no project; a
/// project object gets the node's "type", or the empty text, as its additional type all the same.
KORVANEJSON_API void DeserializeJsonToObject(JSONNode& node, CAEObject* object);

/// Writes the database keys of the server's answer to a store request, an object node or an array of such,
/// onto the objects of the object's project with the same identifiers, in the order of the identifiers'
/// texts. An identifier is read as atoi does, with the nearest limit for one that is too large. A project
/// also gets the answer's top-level "name" as its display name. Does nothing for a null object, and sets no
/// keys without a project. The answer is flattened as ParseNode does, and throws what that throws.
KORVANEJSON_API void ApplyJsonResponseOnObject(const JSONNode& node, CAEObject* object);

namespace util {

/// Adds an entry from identifier to database key for every object node of an answer that has both "id" and
/// "dbkey": the node itself, then what is under its "children", then its "files". Texts end at their first
/// NUL. An entry that the map has already is kept, so the first occurrence of an identifier wins. A node that
/// is not an object node adds nothing. A map that cannot grow throws std::length_error or std::bad_alloc and
/// keeps the entries that it has.
KORVANEJSON_API void ParseNode(const JSONNode& node, std::map<std::string, std::string>& map);

}  // namespace util
}  // namespace caerest::json

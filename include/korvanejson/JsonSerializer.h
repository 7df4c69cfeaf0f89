#pragma once

// The suite's text. Where its header has another name, whoever includes this one includes that first.
#if __has_include(<OuString.h>)
#include <OuString.h>
#endif
#include <libjson.h>

#include "Export.h"

class CAEObject;
class OuString;

/// Turns one object of the object model, with everything under it, into a JSON document.
///
/// The document is an object node: the object's header, its metadata, its children and its files, and last
/// the member "subType" with the value "SDM". A file object is written as an object node as well. Every call
/// builds the document anew; the serializer itself holds no JSON.
///
/// The serializer does not own the object, which must live as long as documents are asked for. Nothing is
/// reported: what the object model does not give is empty or absent in the document. What the object model or
/// libjson throws passes through, std::bad_alloc among it, and no document comes of it; nothing else is
/// thrown. No depth of nesting exhausts the stack. But no object and no file may be below itself: such a tree
/// has no end, and neither has its document, so that the call goes on until no memory is left.
///
/// A serializer belongs to one thread at a time, and so does the tree of its object. GetJson and
/// GetJsonString copy the export mode into one mode of the whole module, which is empty at first, and write
/// that without a lock, but only where it differs. So exports of different trees may run at the same time if
/// all have the mode that the module has already; exports with different modes must not, and neither may the
/// first ones with a new mode. Before threads that will all use one mode start, a single export with it makes
/// it the module's.
class KORVANEJSON_API JsonSerializer {
public:
    /// The object may be null: its document holds nothing but "subType". The export mode is empty.
    JsonSerializer(CAEObject* object);
    /// A serializer of the same object, with the export mode that the other has now.
    JsonSerializer(const JsonSerializer& other);
    /// Takes over the other's object and export mode.
    JsonSerializer& operator=(const JsonSerializer& other);
    /// Leaves the object alone.
    virtual ~JsonSerializer();

    /// Narrows which children the documents carry, at every level: "PROJECT" only files (kind 3), "STUDY" all
    /// but iteration models (kind 8), any other text, the empty one included, all. The text is compared as it
    /// stands. Takes effect with the next document and stays the module's mode until a document with another
    /// is made.
    void SetExportMode(const OuString& mode);

    /// The document as a node of its own: changing it changes nothing else.
    JSONNode GetJson();

    /// The document as compact text, widened from the ANSI code page in which libjson holds it.
    OuString GetJsonString();

private:
    CAEObject* object_;
    OuString exportMode_;
};

#pragma once

#include <libjson.h>

#include "ObjectModel.h"
#include "ObjectNodeKey.h"

/// The converter between one object of the object model and one object node, the JSON form of the object.
///
/// An object node holds, in this order, "id", "name", ["studyTypeName"], "createdDate", "createdBy", "type",
/// ["dbkey"], "metaData", "children" and "files"; every value of the header is a JSON string.
///
/// A converter lives for one conversion and on one thread. It owns neither the object nor the project, and
/// shares its node with whoever else holds it: before it writes, it makes the node its own, so that a
/// caller's node is never changed. The elements of an array are not members of it, even where they carry
/// names. Nothing is reported. What the object model or libjson throws passes through, std::bad_alloc among
/// it; what was written or set before stays. Nothing else is thrown, except where an operation says
/// otherwise.
class CAEObjectJson {
public:
    /// For export: no project, a new and empty object node. The object may be null.
    explicit CAEObjectJson(CAEObject* object);

    /// For import: over a node, which is shared and not copied, and the object that it is to be written onto.
    /// Takes the project from the object. A project object gets the node's "type" as its additional type at
    /// once, and the empty text where the node has none. The object may be null.
    CAEObjectJson(JSONNode node, CAEObject* object);

    CAEObjectJson(const CAEObjectJson&) = delete;
    CAEObjectJson& operator=(const CAEObjectJson&) = delete;

    /// Writes the object, with its whole subtree and its files, to the end of the node; nothing without
    /// an object. A second call appends everything a second time.
    virtual void Export();

    /// Leaves the object and the project alone.
    virtual ~CAEObjectJson();

    /// Runs Export where the object is set, and returns the node, shared with this converter.
    JSONNode GetJsonNode();

    /// The node as compact text, as it stands: runs no export.
    OuString GetJsonText() const;

    /// Whether the module's export mode lets the child through: "PROJECT" only files (kind 3), "STUDY" all
    /// but iteration models (kind 8), any other mode all. Tests neither for null, which is of no kind, nor
    /// for kind 26, which is never exported as a child.
    bool IsChildExported(CAEObject* child) const;

    /// A string node with the key as its name, both texts in the ANSI code page.
    static JSONNode MakeStringNode(OuString key, OuString value);

    /// The text of the node's first member "type"; empty where it has none.
    static OuString ReadTypeField(JSONNode node);

    /// The object's metadata as an object named "metaData": one record of "value" and "metaDataType" for each
    /// entry, in the order of the object model. "metaDataType" carries the entry's unit. Without an object it
    /// is empty, and so are the next two.
    JSONNode ExportMetadata();

    /// The array "children" with one object node for each child that the export mode lets through, files
    /// included, each with its own subtree, in the order of the object model.
    JSONNode ExportChildren();

    /// The array "files" with one file record for each file in the object's list that its project knows;
    /// empty without a project.
    JSONNode ExportFiles();

    /// What writes the node of a version for ExportVersions; the version is null where the object model gave
    /// none.
    using VersionNodeWriter = JSONNode (*)(CAEObject* version);

    /// The array "versions" with one record for each version of the object that the object model finds: the
    /// version's node, with this node's "files" (an empty list where it has none) in place of its own,
    /// without its "versions", and last its number as "version". The node must hold the object's "files"; the
    /// object may be null. It is not added to the node.
    ///
    /// Throws std::out_of_range, and gives nothing, where the node of a version has no "files" or no
    /// "versions". The nodes that Export writes have no "versions": a driver that wants the section gives
    /// them one, with a writer of its own.
    JSONNode ExportVersions();
    JSONNode ExportVersions(VersionNodeWriter nodeOf);

    /// Imports the node onto the object: nothing at all where the node has no "type" (or an empty one), the
    /// object is null or it has no project; otherwise as ImportMembers does.
    void Import();

    /// Applies the members of the node to the object, in document order, a later one of the same name after
    /// an earlier one. Members that are not recognised, and those that are recognised and have no effect, are
    /// left out. Does nothing without an object and for a node that is no object node.
    void ImportMembers();

    /// Creates an object below the converter's for every element of the array that has a "type", and imports
    /// the element onto it with its whole subtree before the next one is created. The identifiers in the
    /// document are not used. Does nothing without a project.
    void ImportChildren(JSONNode children);

    /// Creates a file in the project for every child of the array or object, reads the record onto it, gives
    /// it the path of the project's directory and its name, and attaches it to the object in the role that
    /// its type has there. Files that the project already has are never matched. Does nothing without a
    /// project.
    void ImportFiles(JSONNode files);

    /// Sets type and value of a metadata entry for every record of the section. The record "Reference To
    /// Program" with the value No, in any letter case, also clears the project's program reference.
    void ImportMetadata(JSONNode section);

    /// Makes a version of the object from every record of the array or object that has a "type" and a
    /// "version", imports the record onto it while it stands in the object's place under the parent, and
    /// overwrites the object's current content with it, so that the last record's remains. The number in a
    /// record is read and dropped: every version is 0.0.
    ///
    /// A record whose version the object model refuses or does not find is skipped. For an object without a
    /// parent the version 0.0 is made, holds what the object holds, and stays; the record is not imported and
    /// the object keeps its content. What the import of a record throws passes through and leaves the version
    /// in the object's place.
    void ImportVersions(JSONNode section);

    /// Makes an imported view item show the master assembly that its link database key names, where the
    /// project has one by now.
    void ResolveViewItemReference(CAEObject* viewItem);

    /// The document's name of a kind, before it is upper-cased: "CAE" and the object model's name, but for
    /// five kinds with names of their own.
    static OuString ObjectTypeName(_tagCAEObjectType type);

    /// The kind with exactly this document name; 43 for any other text and for null.
    static _tagCAEObjectType ObjectTypeFromName(const char* name);

protected:
    JSONNode& Node() { return node_; }

private:
    void ImportVersion(const JSONNode& record);

    CAEProject* project_ = nullptr;
    CAEObject* object_ = nullptr;
    JSONNode node_;
};

/// A document as compact text, widened from the ANSI code page in which the node holds it.
OuString WideDocument(const JSONNode& document);

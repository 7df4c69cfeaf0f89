#pragma once

#include <libjson.h>

#include "DocumentWriter.h"
#include "ExportMode.h"
#include "ObjectModel.h"
#include "ObjectNodeKey.h"

class RepeatedTexts;

/// @file
/// The sections of object nodes and file records. Each stands in the source file of its name, the writer
/// above the reader; Export.cpp and Import.cpp have the walks that call them.

// Header.cpp

void WriteHeader(CAEObject& object, DocumentWriter& out);
/// Applies one member of the header to the object; other keys have no effect.
void ReadHeaderMember(CAEObject& object, ObjectNodeKey key, const JSONNode& member, RepeatedTexts& texts);

// TypeNames.cpp

/// The "type" of the kind, where the format fixes it or the object model's name for the kind is the usual
/// one; null elsewhere.
const char* KnownTypeName(format::Kind kind, const char* modelName);
/// The same for every kind but a project, before it is upper-cased. A null name of the object model is empty.
OuString TypeNameOf(format::Kind kind, const char* modelName);

// Metadata.cpp

void WriteMetadata(CAEObject& object, DocumentWriter& out);
/// The project may be null; then no program reference is cleared.
void ReadMetadata(CAEObject& object, CAEProject* project, const JSONNode& section, RepeatedTexts& texts);

// Children.cpp

/// The children of an object that an export writes, one after the other.
class ExportedChildren {
public:
    ExportedChildren(CAEObject& object, ExportMode mode);
    /// Null behind the last.
    CAEObject* Next();

private:
    ExportMode mode_;
    OuList children_;
    ListWalk walk_;
};

/// Creates the object that an element of "children" stands for, below the parent. Null for an element without
/// "type", and where the object model makes none.
CAEObject* CreateChild(CAEObject& parent, CAEProject& project, const JSONNode& element);

// Files.cpp

/// The files of an object that an export writes, one after the other.
class ExportedFiles {
public:
    explicit ExportedFiles(CAEObject& object);
    /// Null behind the last.
    CAEFile* Next();

private:
    OuList identifiers_;
    ListWalk walk_;
    CAEProject* project_;
};

/// Makes a file of every element and attaches it to the object.
void ReadFiles(CAEObject& object, CAEProject& project, const JSONNode& records, RepeatedTexts& texts);

// FileRecord.cpp

/// The members that a file record has behind those of an object node.
void WriteFileMembers(CAEFile& file, DocumentWriter& out);
/// Reads a record onto a file that no project has yet: first as an object node, then the file's own members.
void ReadFileRecord(CAEFile& file, const JSONNode& record, RepeatedTexts& texts);

// References.cpp

/// Makes an imported view item show the master assembly that its link database key names, where the project
/// has one by now.
void ResolveReference(CAEObject& viewItem, CAEProject* project);

// Import.cpp

/// What comes before any member of the node is read onto the object, or even where none is: a project object
/// gets the node's "type" as its additional type. Returns the object's project.
CAEProject* StartImport(CAEObject& object, const JSONNode& node);
/// Applies the members of the node to the object, with everything under it. The project may be null; then no
/// object and no file is created.
void ReadMembers(CAEObject& object, CAEProject* project, const JSONNode& node, RepeatedTexts& texts);

// Export.cpp

/// Everything that a node of the object holds, with the subtree and the files.
void WriteObject(CAEObject& object, ExportMode mode, DocumentWriter& out);

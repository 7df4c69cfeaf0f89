#pragma once

#include <libjson.h>

#include "DocumentWriter.h"
#include "ExportMode.h"
#include "ImportPolicy.h"
#include "ObjectModel.h"
#include "ObjectNodeKey.h"

class RepeatedTexts;

/// @file
/// The sections of object nodes and file records. Each stands in the source file of its name, the writer
/// above the reader; Export.cpp and Import.cpp have the walks that call them.

// Header.cpp

/// The "name" of an object of the kind.
OuString ObjectName(CAEObject& object, format::Kind kind);
void WriteHeader(CAEObject& object, DocumentWriter& out);
/// Applies one member of the header to the target; other keys have no effect.
void ReadHeaderMember(const ImportTarget& target, ObjectNodeKey key, const JSONNode& member,
                      RepeatedTexts& texts);

// TypeNames.cpp

/// The "type" of the kind, where the format fixes it or the object model's name for the kind is the usual
/// one; null elsewhere.
const char* KnownTypeName(format::Kind kind, const char* modelName);
/// The same for every kind but a project, before it is upper-cased. A null name of the object model is empty.
OuString TypeNameOf(format::Kind kind, const char* modelName);

// Metadata.cpp

void WriteMetadata(CAEObject& object, DocumentWriter& out);
/// Without a project, no program reference is cleared.
void ReadMetadata(const ImportTarget& target, const JSONNode& section, RepeatedTexts& texts);

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

/// Whether a file of the type is attached to an object of the kind, in some role.
bool IsAttached(format::FileType type, format::Kind owner);

/// Makes a file of every element and attaches it to the target, which has a project.
void ReadFiles(const ImportTarget& target, const JSONNode& records, RepeatedTexts& texts);

// FileRecord.cpp

/// The members that a file record has behind those of an object node.
void WriteFileMembers(CAEFile& file, DocumentWriter& out);
/// Reads a record onto a file that no project has yet: first as an object node, then the file's own members.
/// The policy may be null.
void ReadFileRecord(CAEFile& file, ImportPolicy* policy, const JSONNode& record, RepeatedTexts& texts);

// References.cpp

/// Makes an imported view item show the master assembly that its link database key names, where the project
/// has one by now. Returns whether it has.
bool ResolveReference(CAEObject& viewItem, CAEProject* project);

// Import.cpp

/// What comes before any member of the node is read onto the object, or even where none is: a project object
/// gets the node's "type" as its additional type. Returns the object's project, or the target's where there
/// is no object.
CAEProject* StartImport(const ImportTarget& target, const JSONNode& node);
/// Applies the members of the node to the target, with everything under it.
void ReadMembers(const ImportTarget& target, const JSONNode& node, RepeatedTexts& texts);
/// Makes and reads an element of the parent's "children", with everything under it.
void ReadChild(const ImportTarget& parent, const JSONNode& element, RepeatedTexts& texts);

// Export.cpp

/// Everything that a node of the object holds, with the subtree and the files.
void WriteObject(CAEObject& object, ExportMode mode, DocumentWriter& out);

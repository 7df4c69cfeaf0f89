#pragma once

#include <libjson.h>

#include "DocumentWriter.h"
#include "ExportMode.h"
#include "ObjectModel.h"
#include "ObjectNodeKey.h"

/// @file
/// The sections of object nodes and file records. Each stands in the source file of its name, the writer
/// above the reader; Export.cpp and Import.cpp have the walks that call them.

// Header.cpp

void WriteHeader(CAEObject& object, DocumentWriter& out);
/// Applies one member of the header to the object; other keys have no effect.
void ReadHeaderMember(CAEObject& object, ObjectNodeKey key, const JSONNode& member);

// Metadata.cpp

void WriteMetadata(CAEObject& object, DocumentWriter& out);
/// The project may be null; then no program reference is cleared.
void ReadMetadata(CAEObject& object, CAEProject* project, const JSONNode& section);

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
void ReadFiles(CAEObject& object, CAEProject& project, const JSONNode& records);

// FileRecord.cpp

/// The members that a file record has behind those of an object node.
void WriteFileMembers(CAEFile& file, DocumentWriter& out);
void ReadFileMembers(CAEFile& file, const JSONNode& record);

// Export.cpp

/// Everything that a node of the object holds, with the subtree and the files.
void WriteObject(CAEObject& object, ExportMode mode, DocumentWriter& out);

#pragma once

#include <CAEFile.h>
#include <CAEFunctions.h>
#include <CAEObject.h>
#include <CAEPart.h>
#include <CAEProject.h>
#include <CAERunAssembly.h>
#include <CAESubAssembly.h>
#include <CAEViewItem.h>
#include <libjson.h>

#include <functional>
#include <map>
#include <string>

/// Documents, imports and answers a second time, in the plainest way: recursive, with nodes copied and
/// members looked up wherever that reads well. Nothing here is taken from the library, which is compared with
/// it; the member names stand here once more as well.
///
/// Every operation asks the object model in the order in which the library has to. `mode` is the export mode.
namespace reference {

/// What the export of a document gives: the object's node, which holds "subType" last; a null object's
/// document holds nothing else.
JSONNode ExportDocument(CAEObject* object, const OuString& mode);

JSONNode ExportObject(CAEObject& object, const OuString& mode);
JSONNode ExportFileRecord(CAEFile& file, const OuString& mode);
JSONNode ExportMetadata(const CAEObject& object);
JSONNode ExportChildren(const CAEObject& object, const OuString& mode);
JSONNode ExportFiles(CAEObject& object, const OuString& mode);
/// What makes the node of a version, which may be null.
using VersionNode = std::function<JSONNode(CAEObject* version)>;
/// The versions of the object whose node, with its "files", is given. Throws std::out_of_range where a
/// version's node has no "files" or no "versions".
JSONNode ExportVersions(const CAEObject& object, const JSONNode& node, const VersionNode& nodeOf);
/// The rule of the mode alone; a child of kind 26 passes it.
bool IsChildExported(const CAEObject* child, const OuString& mode);

OuString ObjectTypeName(_tagCAEObjectType type);
_tagCAEObjectType ObjectTypeFromName(const std::string& name);
OuString FileFormatName(_tagFileFormat format);
/// The value of the node's "type"; empty where it has none.
OuString ReadTypeField(const JSONNode& node);

void ImportDocument(const JSONNode& node, CAEObject* object);

/// Where something is imported: an object, and the project in which the import makes objects and files.
struct Target {
    CAEProject* project = nullptr;
    CAEObject* object = nullptr;
};
/// What is settled before anything is imported onto the object: its project, and the additional type of a
/// project.
Target PrepareTarget(const JSONNode& node, CAEObject* object);
/// The whole import of an object node onto a prepared target.
void ImportObject(const JSONNode& node, Target target);
void ImportMembers(const JSONNode& node, const Target& target);
void ImportMetadata(const JSONNode& section, const Target& target);
void ImportChildren(const JSONNode& section, const Target& target);
void ImportFiles(const JSONNode& section, const Target& target);
void ImportFileRecord(const JSONNode& record, CAEFile& file);
void ImportVersions(const JSONNode& section, const Target& target);
void ResolveViewItemReference(CAEProject* project, CAEObject& viewItem);

using ResponseKeys = std::map<std::string, std::string>;
void Flatten(const JSONNode& node, ResponseKeys& keys);
void ApplyAnswer(const JSONNode& answer, CAEObject* object);

/// The node as compact text, in the text units of the process.
std::string WriteText(const JSONNode& node);

/// The member of an object node; null where there is none. Nothing else has members.
const JSONNode* FindMember(const JSONNode& node, const char* name);
/// An object or an array.
bool IsContainer(const JSONNode& node);
/// The value up to its first NUL.
std::string TextOf(const JSONNode& node);
OuString Widen(const std::string& text);
JSONNode MakeString(const OuString& name, const OuString& value);
JSONNode MakeContainer(char type, const OuString& name);

}  // namespace reference

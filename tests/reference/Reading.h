#pragma once

#include <CAEFile.h>
#include <CAEObject.h>
#include <OuString.h>
#include <libjson.h>

#include <map>
#include <memory>
#include <string>

/// One reading of the format: what can be asked of the library, and of the second reading in its place.
class Reading {
public:
    virtual ~Reading() = default;

    // The exported interface.

    /// The mode becomes that of the module.
    virtual JSONNode Document(CAEObject* object, const OuString& mode) = 0;
    virtual OuString DocumentText(CAEObject* object, const OuString& mode) = 0;
    virtual void Import(JSONNode& document, CAEObject* object) = 0;
    virtual void Flatten(const JSONNode& answer, std::map<std::string, std::string>& keys) = 0;
    virtual void ApplyAnswer(const JSONNode& answer, CAEObject* object) = 0;

    // The converters: over a node, and the sections by themselves.

    virtual JSONNode ObjectNodeOver(const JSONNode& node, CAEObject* object) = 0;
    virtual JSONNode FileRecord(CAEFile* file) = 0;
    virtual JSONNode Metadata(CAEObject* object) = 0;
    virtual JSONNode Children(CAEObject* object) = 0;
    virtual JSONNode Files(CAEObject* object) = 0;
    virtual JSONNode Versions(const JSONNode& node, CAEObject* object) = 0;
    /// With versions whose nodes have a member "versions", unless the object has no name.
    virtual JSONNode FullVersions(const JSONNode& node, CAEObject* object) = 0;

    virtual void ImportMembers(const JSONNode& node, CAEObject* object) = 0;
    virtual void ImportMetadata(const JSONNode& section, CAEObject* object) = 0;
    virtual void ImportChildren(const JSONNode& section, CAEObject* object) = 0;
    virtual void ImportFiles(const JSONNode& section, CAEObject* object) = 0;
    virtual void ImportVersions(const JSONNode& section, CAEObject* object) = 0;
    /// Metadata onto an object whose project has not been looked up.
    virtual void ImportLooseMetadata(const JSONNode& section, CAEObject* object) = 0;
    virtual void ImportFileRecord(const JSONNode& record, CAEFile* file) = 0;
    virtual void ResolveReference(CAEObject* parent, CAEObject* viewItem) = 0;

    // What needs no object.

    virtual bool IsChildExported(CAEObject* child) = 0;
    virtual OuString TypeName(int kind) = 0;
    virtual int KindOfTypeName(const std::string& name) = 0;
    virtual OuString FormatName(CAEFile* file) = 0;
    virtual JSONNode StringNode(const OuString& name, const OuString& value) = 0;
    virtual OuString TypeField(const JSONNode& node) = 0;
    virtual OuString ObjectNodeText(const JSONNode& node) = 0;
};

std::unique_ptr<Reading> MakeLibraryReading();
/// The library, with the text of its node, compact or indented, in place of the text that it writes itself.
std::unique_ptr<Reading> MakeNodeTextReading(bool isIndented = false);
/// The library, with the text that KorvaneExchange writes. Modes are the export's own.
std::unique_ptr<Reading> MakeExchangeTextReading(bool isIndented = false);

#pragma once

#include "Reading.h"
#include "SecondReading.h"

/// The second reading.
class PlainReading : public Reading {
public:
    JSONNode Document(CAEObject* object, const OuString& mode) override {
        mode_ = mode;
        return reference::ExportDocument(object, mode_);
    }
    OuString DocumentText(CAEObject* object, const OuString& mode) override {
        return ObjectNodeText(Document(object, mode));
    }
    void Import(JSONNode& document, CAEObject* object) override {
        reference::ImportDocument(document, object);
    }
    void Flatten(const JSONNode& answer, std::map<std::string, std::string>& keys) override {
        reference::Flatten(answer, keys);
    }
    void ApplyAnswer(const JSONNode& answer, CAEObject* object) override {
        reference::ApplyAnswer(answer, object);
    }

    JSONNode ObjectNodeOver(const JSONNode& node, CAEObject* object) override {
        reference::PrepareTarget(node, object);
        JSONNode whole = node;
        if (object != nullptr) {
            const JSONNode exported = reference::ExportObject(*object, mode_);
            for (const JSONNode& member : exported) {
                whole.push_back(member);
            }
        }
        return whole;
    }
    JSONNode FileRecord(CAEFile* file) override {
        return file != nullptr ? reference::ExportFileRecord(*file, mode_) : JSONNode(JSON_NODE);
    }
    JSONNode Metadata(CAEObject* object) override {
        return object != nullptr ? reference::ExportMetadata(*object)
                                 : reference::MakeContainer(JSON_NODE, L"metaData");
    }
    JSONNode Children(CAEObject* object) override {
        return object != nullptr ? reference::ExportChildren(*object, mode_)
                                 : reference::MakeContainer(JSON_ARRAY, L"children");
    }
    JSONNode Files(CAEObject* object) override {
        return object != nullptr ? reference::ExportFiles(*object, mode_)
                                 : reference::MakeContainer(JSON_ARRAY, L"files");
    }
    JSONNode Versions(const JSONNode& node, CAEObject* object) override {
        return VersionsWith(node, object, [this](CAEObject* version) { return ObjectNode(version); });
    }
    JSONNode FullVersions(const JSONNode& node, CAEObject* object) override {
        return VersionsWith(node, object, [this](CAEObject* version) {
            JSONNode versionNode = ObjectNode(version);
            OuString name;
            if (version != nullptr) {
                version->getName(name);
            }
            if (!name.IsEmpty()) {
                versionNode.push_back(reference::MakeString(L"versions", L""));
            }
            return versionNode;
        });
    }

    void ImportMembers(const JSONNode& node, CAEObject* object) override {
        reference::ImportMembers(node, reference::PrepareTarget(node, object));
    }
    void ImportMetadata(const JSONNode& section, CAEObject* object) override {
        reference::ImportMetadata(section, reference::PrepareTarget(JSONNode(JSON_NODE), object));
    }
    void ImportChildren(const JSONNode& section, CAEObject* object) override {
        reference::ImportChildren(section, reference::PrepareTarget(JSONNode(JSON_NODE), object));
    }
    void ImportFiles(const JSONNode& section, CAEObject* object) override {
        reference::ImportFiles(section, reference::PrepareTarget(JSONNode(JSON_NODE), object));
    }
    void ImportVersions(const JSONNode& section, CAEObject* object) override {
        reference::ImportVersions(section, reference::PrepareTarget(JSONNode(JSON_NODE), object));
    }
    void ImportLooseMetadata(const JSONNode& section, CAEObject* object) override {
        reference::ImportMetadata(section, {nullptr, object});
    }
    void ImportFileRecord(const JSONNode& record, CAEFile* file) override {
        if (file != nullptr) {
            reference::ImportFileRecord(record, *file);
        }
    }
    void ResolveReference(CAEObject* parent, CAEObject* viewItem) override {
        const reference::Target target = reference::PrepareTarget(JSONNode(JSON_NODE), parent);
        if (viewItem != nullptr) {
            reference::ResolveViewItemReference(target.project, *viewItem);
        }
    }

    bool IsChildExported(CAEObject* child) override { return reference::IsChildExported(child, mode_); }
    OuString TypeName(int kind) override {
        return reference::ObjectTypeName(static_cast<_tagCAEObjectType>(kind));
    }
    int KindOfTypeName(const std::string& name) override {
        return reference::ObjectTypeFromName(name.c_str());
    }
    OuString FormatName(CAEFile* file) override {
        return reference::FileFormatName(file != nullptr ? file->getFileFormat() : CAE_FORMAT_UNKNOWN);
    }
    JSONNode StringNode(const OuString& name, const OuString& value) override {
        return reference::MakeString(name, value);
    }
    OuString TypeField(const JSONNode& node) override { return reference::ReadTypeField(node); }
    OuString ObjectNodeText(const JSONNode& node) override {
        const bool isDocument = reference::IsContainer(node);
        return isDocument ? reference::Widen(reference::WriteText(node)) : OuString();
    }

private:
    JSONNode ObjectNode(CAEObject* object) const {
        return object != nullptr ? reference::ExportObject(*object, mode_) : JSONNode(JSON_NODE);
    }
    static JSONNode VersionsWith(const JSONNode& node, CAEObject* object,
                                 const reference::VersionNode& nodeOf) {
        reference::PrepareTarget(node, object);
        return object != nullptr ? reference::ExportVersions(*object, node, nodeOf)
                                 : reference::MakeContainer(JSON_ARRAY, L"versions");
    }

    OuString mode_;
};

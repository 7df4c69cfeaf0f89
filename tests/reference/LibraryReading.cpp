#include <korvaneexchange/WriteDocument.h>
#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include "Reading.h"
#include "objectjson/CAEFileJson.h"
#include "objectjson/CAEObjectJson.h"

namespace exchange = korvane::exchange;

namespace {

JSONNode NodeWithVersions(CAEObject* version) {
    CAEObjectJson converter(version);
    JSONNode node = converter.GetJsonNode();
    OuString name;
    if (version != nullptr) {
        version->getName(name);
    }
    if (!name.IsEmpty()) {
        node.push_back(JSONNode(json_string("versions"), ""));
    }
    return node;
}

/// A node that a converter is built over where what it holds does not matter.
JSONNode AnyNode() {
    return JSONNode(JSON_NODE);
}

class LibraryReading : public Reading {
public:
    JSONNode Document(CAEObject* object, const OuString& mode) override {
        JsonSerializer serializer(object);
        serializer.SetExportMode(mode);
        return serializer.GetJson();
    }
    OuString DocumentText(CAEObject* object, const OuString& mode) override {
        JsonSerializer serializer(object);
        serializer.SetExportMode(mode);
        return serializer.GetJsonString();
    }
    void Import(JSONNode& document, CAEObject* object) override {
        caerest::json::DeserializeJsonToObject(document, object);
    }
    void Flatten(const JSONNode& answer, std::map<std::string, std::string>& keys) override {
        caerest::json::util::ParseNode(answer, keys);
    }
    void ApplyAnswer(const JSONNode& answer, CAEObject* object) override {
        caerest::json::ApplyJsonResponseOnObject(answer, object);
    }

    JSONNode ObjectNodeOver(const JSONNode& node, CAEObject* object) override {
        return CAEObjectJson(node, object).GetJsonNode();
    }
    JSONNode FileRecord(CAEFile* file) override { return CAEFileJson(file).GetJsonNode(); }
    JSONNode Metadata(CAEObject* object) override { return CAEObjectJson(object).ExportMetadata(); }
    JSONNode Children(CAEObject* object) override { return CAEObjectJson(object).ExportChildren(); }
    JSONNode Files(CAEObject* object) override { return CAEObjectJson(object).ExportFiles(); }
    JSONNode Versions(const JSONNode& node, CAEObject* object) override {
        return CAEObjectJson(node, object).ExportVersions();
    }
    JSONNode FullVersions(const JSONNode& node, CAEObject* object) override {
        return CAEObjectJson(node, object).ExportVersions(NodeWithVersions);
    }

    void ImportMembers(const JSONNode& node, CAEObject* object) override {
        CAEObjectJson(node, object).ImportMembers();
    }
    void ImportMetadata(const JSONNode& section, CAEObject* object) override {
        CAEObjectJson(AnyNode(), object).ImportMetadata(section);
    }
    void ImportChildren(const JSONNode& section, CAEObject* object) override {
        CAEObjectJson(AnyNode(), object).ImportChildren(section);
    }
    void ImportFiles(const JSONNode& section, CAEObject* object) override {
        CAEObjectJson(AnyNode(), object).ImportFiles(section);
    }
    void ImportVersions(const JSONNode& section, CAEObject* object) override {
        CAEObjectJson(AnyNode(), object).ImportVersions(section);
    }
    void ImportLooseMetadata(const JSONNode& section, CAEObject* object) override {
        CAEObjectJson(object).ImportMetadata(section);
    }
    void ImportFileRecord(const JSONNode& record, CAEFile* file) override {
        const CAEFileJson converter(record, file);
    }
    void ResolveReference(CAEObject* parent, CAEObject* viewItem) override {
        CAEObjectJson(AnyNode(), parent).ResolveViewItemReference(viewItem);
    }

    bool IsChildExported(CAEObject* child) override { return CAEObjectJson(nullptr).IsChildExported(child); }
    OuString TypeName(int kind) override {
        return CAEObjectJson::ObjectTypeName(static_cast<_tagCAEObjectType>(kind));
    }
    int KindOfTypeName(const std::string& name) override {
        return CAEObjectJson::ObjectTypeFromName(name.c_str());
    }
    OuString FormatName(CAEFile* file) override { return CAEFileJson(file).GetFileFormatName(); }
    JSONNode StringNode(const OuString& name, const OuString& value) override {
        return CAEObjectJson::MakeStringNode(name, value);
    }
    OuString TypeField(const JSONNode& node) override { return CAEObjectJson::ReadTypeField(node); }
    OuString ObjectNodeText(const JSONNode& node) override {
        return CAEObjectJson(node, nullptr).GetJsonText();
    }
};

class NodeTextReading final : public LibraryReading {
public:
    explicit NodeTextReading(bool isIndented) : isIndented_(isIndented) {}

    OuString DocumentText(CAEObject* object, const OuString& mode) override {
        const JSONNode document = Document(object, mode);
        return OuString((isIndented_ ? document.write_formatted() : document.write()).c_str(), 0);
    }

private:
    bool isIndented_;
};

class ExchangeTextReading final : public LibraryReading {
public:
    explicit ExchangeTextReading(bool isIndented) : isIndented_(isIndented) {}

    OuString DocumentText(CAEObject* object, const OuString& mode) override {
        if (object == nullptr) {
            return NodeTextReading(isIndented_).DocumentText(object, mode);
        }
        std::string text;
        exchange::WriteDocument(
            *object,
            {.mode = mode == L"PROJECT" ? exchange::ExportMode::kProject
                     : mode == L"STUDY" ? exchange::ExportMode::kStudy
                                        : exchange::ExportMode::kEverything,
             .layout = isIndented_ ? exchange::Layout::kIndented : exchange::Layout::kCompact},
            [&text](std::string_view page) { text += page; });
        return OuString(text.c_str(), 0);
    }

private:
    bool isIndented_;
};

}  // namespace

std::unique_ptr<Reading> MakeLibraryReading() {
    return std::make_unique<LibraryReading>();
}

std::unique_ptr<Reading> MakeNodeTextReading(bool isIndented) {
    return std::make_unique<NodeTextReading>(isIndented);
}

std::unique_ptr<Reading> MakeExchangeTextReading(bool isIndented) {
    return std::make_unique<ExchangeTextReading>(isIndented);
}

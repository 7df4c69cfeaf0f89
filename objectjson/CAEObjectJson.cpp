#include "CAEObjectJson.h"

#include <CAEProject.h>

#include <utility>

#include "Members.h"

namespace {

constexpr const char* kType = "type";

/// The bytes to reserve for a document's text; longer documents are written whole.
constexpr std::size_t kTextReserve = 1024;

}  // namespace

CAEObjectJson::CAEObjectJson(CAEObject* object) : object_(object), node_(JSON_NODE) {}

CAEObjectJson::CAEObjectJson(JSONNode node, CAEObject* object) : object_(object), node_(std::move(node)) {
    if (object_ == nullptr) {
        return;
    }
    if (object_->getType() == CAE_PROJECT) {
        if (auto* project = dynamic_cast<CAEProject*>(object_)) {
            project_ = project;
            project->setAdditionalType(ReadTypeField(node_));
        }
    }
    project_ = object_->getProject();
}

CAEObjectJson::~CAEObjectJson() = default;

void CAEObjectJson::Export() {
    if (object_ == nullptr) {
        return;
    }
    ExportOwnMembers();
    Append(ExportChildren());
    Append(ExportFiles());
}

void CAEObjectJson::ExportOwnMembers() {
    ExportHeader();
    Append(ExportMetadata());
}

void CAEObjectJson::Append(const JSONNode& member) {
    node_.push_back(member);
}

JSONNode CAEObjectJson::GetJsonNode() {
    if (object_ != nullptr) {
        Export();
    }
    return node_;
}

OuString CAEObjectJson::GetJsonText() const {
    return DocumentText(node_);
}

JSONNode CAEObjectJson::MakeStringNode(OuString key, OuString value) {
    return StringMember(key.GetAnsiBuffer(), value);
}

OuString CAEObjectJson::ReadTypeField(JSONNode node) {
    const JSONNode& constNode = node;
    const auto type = constNode.find(kType);
    return type == constNode.end() ? OuString() : TextOf(*type);
}

OuString DocumentText(const JSONNode& document) {
    return OuString(document.write(kTextReserve).c_str(), 0);
}

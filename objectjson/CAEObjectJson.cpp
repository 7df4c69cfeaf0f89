#include "CAEObjectJson.h"

#include <utility>

#include "NodeReading.h"
#include "NodeWriter.h"
#include "Sections.h"
#include "format/MemberNames.h"

namespace {

/// The bytes to reserve for a document's text; longer documents are written whole.
constexpr std::size_t kTextReserve = 1024;

}  // namespace

CAEObjectJson::CAEObjectJson(CAEObject* object) : object_(object), node_(JSON_NODE) {}

CAEObjectJson::CAEObjectJson(JSONNode node, CAEObject* object) : object_(object), node_(std::move(node)) {
    if (object_ != nullptr) {
        project_ = StartImport({object_}, node_);
    }
}

CAEObjectJson::~CAEObjectJson() = default;

JSONNode CAEObjectJson::GetJsonNode() {
    if (object_ != nullptr) {
        Export();
    }
    return node_;
}

OuString CAEObjectJson::GetJsonText() const {
    return WideDocument(node_);
}

JSONNode CAEObjectJson::MakeStringNode(OuString key, OuString value) {
    return JSONNode(AnsiFormOf(key), AnsiFormOf(value));
}

OuString CAEObjectJson::ReadTypeField(JSONNode node) {
    return WideMember(node, format::member::kType);
}

OuString WideDocument(const JSONNode& document) {
    return OuString(document.write(kTextReserve).c_str(), 0);
}

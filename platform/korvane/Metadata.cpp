#include "Metadata.h"

#include "Access.h"
#include "ObjectData.h"
#include "Recorded.h"
#include "Status.h"

namespace korvane {
namespace {

const MetadataEntry* FindEntry(const CAEObject& object, const OuString& name) {
    const Metadata* const metadata = Access::Data(object).metadata.get();
    return metadata != nullptr ? metadata->Find(name) : nullptr;
}

}  // namespace

MetadataEntry& MetadataOf(CAEObject& object, const OuString& name) {
    std::unique_ptr<Metadata>& metadata = Access::Data(object).metadata;
    if (!metadata) {
        metadata = std::make_unique<Metadata>();
    }
    return metadata->FindOrAdd(name);
}

}  // namespace korvane

using korvane::FindEntry;
using korvane::kDone;
using korvane::kFailed;
using korvane::MetadataEntry;
using korvane::Recorded;

int CAEObject::getAllMetadata(OuTemplateArray<OuString, OuCRTAllocator>& names,
                              OuTemplateArray<OuString, OuCRTAllocator>& values) const {
    const Recorded note("CAEObject::getAllMetadata", *this);
    if (data_->metadata) {
        const std::vector<MetadataEntry>& entries = data_->metadata->Entries();
        names.ReserveMore(entries.size());
        values.ReserveMore(entries.size());
        for (const MetadataEntry& entry : entries) {
            names.Add(entry.name);
            values.Add(entry.value);
        }
    }
    return kDone;
}

int CAEObject::getMetadataType(const OuString& name, OuString& type) const {
    const Recorded note("CAEObject::getMetadataType", *this, name);
    if (const auto* const odd = note.Odd()) {
        return odd->status;
    }
    const MetadataEntry* const entry = FindEntry(*this, name);
    if (entry == nullptr) {
        return kFailed;
    }
    type = entry->type;
    return kDone;
}

int CAEObject::getMetadataUnitString(const OuString& name, OuString& unit) const {
    const Recorded note("CAEObject::getMetadataUnitString", *this, name);
    if (const auto* const odd = note.Odd()) {
        return odd->status;
    }
    const MetadataEntry* const entry = FindEntry(*this, name);
    if (entry == nullptr) {
        return kFailed;
    }
    unit = entry->unit;
    return kDone;
}

int CAEObject::getMetadataValue(const OuString& name, OuString& value) const {
    const Recorded note("CAEObject::getMetadataValue", *this, name);
    if (const auto* const odd = note.Odd()) {
        return odd->status;
    }
    const MetadataEntry* const entry = FindEntry(*this, name);
    if (entry == nullptr) {
        return kFailed;
    }
    value = entry->value;
    return kDone;
}

int CAEObject::setMetadataType(const OuString& name, const OuString& type) {
    const Recorded note("CAEObject::setMetadataType", *this, name, type);
    korvane::MetadataOf(*this, name).type = type;
    return kDone;
}

int CAEObject::setMetadataValue(const OuString& name, const OuString& value) {
    const Recorded note("CAEObject::setMetadataValue", *this, name, value);
    korvane::MetadataOf(*this, name).value = value;
    return kDone;
}

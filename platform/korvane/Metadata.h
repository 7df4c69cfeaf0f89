#pragma once

#include "IndexedList.h"
#include "OuString.h"

namespace korvane {

struct MetadataEntry {
    OuString name;
    OuString value;
    OuString type;
    OuString unit;
};

/// Names of metadata entries are looked up without regard to letter case.
struct WithoutCase {
    static int Compare(const OuString& left, const OuString& right) noexcept {
        return left.CompareNoCase(right);
    }
};

/// The metadata of one object, in the order of creation.
using Metadata = IndexedList<MetadataEntry, &MetadataEntry::name, WithoutCase>;

}  // namespace korvane

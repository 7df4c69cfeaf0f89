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
    /// Who looks an entry up has its name from the list of them, mostly.
    static bool AreSame(const OuString& left, const OuString& right) noexcept { return left.IsCopyOf(right); }
};

/// The metadata of one object, in the order of creation.
using Metadata = IndexedList<MetadataEntry, &MetadataEntry::name, WithoutCase>;

}  // namespace korvane

#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "OuString.h"

namespace korvane {

struct MetadataEntry {
    OuString name;
    OuString value;
    OuString type;
    OuString unit;
};

/// The metadata of one object, in the order of creation. Names are looked up without regard to letter case:
/// one by one while they are few, through an index when they are many.
class Metadata {
public:
    Metadata() = default;
    Metadata(const Metadata& other) : entries_(other.entries_) {}
    Metadata& operator=(const Metadata&) = delete;

    /// Null when there is no entry of the name.
    const MetadataEntry* Find(const OuString& name) const;
    /// The entry of the name; made at the end, empty but for its name, when there is none.
    MetadataEntry& FindOrAdd(const OuString& name);
    const std::vector<MetadataEntry>& Entries() const noexcept { return entries_; }

private:
    struct ComesBefore {
        bool operator()(const OuString& left, const OuString& right) const noexcept {
            return left.CompareNoCase(right) < 0;
        }
    };
    using Index = std::map<OuString, std::size_t, ComesBefore>;

    std::size_t PositionOf(const OuString& name) const;

    std::vector<MetadataEntry> entries_;
    /// Made by the first look-up among many entries, a copy's own as well.
    mutable std::unique_ptr<Index> index_;
};

}  // namespace korvane

#pragma once

#include <korvaneexchange/Report.h>
#include <libjson.h>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "format/Effects.h"
#include "format/MemberNames.h"

/// Counts in a document, without the import's own code, the values below its root that an import must have
/// taken: all but those that the report says were left out and what is below such, and but those inside of an
/// object or array that is read as a text.
class MemberCount {
public:
    MemberCount(const JSONNode& document, const korvane::exchange::Report& report) {
        for (const korvane::exchange::Entry& entry : report.entries) {
            if (IsLeftOut(entry.reason)) {
                ++leftOut_[entry.pointer];
            }
        }
        if (!Consume("")) {
            open_.push_back({&document, "", Place::kObject});
        }
        while (!open_.empty()) {
            const Value value = open_.back();
            open_.pop_back();
            CountMembers(value);
        }
        for (const auto& [pointer, count] : leftOut_) {
            lost_ += count == 0 ? "" : "'" + pointer + "' ";
        }
    }

    std::size_t Taken() const { return taken_; }
    /// The pointers of the report that lead to no value.
    const std::string& Lost() const { return lost_; }
    /// Whether two values have the same pointer, so that the report may be about either.
    bool IsAmbiguous() const { return isAmbiguous_; }

private:
    enum class Place { kObject, kFileRecord, kMetadataRecord, kText, kObjects, kFileRecords, kMetadata };

    struct Value {
        const JSONNode* node;
        std::string pointer;
        Place place;
    };

    bool Consume(const std::string& pointer) {
        const auto found = leftOut_.find(pointer);
        if (found == leftOut_.end() || found->second == 0) {
            return false;
        }
        --found->second;
        return true;
    }

    void CountMembers(const Value& value) {
        const bool isObject = value.node->type() == JSON_NODE;
        const bool isSection = value.place == Place::kObjects || value.place == Place::kFileRecords ||
                               value.place == Place::kMetadata;
        const bool isRead = isObject || (isSection && value.node->type() == JSON_ARRAY);
        if (value.place == Place::kText || !isRead) {
            return;
        }
        for (json_index_t index = 0; index < value.node->size(); ++index) {
            const JSONNode& member = value.node->at(index);
            const json_string name = member.name();
            const std::string pointer =
                value.pointer + "/" +
                (isObject ? Escaped(std::string_view(name.data(), name.size())) : std::to_string(index));
            isAmbiguous_ = isAmbiguous_ || !met_.insert(pointer).second;
            if (!Consume(pointer)) {
                ++taken_;
                open_.push_back({&member, pointer, PlaceOf(value.place, {name.data(), name.size()})});
            }
        }
    }

    static Place PlaceOf(Place above, std::string_view name) {
        switch (above) {
            case Place::kObjects:
                return Place::kObject;
            case Place::kFileRecords:
                return Place::kFileRecord;
            case Place::kMetadata:
                return Place::kMetadataRecord;
            case Place::kObject:
            case Place::kFileRecord:
                return format::member::kChildren == name   ? Place::kObjects
                       : format::member::kFiles == name    ? Place::kFileRecords
                       : format::member::kMetaData == name ? Place::kMetadata
                                                           : Place::kText;
            default:
                return Place::kText;
        }
    }

    static std::string Escaped(std::string_view name) {
        std::string escaped;
        for (const char character : name.substr(0, name.find('\0'))) {
            escaped += character == '~' ? "~0" : character == '/' ? "~1" : std::string(1, character);
        }
        return escaped;
    }

    std::map<std::string, std::size_t> leftOut_;
    std::set<std::string> met_;
    bool isAmbiguous_ = false;
    std::vector<Value> open_;
    std::size_t taken_ = 0;
    std::string lost_;
};

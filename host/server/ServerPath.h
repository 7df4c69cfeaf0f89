#pragma once

#include <libjson.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace host {

/// The last step of the path from the root to a node. Texts end at their first NUL.
struct NodeName {
    /// What the keys of its kind begin with (KeyPrefix).
    std::string_view kind;
    std::string name;
    /// Empty unless it is a file that says its type.
    std::string fileType;

    /// A text that only equal names have.
    std::string Text() const;
};

/// The name of a node that has this "type".
NodeName NameOf(const JSONNode& node, std::string_view type);

/// Counts the equal ones among siblings.
class SiblingCounts {
public:
    /// How many siblings of this name came before; `name` is NodeName::Text.
    std::int64_t Count(const std::string& name) { return counts_[name]++; }
    /// How many of this name there were so far.
    std::int64_t Of(const std::string& name) const {
        const auto found = counts_.find(name);
        return found == counts_.end() ? 0 : found->second;
    }

private:
    std::unordered_map<std::string, std::int64_t> counts_;
};

}  // namespace host

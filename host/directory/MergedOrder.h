#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace host {

/// The wanted order of a list, with those of the present ones that are not wanted behind the one that they
/// were behind.
template <typename Value>
std::vector<Value> MergedOrder(const std::vector<Value>& present, const std::vector<Value>& wanted) {
    const std::unordered_set<Value> isWanted(wanted.begin(), wanted.end());
    std::vector<Value> merged;
    std::unordered_map<Value, std::vector<Value>> behind;
    std::vector<Value>* others = &merged;
    for (const Value& value : present) {
        if (isWanted.contains(value)) {
            others = &behind[value];
        } else {
            others->push_back(value);
        }
    }
    for (const Value& value : wanted) {
        merged.push_back(value);
        const auto found = behind.find(value);
        if (found != behind.end()) {
            merged.insert(merged.end(), found->second.begin(), found->second.end());
        }
    }
    return merged;
}

}  // namespace host

#pragma once

#include <vector>

#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

/// Hands the identifier and the key of every object node of an answer that has both to `take`: the node's
/// own, then those under its "children", then those under its "files". Any depth of nesting takes the usual
/// stack.
template <typename Take>
void WalkAnswer(const JSONNode& answer, const Take& take) {
    namespace member = format::member;
    std::vector<ChildWalk> open;
    for (const JSONNode* node = &answer; node != nullptr;) {
        const auto [id, key, files, children] =
            FindMembers<4>(*node, {member::kId, member::kDatabaseKey, member::kFiles, member::kChildren});
        // An object that the server gave no key keeps the one it has.
        if (id != nullptr && key != nullptr) {
            take(NodeValue(*id), NodeValue(*key));
        }
        // What is opened last is read first.
        for (const JSONNode* const section : {files, children}) {
            if (const ChildWalk walk = section == nullptr ? ChildWalk() : ChildWalk(*section);
                walk.HasNext()) {
                open.push_back(walk);
            }
        }
        while (!open.empty() && !open.back().HasNext()) {
            open.pop_back();
        }
        node = open.empty() ? nullptr : open.back().Next();
    }
}

#include <korvanejson/CaeRest.h>

#include <utility>
#include <vector>

#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;

namespace {

/// An array on the way, and the element that comes next.
struct OpenArray {
    JSONNode array;
    json_index_t next = 0;
};

void AddEntry(const JSONNode& node, std::map<std::string, std::string>& map) {
    const JSONNode* const id = FindMember(node, member::kId);
    const JSONNode* const key = FindMember(node, member::kDatabaseKey);
    // An object that the server gave no key keeps the one it has.
    if (id != nullptr && key != nullptr) {
        map.emplace(id->as_string().c_str(), key->as_string().c_str());
    }
}

void Open(std::vector<OpenArray>& open, const JSONNode& node, format::MemberName section) {
    const JSONNode* const found = FindMember(node, section);
    if (found != nullptr && IsContainer(*found)) {
        open.push_back({*found});
    }
}

/// Adds the node's own entry and leaves what is under it for later, the children on top of the files.
void Visit(std::vector<OpenArray>& open, const JSONNode& node, std::map<std::string, std::string>& map) {
    AddEntry(node, map);
    Open(open, node, member::kFiles);
    Open(open, node, member::kChildren);
}

}  // namespace

void caerest::json::util::ParseNode(const JSONNode& node, std::map<std::string, std::string>& map) {
    std::vector<OpenArray> open;
    Visit(open, node, map);
    while (!open.empty()) {
        OpenArray& innermost = open.back();
        if (innermost.next == innermost.array.size()) {
            open.pop_back();
            continue;
        }
        const JSONNode element = std::as_const(innermost.array).at(innermost.next++);
        Visit(open, element, map);
    }
}

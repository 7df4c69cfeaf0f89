#include <korvanejson/CaeRest.h>

#include <vector>

namespace {

constexpr const char* kId = "id";
constexpr const char* kDatabaseKey = "dbkey";
constexpr const char* kChildren = "children";
constexpr const char* kFiles = "files";

/// An array on the way, and the element that comes next.
struct Place {
    JSONNode array;
    json_index_t next = 0;
};

void AddEntry(const JSONNode& node, std::map<std::string, std::string>& map) {
    const auto id = node.find(kId);
    const auto key = node.find(kDatabaseKey);
    // An object that the server gave no key keeps the one it has.
    if (id != node.end() && key != node.end()) {
        map.emplace(id->as_string().c_str(), key->as_string().c_str());
    }
}

void Enter(std::vector<Place>& places, const JSONNode& node, const char* section) {
    if (const auto found = node.find(section); found != node.end()) {
        places.push_back({found->as_array()});
    }
}

/// Adds the node's own entry and leaves what is under it for later, the children on top of the files.
void Visit(std::vector<Place>& places, const JSONNode& node, std::map<std::string, std::string>& map) {
    // The elements of an array are no members, even where they bear names.
    if (node.type() == JSON_NODE) {
        AddEntry(node, map);
        Enter(places, node, kFiles);
        Enter(places, node, kChildren);
    }
}

}  // namespace

void caerest::json::util::ParseNode(const JSONNode& node, std::map<std::string, std::string>& map) {
    std::vector<Place> places;
    Visit(places, node, map);
    while (!places.empty()) {
        Place& place = places.back();
        if (place.next == place.array.size()) {
            places.pop_back();
            continue;
        }
        const JSONNode& array = place.array;
        const JSONNode element = array.at(place.next++);
        Visit(places, element, map);
    }
}

#pragma once

#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ServerSupport.h"

/// Documents for tests of the server, and the keys that it gives them.
namespace host {

using nlohmann::ordered_json;

/// A node of a document, without its identifier.
inline ordered_json Node(const std::string& type, const std::string& name,
                         const std::vector<ordered_json>& children,
                         const std::vector<ordered_json>& files = {}) {
    return {{"name", name}, {"type", type}, {"children", children}, {"files", files}};
}
inline ordered_json Part(const std::string& name, const std::vector<ordered_json>& files = {}) {
    return Node("CAEPART", name, {}, files);
}
inline ordered_json Study(const std::string& name, const std::vector<ordered_json>& children,
                          const std::vector<ordered_json>& files = {}) {
    return Node("CAEMODEL", name, children, files);
}
inline ordered_json Project(const std::vector<ordered_json>& children,
                            const std::vector<ordered_json>& files = {}) {
    return Node("SIMULATION", "P", children, files);
}
inline ordered_json FileOf(const std::string& name, const std::string& type) {
    return {{"name", name}, {"type", "CAEFILE"}, {"fileType", type}};
}
inline ordered_json With(ordered_json node, const char* member, const std::string& value) {
    node[member] = value;
    return node;
}

/// Calls the function for the node and all below it, children before files, with the path of names.
template <typename Function>
void ForAll(ordered_json& node, const Function& function, const std::string& above = {}) {
    const std::string path = above + "/" + node.value("name", "");
    function(node, path);
    for (const char* const section : {"children", "files"}) {
        if (node.contains(section)) {
            for (ordered_json& inner : node[section]) {
                ForAll(inner, function, path);
            }
        }
    }
}

/// Gives all nodes without an identifier one, in their order.
inline ordered_json Numbered(ordered_json document, int first = 1) {
    ForAll(document, [&](ordered_json& node, const std::string&) {
        if (!node.contains("id")) {
            node["id"] = std::to_string(first++);
        }
    });
    return document;
}

inline std::vector<std::string> KeysIn(ordered_json document) {
    std::vector<std::string> keys;
    ForAll(document, [&](const ordered_json& node, const std::string&) {
        keys.push_back(node.value("dbkey", "none"));
    });
    return keys;
}

class ServerIdentity : public ServerInFolder {
protected:
    /// Stores it, and gives the keys in the order of the nodes.
    std::vector<std::string> KeysOf(const ordered_json& document, const StoreRequest& request = {"P"}) {
        return KeysIn(ordered_json::parse(Store(document.dump(), request)));
    }
    std::vector<std::string> KeysAgain(const ordered_json& document, const std::string& project = "P") {
        std::vector<std::string> keys = KeysOf(document, {project, true});
        const std::size_t newKeys = report.newKeys;
        // What was stored is recognised.
        EXPECT_EQ(KeysOf(document, {project, true}), keys);
        EXPECT_EQ(report.newKeys, 0U);
        report.newKeys = newKeys;
        return keys;
    }
    /// The document with the keys of the database for the paths.
    ordered_json WithKeys(ordered_json document, const std::map<std::string, std::string>& keyOfPath) {
        ForAll(document, [&](ordered_json& node, const std::string& path) {
            if (const auto found = keyOfPath.find(path); found != keyOfPath.end()) {
                node["dbkey"] = KeyOf(found->second);
            }
        });
        return document;
    }
    static std::map<std::string, std::string> ByPath(ordered_json document,
                                                     const std::vector<std::string>& keys) {
        std::map<std::string, std::string> keyOfPath;
        std::size_t index = 0;
        ForAll(document, [&](const ordered_json&, const std::string& path) {
            EXPECT_TRUE(keyOfPath.emplace(path, keys.at(index++)).second) << path;
        });
        return keyOfPath;
    }
    std::string RefusalOfNode(const ordered_json& document, const StoreRequest& request) {
        return RefusalOf(document.dump(), request);
    }
};

using Keys = std::vector<std::string>;

}  // namespace host

#pragma once

#include <string>

#include "host/server/Server.h"

namespace host {

/// The document of the object with the key; "none" if there is no such object.
inline std::string FetchText(Server& server, const std::string& key, Console& console) {
    const std::optional<FetchedRoot> root = server.Find(key);
    if (!root) {
        return "none";
    }
    std::string text;
    const std::error_code error =
        CollectText([&](const WritePiece& write) { return server.Fetch(*root, write, console); }, text);
    return error ? error.message() : text;
}

inline std::string FetchText(Server&& server, const std::string& key, Console& console) {
    return FetchText(server, key, console);
}

}  // namespace host

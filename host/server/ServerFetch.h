#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

#include "host/system/Console.h"
#include "host/system/Database.h"
#include "host/system/OutputFile.h"

namespace host {

/// The node that a document is fetched from.
struct FetchedRoot {
    std::int64_t node;
    std::string key;
};

/// See Server::Find and Server::Fetch.
std::optional<FetchedRoot> FindRoot(Database& database, const std::string& key);
std::error_code FetchDocument(Database& database, const FetchedRoot& root, const WritePiece& write,
                              Console& console);

}  // namespace host

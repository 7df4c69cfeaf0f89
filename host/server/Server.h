#pragma once

#include <libjson.h>

#include <filesystem>
#include <memory>
#include <string>

#include "StoreReport.h"
#include "host/system/Console.h"
#include "host/system/Database.h"

/// A stand-in for the data-management server: it keeps documents in a SQLite database and gives every object
/// in them a database key.
///
/// Every object node and file record is kept with all its members. A key, such as `PRT-12-3f9a20`, tells the
/// kind of the object, and is given once in one database and in no other. Which object a node is:
///
/// - The one that has the node's "dbkey", where the database gave that key. A view item's "dbkey" counts as
///   its own only where it is the key of a view item; where it is an assembly's or an iteration model's, the
///   view item shows that one.
/// - Otherwise the one that was stored with the same identifier under the same name of a project and with
///   the same "type". Where the document has an identifier twice the nodes are different objects, unless they
///   are files: a file can hang in several places. A node without "id" goes by its place.
/// - Otherwise a new one.
///
/// Storing an object again replaces its members, and its children and files by those in the document. A child
/// or a file that is not in the document any more belongs to the object no longer; the database keeps it,
/// with all below it, and it can still be fetched under its key. A child that the document shows under
/// another object has moved there.
namespace host {

class Server {
public:
    /// Opens the database, which is made when there is none. With `isDryRun` all is done on a copy in memory,
    /// and nothing is made. Throws DatabaseError.
    static Server OpenForStoring(const std::filesystem::path& file, bool isDryRun);
    /// Opens a database that is there. Throws DatabaseError.
    static Server OpenForFetching(const std::filesystem::path& file);
    ~Server();
    Server(Server&&) noexcept;
    Server& operator=(Server&&) noexcept;

    /// Keeps the document, in one transaction, and answers with the tree of "id" and "dbkey", nested through
    /// "children" and "files". Throws DatabaseError, and nothing is kept.
    JSONNode Store(const JSONNode& document, const std::string& project, StoreReport& report,
                   Console& console);

    /// The object with the key, with all below it, as a document. False, and no document, where there is
    /// none. Throws DatabaseError.
    bool Fetch(const std::string& key, JSONNode& document, Console& console);

private:
    struct State;
    explicit Server(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace host

#pragma once

#include <libjson.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

#include "ServerFetch.h"
#include "StoreReport.h"
#include "host/system/Console.h"
#include "host/system/Database.h"
#include "host/system/OutputFile.h"

/// A stand-in for the data-management server: it stores documents in a SQLite database and gives every object
/// in them a database key.
///
/// Every object node and file record is stored with all its members. A key such as `PRT-12-3f9a20` shows the
/// kind of the object, and is given only once, in one database. A node belongs to
///
/// - the object with the node's "dbkey", if this database gave that key. The "dbkey" of a view item counts as
///   its own only if it is the key of a view item; if it is the key of an assembly or an iteration model, the
///   view item shows that object.
/// - otherwise, the object that was stored with the same identifier and the same "type" in a project of the
///   same name. If a document has an identifier twice, the nodes are different objects, unless they are
///   files: a file can be attached to several objects. A node without "id" is identified by its place.
/// - otherwise, a new object.
///
/// If an object is stored again, its members, children and files are replaced by those in the document. A
/// child or a file that the document no longer has is detached from the object. The database keeps it, with
/// everything below it, and it can still be fetched by its key. A child that is below another object in the
/// document has moved there.
namespace host {

class Server {
public:
    /// Opens the database, which is created if there is none. With `isDryRun` everything is done on a copy in
    /// memory, and nothing is created. Throws DatabaseError.
    static Server OpenForStoring(const std::filesystem::path& file, bool isDryRun);
    /// Opens an existing database. Throws DatabaseError.
    static Server OpenForFetching(const std::filesystem::path& file);
    ~Server();
    Server(Server&&) noexcept;
    Server& operator=(Server&&) noexcept;

    /// Stores the document in one transaction, and answers with the tree of "id" and "dbkey", nested in
    /// "children" and "files". Throws DatabaseError, and then nothing is stored.
    JSONNode Store(const JSONNode& document, const std::string& project, StoreReport& report,
                   Console& console);

    /// The object with the key, which Fetch takes; nothing if there is no such object. Throws DatabaseError,
    /// also if anything in the database is damaged.
    std::optional<FetchedRoot> Find(const std::string& key);
    /// Writes the object, and everything below it, as the compact text of a document, piece by piece. Memory
    /// does not grow with the text, but with the depth and with the number of nodes that are still to come in
    /// those that contain the current one. An error of `write` ends it and is returned. Throws DatabaseError.
    std::error_code Fetch(const FetchedRoot& root, const WritePiece& write, Console& console);

private:
    struct State;
    explicit Server(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace host

#pragma once

#include <libjson.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "ServerFetch.h"
#include "ServerList.h"
#include "ServerProject.h"
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
/// - the object with the node's "dbkey", if this database gave that key to an object of the same kind and the
///   same project, and no other node of the document has it. Files may have it several times, because a file
///   can be attached to several objects. If the "dbkey" of a view item is the key of an assembly or an
///   iteration model, the view item shows that object. An object that was stored alone, before the project
///   that it is a part of, comes into that project with all that is below it.
/// - otherwise, the object that was stored last at the same path: below the same object, with the same kind
/// and
///   "name", and for files the same "fileType". Equal siblings are told apart by their order. An object that
///   was detached is found at the path that it had.
/// - otherwise, a new object.
///
/// Identifiers only say which nodes of one document are the same file, and carry the keys back in the answer.
///
/// The path begins at the root. A root without a key is new, if its project is new. Otherwise it is the root
/// of the project, or the only object of the project with its kind and name; StoreRequest says which project
/// it is. A document whose root could be several objects, or none, is refused: no key goes to an object by a
/// guess.
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
    /// "children" and "files". Throws DatabaseError, also for a document that is refused, and then nothing is
    /// stored.
    JSONNode Store(const JSONNode& document, const StoreRequest& request, StoreReport& report,
                   Console& console);

    /// What the database holds: the roots of the documents that were stored, by their projects in the order
    /// in which these came. Throws DatabaseError, also if anything in the database is damaged.
    std::vector<StoredRoot> List();
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

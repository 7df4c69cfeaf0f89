#include "ServerProject.h"

#include <string_view>
#include <vector>

#include "ServerTables.h"
#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "host/document/DocumentNode.h"
#include "host/system/CheckedInsert.h"
#include "host/system/Text.h"

namespace host {
namespace {

std::optional<std::int64_t> FindProject(Database& database, const std::string& name) {
    Statement find(database, "SELECT number FROM project WHERE name = ?");
    return find.Begin(name).Next() ? std::optional(find.Number(0)) : std::nullopt;
}

std::int64_t AddProject(Database& database, const std::string& name, RowSum& sum) {
    const std::int64_t number = NextNumber(database, "project", 1);
    CheckedInsert(database, "project", 2, true, sum).Run(number, name);
    return number;
}

/// Calls the project as its root, if it was called as the root was before.
void FollowRoot(Database& database, std::int64_t project, const std::string& oldName,
                const StoredNode& root) {
    const std::string name = root.Name().name;
    Statement before(database,
                     "SELECT count(*) FROM node WHERE object = ? AND owner IS NULL AND ordinal >= 0"
                     " AND name = ?");
    const bool isNamedAfterIt = before.Begin(root.object, oldName).Next() && before.Number(0) > 0;
    if (isNamedAfterIt && !name.empty() && !FindProject(database, name)) {
        Statement(database, "UPDATE project SET name = ? WHERE number = ?").Run(name, project);
    }
}

/// Objects that may be the root of a document.
struct Candidates {
    /// Those that were stored as roots, and all.
    std::vector<KnownObject> roots;
    std::vector<KnownObject> all;
};

void AddTo(std::vector<KnownObject>& objects, const Statement& row) {
    // Two are as good as many. The rows of an object come one after another.
    if (objects.size() < 2 && (objects.empty() || objects.back().object != row.Number(0))) {
        objects.push_back({row.Number(0), row.Text(1), row.Text(2)});
    }
}

Candidates FindCandidates(Database& database, std::int64_t project, const NodeName& name,
                          const std::unordered_set<std::int64_t>& taken) {
    Statement rows(database,
                   "SELECT object.number, object.key, object.type, node.owner, node.ordinal FROM object"
                   " JOIN node ON node.object = object.number"
                   " WHERE object.project = ? AND node.name = ? ORDER BY object.number");
    Candidates candidates;
    rows.Begin(project, name.name);
    while (rows.Next()) {
        if (KeyPrefix(rows.TextView(2)) == name.kind && !taken.contains(rows.Number(0))) {
            AddTo(candidates.all, rows);
            if (rows.IsNull(3) && rows.Number(4) != kUnknownPlace) {
                AddTo(candidates.roots, rows);
            }
        }
    }
    return candidates;
}

}  // namespace

bool HasWhole(Database& database, std::int64_t project) {
    Statement types(database, "SELECT type FROM object WHERE project = ?");
    types.Begin(project);
    while (types.Next()) {
        if (KeyPrefix(types.TextView(0)) == KeyPrefix(format::TypeOfKind(format::Kind::kProject))) {
            return true;
        }
    }
    return false;
}

bool IsStoredRoot(Database& database, std::int64_t object) {
    Statement find(database,
                   "SELECT 1 FROM node WHERE object = ? AND owner IS NULL AND ordinal >= 0 LIMIT 1");
    return find.Begin(object).Next();
}

ProjectOfDocument FindProjectOfRoot(Database& database, const StoredNode& root, const StoreRequest& request) {
    Statement find(database,
                   "SELECT project.number, project.name FROM object"
                   " JOIN project ON project.number = object.project WHERE object.number = ?");
    if (!find.Begin(root.object).Next()) {
        RefuseDamaged("an object has no project");
    }
    const std::int64_t number = find.Number(0);
    const std::string name = find.Text(1);
    find.Reset();
    if (!request.project.empty() && request.project != name) {
        throw DatabaseError("has the root of the document, by its key, in the project " + Quoted(name) +
                            " and not in " + Quoted(request.project) + ": leave out --project");
    }
    if (request.project.empty()) {
        FollowRoot(database, number, name, root);
    }
    return {number, name};
}

ProjectOfDocument FindProjectByName(Database& database, const StoredNode& root, const StoreRequest& request,
                                    RowSum& sum) {
    const std::string name = request.project.empty() ? root.Name().name : request.project;
    if (name.empty()) {
        throw DatabaseError(
            "did not give the key that the root of the document has, and the root has no name: give the name "
            "of the project with --project");
    }
    const std::optional<std::int64_t> known = FindProject(database, name);
    if (!known && request.isAgain) {
        throw DatabaseError("has no project " + Quoted(name) + ": leave out --again to store a new one");
    }
    if (!known) {
        return {AddProject(database, name, sum), name, true};
    }
    if (!request.isAgain) {
        throw DatabaseError(
            "has a project " + Quoted(name) +
            " already, and the root of the document does not have its key. If the document is "
            "of that project, use --again: its objects are then recognised by their names. If "
            "it is of another project, give that another name with --project");
    }
    return {*known, name};
}

std::optional<KnownObject> FindRootByName(Database& database, const ProjectOfDocument& project,
                                          const StoredNode& root,
                                          const std::unordered_set<std::int64_t>& taken) {
    if (project.isNew) {
        return std::nullopt;
    }
    const NodeName name = root.Name();
    const Candidates candidates = FindCandidates(database, project.number, name, taken);
    const std::vector<KnownObject>& found = candidates.roots.empty() ? candidates.all : candidates.roots;
    if (found.size() == 1) {
        return found.front();
    }
    const std::string what = Quoted(name.name) + " (" + Printable(std::string_view(root.type)) +
                             ") in the project " + Quoted(project.name);
    constexpr const char* kAdvice =
        ". Store the document of the whole project, or one whose root has its key: 'korvane-json apply' sets "
        "the keys";
    if (!found.empty()) {
        throw DatabaseError("has more than one " + what +
                            ", and the document does not say which of them its root is" + kAdvice);
    }
    if (HasWhole(database, project.number)) {
        throw DatabaseError("has no " + what + ", and the document does not say where its root belongs" +
                            kAdvice);
    }
    return std::nullopt;
}

}  // namespace host

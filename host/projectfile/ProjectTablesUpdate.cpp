#include <EmbeddedModel.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ProjectTables.h"
#include "host/system/RowHash.h"

namespace host {
namespace {

/// A text that rows of a table have, which the object model may have changed since the table was read.
struct ChangingText {
    /// All columns of the table, in their order.
    const char* rows;
    int columnCount;
    /// The columns of the object's identifier and of the text.
    int identifier;
    int text;
    /// Whether the checksum has the rowid, which is the first column, once again at the end.
    bool isIndexed;
    const char* update;
};

constexpr ChangingText kKeys = {
    "SELECT place, id, above, is_project_file, kind, name, database_key, link_database_key, created_date,"
    " created_by FROM object",
    10,
    1,
    6,
    true,
    "UPDATE object SET database_key = ? WHERE place = ?"};
constexpr ChangingText kDisplayNames = {
    "SELECT object, display_name, additional_type, directory, program_reference FROM project",
    5,
    0,
    1,
    false,
    "UPDATE project SET display_name = ? WHERE object = ?"};

/// Writes the rows whose text has changed, and keeps account of what that does to the checksum.
class Updater {
public:
    Updater(Database& database, CAEProject& project) : database_(database), project_(project) {}

    /// `now` returns the text of an object.
    template <typename Now>
    void Update(const std::string& table, const ChangingText& changing, const Now& now) {
        struct Change {
            std::int64_t row;
            OuString text;
        };
        std::vector<Change> changes;
        {
            Statement rows(database_, changing.rows);
            rows.Begin();
            while (rows.Next()) {
                CAEObject* const object =
                    project_.getCAEObject(static_cast<int>(rows.Number(changing.identifier)));
                OuString text = now(*object);
                if (rows.TextView(changing.text) != text.GetAnsiBuffer()) {
                    Account(table, changing, rows, text);
                    changes.push_back({rows.Number(0), std::move(text)});
                }
            }
        }
        Statement update(database_, changing.update);
        for (const Change& change : changes) {
            update.Run(change.text.GetAnsiBuffer(), change.row);
        }
    }

    std::int64_t SumAfter(std::int64_t sumBefore) {
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(sumBefore) - removed_.Value() +
                                         added_.Value());
    }

private:
    void Account(const std::string& table, const ChangingText& changing, const Statement& row,
                 const OuString& text) {
        removed_.Begin(table);
        added_.Begin(table);
        for (int column = 0; column < changing.columnCount; ++column) {
            removed_.AddColumn(row.Handle(), column);
            if (column == changing.text) {
                added_.Add(std::string_view(text.GetAnsiBuffer()));
            } else {
                added_.AddColumn(row.Handle(), column);
            }
        }
        if (changing.isIndexed) {
            removed_.AddColumn(row.Handle(), 0);
            added_.AddColumn(row.Handle(), 0);
        }
        removed_.End();
        added_.End();
    }

    Database& database_;
    CAEProject& project_;
    RowSum removed_;
    RowSum added_;
};

}  // namespace

void UpdateProjectTables(Database& database, const ProjectWriting& writing, Console& console) {
    const std::optional<std::int64_t> sum = ReadChecksum(database);
    if (!sum) {
        WriteProjectTables(database, writing, console);
        return;
    }
    console.ShowProgress("Writing the keys", 0, 0);
    Updater updater(database, writing.project);
    updater.Update("object", kKeys, [](const CAEObject& object) { return object.getDBKey(); });
    updater.Update("project", kDisplayNames, [](const CAEObject& object) {
        return korvane::GetDisplayName(dynamic_cast<const CAEProject&>(object));
    });
    WriteChecksum(database, kProjectFileKind, updater.SumAfter(*sum));
    console.ClearProgress();
}

}  // namespace host

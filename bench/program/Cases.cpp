#include "Cases.h"

#include <cstddef>
#include <filesystem>

#include "Checks.h"
#include "Process.h"
#include "Rows.h"

namespace bench {

std::vector<Case> MakeCases(const Programs& programs, const Inputs& inputs) {
    const std::string result = (inputs.folder / "result.kvp").string();
    const std::string floor = (inputs.folder / "floor.kvp").string();
    const std::string stored = (inputs.folder / "result.db").string();
    const std::string fetched = (inputs.folder / "result.json").string();
    const auto clear = [=] {
        for (const std::string& file : {result, floor, stored, fetched}) {
            std::filesystem::remove(file);
        }
    };
    const auto sameRows = [=] { ExpectSameRows(result, floor); };
    const std::string imported = (inputs.folder / "imported.kvp").string();
    Run(programs.Command({"import", inputs.document, imported}));
    const std::string answer = (inputs.folder / "answer-again.json").string();
    std::vector<Case> cases;
    cases.push_back({"new",
                     clear,
                     programs.Command({"new", inputs.project, result}),
                     {},
                     programs.Floor({"copy", inputs.project, floor}),
                     sameRows});
    cases.push_back({"import",
                     clear,
                     programs.Command({"import", inputs.document, result}),
                     {},
                     programs.Floor({"write", imported, floor}),
                     [=] {
                         ExpectSameRows(result, floor);
                         Run(programs.Command({"compare", result, inputs.document}));
                     }});
    cases.push_back({"store",
                     clear,
                     programs.Command({"store", inputs.document, "--db", stored, "-o", answer}),
                     {},
                     programs.Floor({"write", inputs.database, floor}),
                     [=] {
                         // Every database has a text of its own at the end of its keys.
                         const Rows ours = LoadRows(stored);
                         const Rows theirs = LoadRows(floor);
                         for (std::size_t index = 0; index < ours.tables.size(); ++index) {
                             Expect(ours.tables[index].RowCount() == theirs.tables[index].RowCount(),
                                    "the rows of " + ours.tables[index].name);
                         }
                         Expect(ReadText(answer).size() == ReadText(inputs.answer).size(), "the answer");
                     }});
    cases.push_back({"fetch",
                     clear,
                     programs.Command({"fetch", inputs.key, "--db", inputs.database, "-o", fetched}),
                     {},
                     programs.Floor({"fetch", inputs.database}),
                     [=] { Expect(ReadText(fetched) == ReadText(inputs.fetched), "the document"); }});
    cases.push_back({"apply",
                     [=] {
                         clear();
                         std::filesystem::copy_file(inputs.project, result);
                         std::filesystem::copy_file(inputs.project, floor);
                     },
                     programs.Command({"apply", inputs.answer, result}),
                     {},
                     programs.Floor({"keys", floor, inputs.answered}),
                     sameRows});
    cases.push_back({"compare project files",
                     [] {},
                     programs.Command({"compare", inputs.project, imported}),
                     {},
                     programs.Floor({"read", inputs.project, imported}),
                     [] {}});
    cases.push_back({"compare documents",
                     [] {},
                     programs.Command({"compare", inputs.document, inputs.document}),
                     {},
                     programs.Floor({"parse", inputs.document, inputs.document}),
                     [] {}});
    return cases;
}

}  // namespace bench

#include "Inputs.h"

#include <cstddef>
#include <string_view>

#include "Checks.h"
#include "Process.h"
#include "Rows.h"

namespace bench {
namespace {

std::string FirstKey(const std::string& answer) {
    const std::string text = ReadText(answer);
    constexpr std::string_view kBefore = R"("dbkey":")";
    const std::size_t begin = text.find(kBefore) + kBefore.size();
    return text.substr(begin, text.find('"', begin) - begin);
}

/// The objects, files and texts that were made are those that the commands have handled so far.
void CheckInputs(const Programs& programs, const Inputs& inputs, int objects) {
    const Rows rows = LoadRows(inputs.project);
    const auto countOf = [&](const char* table) {
        for (const Table& one : rows.tables) {
            if (one.name == table) {
                return one.RowCount();
            }
        }
        return std::size_t{0};
    };
    const auto count = static_cast<std::size_t>(objects);
    Expect(countOf("metadata") == 4 * count, "four metadata entries per object");
    Expect(countOf("object") == count + 1 + countOf("attached_file"), "a row for every object and file");
    Expect(countOf("attached_file") == count * 13 / 20, "0.65 files per object");
    // A document that was fetched is the one that an export gives once the keys are applied.
    const std::string exported = (inputs.folder / "exported.json").string();
    Run(programs.Command({"export", inputs.answered, "-o", exported}));
    Expect(ReadText(exported).size() > ReadText(inputs.document).size(), "keys in the document");
    Run(programs.Command({"compare", exported, inputs.fetched}));
}

}  // namespace

std::vector<std::string> Programs::Command(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), program);
    return arguments;
}

std::vector<std::string> Programs::Floor(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {self, "--floor"});
    return arguments;
}

Inputs MakeInputs(const Programs& programs, const std::filesystem::path& folder, int objects) {
    Inputs inputs;
    inputs.folder = folder / std::to_string(objects);
    std::filesystem::create_directories(inputs.folder);
    const auto name = [&](const char* file) { return (inputs.folder / file).string(); };
    inputs.document = name("document.json");
    inputs.project = name("project.kvp");
    inputs.answered = name("answered.kvp");
    inputs.answer = name("answer.json");
    inputs.database = name("server.db");
    inputs.fetched = name("fetched.json");
    Run({programs.self, "--make", std::to_string(objects), inputs.project});
    Run(programs.Command({"export", inputs.project, "-o", inputs.document}));
    Run(programs.Command({"store", inputs.document, "--db", inputs.database, "-o", inputs.answer}));
    std::filesystem::copy_file(inputs.project, inputs.answered);
    Run(programs.Command({"apply", inputs.answer, inputs.answered}));
    inputs.key = FirstKey(inputs.answer);
    Run(programs.Command({"fetch", inputs.key, "--db", inputs.database, "-o", inputs.fetched}));
    RunApart([&] { CheckInputs(programs, inputs, objects); });
    return inputs;
}

}  // namespace bench

// The commands of korvane-json on large projects, each beside its floor (Floors.h) in the same run:
//
//     measure-program KORVANE-JSON [--objects N,N..] [--runs N] [--only COMMAND,..] [--json FILE]
//
// Times are processor times of whole processes; commands and floors take turns. Before a time
// counts, the results of the command are compared with those of its floor or with another command's.

#include <korvanejson/JsonSerializer.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "BenchProject.h"
#include "Floors.h"
#include "Process.h"
#include "Report.h"
#include "Rows.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Console.h"

namespace bench {
namespace {

using std::filesystem::path;

struct Options {
    std::string self;
    std::string program;
    std::vector<int> objects = {10'000, 100'000, 1'000'000};
    int runs = 5;
    std::vector<std::string> only;
    std::string json;
};

/// The files that the commands of one size read.
struct Inputs {
    path folder;
    std::string document;
    std::string project;
    std::string answered;
    std::string answer;
    std::string database;
    std::string fetched;
    std::string key;
};

/// A command with its floor. Both start from the same files, which `prepare` puts in place.
struct Case {
    std::string what;
    std::function<void()> prepare;
    std::vector<std::string> command;
    std::vector<std::string> floor;
    /// Compares the results; throws if they differ.
    std::function<void()> check;
};

void Expect(bool holds, const std::string& what) {
    if (!holds) {
        throw std::runtime_error("not as it has to be: " + what);
    }
}

void ExpectSameRows(const std::string& first, const std::string& second) {
    const std::string difference = DifferenceOf(LoadRows(first), LoadRows(second));
    Expect(difference.empty(), first + " and " + second + " differ in " + difference);
}

std::string ReadText(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::string FirstKey(const std::string& answer) {
    const std::string text = ReadText(answer);
    constexpr std::string_view kBefore = R"("dbkey":")";
    const std::size_t begin = text.find(kBefore) + kBefore.size();
    return text.substr(begin, text.find('"', begin) - begin);
}

class Measuring {
public:
    Measuring(const Options& options, path folder) : options_(options), folder_(std::move(folder)) {}

    std::vector<Measurement> Run();

private:
    Inputs MakeInputs(int objects);
    void CheckInputs(const Inputs& inputs, int objects);
    std::vector<Case> MakeCases(const Inputs& inputs);
    Measurement Measure(const Case& one, int objects);
    std::vector<std::string> Program(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), options_.program);
        return arguments;
    }
    std::vector<std::string> Floor(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {options_.self, "--floor"});
        return arguments;
    }

    const Options& options_;
    path folder_;
};

Inputs Measuring::MakeInputs(int objects) {
    Inputs inputs;
    inputs.folder = folder_ / std::to_string(objects);
    std::filesystem::create_directories(inputs.folder);
    const auto name = [&](const char* file) { return (inputs.folder / file).string(); };
    inputs.document = name("document.json");
    inputs.project = name("project.kvp");
    inputs.answered = name("answered.kvp");
    inputs.answer = name("answer.json");
    inputs.database = name("server.db");
    inputs.fetched = name("fetched.json");
    bench::Run({options_.self, "--make", std::to_string(objects), inputs.project});
    bench::Run(Program({"export", inputs.project, "-o", inputs.document}));
    bench::Run(Program({"store", inputs.document, "--db", inputs.database, "-o", inputs.answer}));
    std::filesystem::copy_file(inputs.project, inputs.answered);
    bench::Run(Program({"apply", inputs.answer, inputs.answered}));
    inputs.key = FirstKey(inputs.answer);
    bench::Run(Program({"fetch", inputs.key, "--db", inputs.database, "-o", inputs.fetched}));
    RunApart([&] { CheckInputs(inputs, objects); });
    return inputs;
}

/// The objects, files and texts that were made are those that the commands have handled so far.
void Measuring::CheckInputs(const Inputs& inputs, int objects) {
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
    bench::Run(Program({"export", inputs.answered, "-o", exported}));
    Expect(ReadText(exported).size() > ReadText(inputs.document).size(), "keys in the document");
    bench::Run(Program({"compare", exported, inputs.fetched}));
}

std::vector<Case> Measuring::MakeCases(const Inputs& inputs) {
    const std::string result = (inputs.folder / "result").string();
    const std::string floor = (inputs.folder / "floor").string();
    const auto clear = [=] {
        std::filesystem::remove(result);
        std::filesystem::remove(floor);
    };
    const auto sameRows = [=] { ExpectSameRows(result, floor); };
    const std::string imported = (inputs.folder / "imported.kvp").string();
    bench::Run(Program({"import", inputs.document, imported}));
    const std::string answer = (inputs.folder / "answer-again.json").string();
    std::vector<Case> cases;
    cases.push_back({"new", clear, Program({"new", inputs.project, result}),
                     Floor({"copy", inputs.project, floor}), sameRows});
    cases.push_back({"import", clear, Program({"import", inputs.document, result}),
                     Floor({"write", imported, floor}), [=, this] {
                         ExpectSameRows(result, floor);
                         const std::string copy = result + ".kvp";
                         std::filesystem::copy_file(result, copy);
                         bench::Run(Program({"compare", copy, inputs.document}));
                         std::filesystem::remove(copy);
                     }});
    cases.push_back({"store", clear, Program({"store", inputs.document, "--db", result, "-o", answer}),
                     Floor({"write", inputs.database, floor}), [=] {
                         // Every database has a text of its own at the end of its keys.
                         const Rows ours = LoadRows(result);
                         const Rows theirs = LoadRows(floor);
                         for (std::size_t index = 0; index < ours.tables.size(); ++index) {
                             Expect(ours.tables[index].RowCount() == theirs.tables[index].RowCount(),
                                    "the rows of " + ours.tables[index].name);
                         }
                         Expect(ReadText(answer).size() == ReadText(inputs.answer).size(), "the answer");
                     }});
    cases.push_back({"fetch", clear, Program({"fetch", inputs.key, "--db", inputs.database, "-o", result}),
                     Floor({"fetch", inputs.database}),
                     [=] { Expect(ReadText(result) == ReadText(inputs.fetched), "the document"); }});
    cases.push_back({"apply",
                     [=] {
                         clear();
                         std::filesystem::copy_file(inputs.project, result);
                         std::filesystem::copy_file(inputs.project, floor);
                     },
                     Program({"apply", inputs.answer, result}), Floor({"keys", floor, inputs.answered}),
                     sameRows});
    cases.push_back({"compare project files", [] {}, Program({"compare", inputs.project, imported}),
                     Floor({"read", inputs.project, imported}), [] {}});
    cases.push_back({"compare documents", [] {}, Program({"compare", inputs.document, inputs.document}),
                     Floor({"parse", inputs.document, inputs.document}), [] {}});
    return cases;
}

Measurement Measuring::Measure(const Case& one, int objects) {
    Measurement measurement{one.what, objects, {}, {}};
    const auto add = [](Samples& samples, const Usage& usage, double seconds) {
        samples.seconds.push_back(seconds);
        samples.peakMiB = std::max(samples.peakMiB, usage.peakMiB);
    };
    for (int run = 0; run < options_.runs; ++run) {
        one.prepare();
        const Usage command = bench::Run(one.command);
        const Usage floor = bench::Run(one.floor);
        if (run == 0) {
            RunApart(one.check);
        }
        add(measurement.command, command, command.seconds);
        add(measurement.floor, floor, std::stod(floor.output));
    }
    return measurement;
}

std::vector<Measurement> Measuring::Run() {
    std::vector<Measurement> measurements;
    for (const int objects : options_.objects) {
        const Inputs inputs = MakeInputs(objects);
        for (const Case& one : MakeCases(inputs)) {
            if (!options_.only.empty() && std::ranges::none_of(options_.only, [&](const std::string& name) {
                    return one.what.starts_with(name);
                })) {
                continue;
            }
            measurements.push_back(Measure(one, objects));
            std::fputs(TableOf({measurements.back()}).c_str(), stderr);
            // What was measured is kept if the rest comes to no end.
            if (!options_.json.empty()) {
                std::ofstream(options_.json) << JsonOf(measurements);
            }
        }
        std::filesystem::remove_all(inputs.folder);
    }
    return measurements;
}

std::vector<std::string> Split(const std::string& list) {
    std::vector<std::string> parts;
    std::istringstream stream(list);
    for (std::string part; std::getline(stream, part, ',');) {
        parts.push_back(part);
    }
    return parts;
}

Options ReadOptions(const std::vector<std::string>& arguments) {
    Options options;
    options.self = std::filesystem::read_symlink("/proc/self/exe").string();
    options.program = arguments.at(0);
    for (std::size_t index = 1; index < arguments.size(); index += 2) {
        const std::string& name = arguments[index];
        const std::string& value = arguments.at(index + 1);
        if (name == "--objects") {
            options.objects.clear();
            for (const std::string& count : Split(value)) {
                options.objects.push_back(std::stoi(count));
            }
        } else if (name == "--runs") {
            options.runs = std::stoi(value);
        } else if (name == "--only") {
            options.only = Split(value);
        } else if (name == "--json") {
            options.json = value;
        } else {
            throw std::runtime_error("there is no option " + name);
        }
    }
    return options;
}

void Main(const std::vector<std::string>& arguments) {
    if (arguments.at(0) == "--floor") {
        std::printf("%.9f\n", RunFloor(arguments.at(1), {arguments.begin() + 2, arguments.end()}));
        return;
    }
    if (arguments.at(0) == "--make") {
        const auto project = MakeBenchProject(std::stoi(arguments.at(1)));
        host::Console console;
        host::CreateProjectFile(arguments.at(2), *project, console);
        return;
    }
    const Options options = ReadOptions(arguments);
    std::string folder = (std::filesystem::current_path() / "measure-program-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error("no folder can be made here");
    }
    std::vector<Measurement> measurements;
    try {
        measurements = Measuring(options, folder).Run();
    } catch (...) {
        std::filesystem::remove_all(folder);
        throw;
    }
    std::filesystem::remove_all(folder);
    std::fputs(TableOf(measurements).c_str(), stdout);
}

}  // namespace
}  // namespace bench

int main(int count, char** arguments) {
    try {
        bench::Main({arguments + 1, arguments + count});
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "measure-program: %s\n", error.what());
        return 1;
    }
}

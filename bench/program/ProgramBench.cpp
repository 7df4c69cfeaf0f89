// The commands of korvane-json on large projects, each beside its floor (Floors.h) in the same run:
//
//     measure-program KORVANE-JSON [--objects N,N..] [--runs N] [--only COMMAND,..] [--json FILE]
//
// Times are processor times of whole processes; commands and floors take turns. Before a time
// counts, the results of the command are compared with those of its floor or with another command's.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "BenchProject.h"
#include "Cases.h"
#include "Floors.h"
#include "Inputs.h"
#include "Process.h"
#include "Report.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Console.h"

namespace bench {
namespace {

using std::filesystem::path;

struct Options {
    Programs programs;
    std::vector<int> objects = {10'000, 100'000, 1'000'000};
    int runs = 5;
    std::vector<std::string> only;
    std::string json;
};

class Measuring {
public:
    Measuring(const Options& options, path folder) : options_(options), folder_(std::move(folder)) {}

    std::vector<Measurement> Run();

private:
    Measurement Measure(const Case& one, int objects);

    const Options& options_;
    path folder_;
};

Measurement Measuring::Measure(const Case& one, int objects) {
    Measurement measurement{one.what, objects, {}, {}};
    const auto add = [](Samples& samples, const Usage& usage, double seconds) {
        samples.seconds.push_back(seconds);
        samples.peakMiB = std::max(samples.peakMiB, usage.peakMiB);
    };
    for (int run = 0; run < options_.runs; ++run) {
        one.prepare();
        const Usage command = one.output.empty() ? bench::Run(one.command) : RunInto(one.output, one.command);
        const Usage floor = bench::Run(one.floor);
        if (run == 0) {
            RunApart(one.check);
        }
        add(measurement.command, command, command.seconds);
        add(measurement.floor, floor, std::stod(floor.output));
    }
    return measurement;
}

std::vector<Case> AllCases(const Programs& programs, const Inputs& inputs, int objects) {
    std::vector<Case> cases = MakeCases(programs, inputs);
    std::ranges::copy(MakeOutputCases(programs, inputs), std::back_inserter(cases));
    if (objects <= kMostObjectsOfDirectory) {
        cases.push_back(MakeUpdateCase(programs, inputs, objects));
    }
    return cases;
}

std::vector<Measurement> Measuring::Run() {
    std::vector<Measurement> measurements;
    for (const int objects : options_.objects) {
        const Inputs inputs = MakeInputs(options_.programs, folder_, objects);
        for (const Case& one : AllCases(options_.programs, inputs, objects)) {
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
    options.programs.self = std::filesystem::read_symlink("/proc/self/exe").string();
    options.programs.program = arguments.at(0);
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

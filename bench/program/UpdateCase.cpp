#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>

#include "Cases.h"
#include "Checks.h"
#include "Process.h"

namespace bench {
namespace {

using std::filesystem::path;

constexpr int kRunsPerStudy = 10;
/// The study of a run, its part, the folder of its iterations, the iteration and its model.
constexpr int kObjectsPerRun = 5;

void Write(const path& file, std::initializer_list<std::string_view> parts) {
    std::ofstream stream(file, std::ios::binary);
    for (const std::string_view part : parts) {
        stream << part;
    }
}

/// Runs of CalculiX with a mesh, a result, a part and notes each.
void MakeDirectory(const path& directory, int objects) {
    for (int run = 0; run < objects / kObjectsPerRun; ++run) {
        const std::string number = std::to_string(run);
        const path folder = directory / ("study " + std::to_string(run / kRunsPerStudy)) / ("run " + number);
        std::filesystem::create_directories(folder);
        Write(folder / ("run" + number + ".inp"),
              {"*HEADING\nrun ", number, "\n*INCLUDE, INPUT=mesh.inc\n*STEP\n*STATIC\n*CLOAD\n1, 1, ", number,
               "\n*END STEP\n"});
        Write(folder / "mesh.inc", {"*NODE\n1, 0., 0., 0.\n2, 1., 0., 0.\n3, 1., 1., 0.\n",
                                    "*ELEMENT, TYPE=S3, ELSET=SHELL\n1, 1, 2, 3\n"});
        Write(folder / ("run" + number + ".frd"), {"    1C\n    1UUSER\n", std::string(200, ' '), number});
        Write(folder / ("bracket" + number + ".step"), {"ISO-10303-21;\nHEADER;\nENDSEC;\n"});
        Write(folder / "notes.txt", {"what was tried in run ", number, "\n"});
    }
}

}  // namespace

Case MakeUpdateCase(const Programs& programs, const Inputs& inputs, int objects) {
    const std::string directory = (inputs.folder / "studies").string();
    const std::string project = (inputs.folder / "studies.kvp").string();
    const std::string result = (inputs.folder / "updated.kvp").string();
    const auto prepare = [=] {
        if (!std::filesystem::exists(directory)) {
            MakeDirectory(directory, objects);
            Run(programs.Command({"new", directory, project}));
        }
        std::filesystem::remove(result);
        std::filesystem::copy_file(project, result);
    };
    return {"update",
            prepare,
            programs.Command({"update", directory, result}),
            {},
            programs.Floor({"directory", result, directory}),
            [=] {
                ExpectSameRows(result, project);
                const Usage found = Run(programs.Command({"find", result, "kind=Iteration", "--count"}));
                Expect(std::stoi(found.output) == objects / kObjectsPerRun,
                       "the iterations of the directory");
            }};
}

}  // namespace bench

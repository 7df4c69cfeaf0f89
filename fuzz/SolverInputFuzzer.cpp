// Reads any text as input of every solver. The first line is the name of the file, which tells the solver.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "Expect.h"
#include "host/directory/FileFormat.h"
#include "host/directory/FileKinds.h"
#include "host/directory/SolverInputReader.h"

namespace {

void ExpectRead(host::Solver solver, const std::string& name, const host::FileSample& sample) {
    const host::SolverInput input = host::ReadSolverInput(solver, name, sample);
    const host::SolverInput again = host::ReadSolverInput(solver, name, sample);
    Expect(input.role == again.role && input.solver == again.solver && input.includes == again.includes,
           "a text is read alike every time");
    for (const std::string& include : input.includes) {
        Expect(!include.empty(), "an included file has a name");
        Expect(include.find('\\') == std::string::npos, "the names of included files have slashes");
    }
    Expect(solver != host::Solver::OptiStruct || input.solver == solver, "the name settles OptiStruct");
    static_cast<void>(host::IsPrintedResult(sample));
    static_cast<void>(host::DetectFormat(sample.head));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t end = bytes.find('\n');
    const std::string name(bytes.substr(0, end));
    const std::string text(end == std::string_view::npos ? std::string_view() : bytes.substr(end + 1));
    const host::Solver solver = host::KindOfFileName(std::filesystem::path(name)).solver;
    ExpectRead(solver, name, {text, {}});
    ExpectRead(host::Solver::None, name, {text, {}});
    // Long files are read at both ends.
    ExpectRead(solver, name, {text.substr(0, text.size() / 2), text.substr(text.size() / 2)});
    return 0;
}

// Imports any document onto objects of a project, with the library and with the program, and exports what
// came of it: both made the same objects, and their document makes the trip.

#include <CAEFile.h>
#include <korvanejson/CaeRest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "Expect.h"
#include "Trip.h"
#include "format/MemberNames.h"
#include "host/document/DocumentImport.h"
#include "host/document/ReportText.h"
#include "host/document/TreePrinter.h"
#include "objectjson/NodeReading.h"

namespace {

constexpr int kTargets[] = {1, 2, 3, 4, 5, 6, 7};

/// The program takes null keys out of the document, and makes a new object of a root of another kind: that
/// apart it does what the library does.
void ExpectProgramImports(const JSONNode& document) {
    std::string said;
    host::Console console([&](std::string_view text) { said += text; }, false, &host::Console::Clock::now);
    const std::unique_ptr<CAEProject> project = MakeProject();
    AddTargets(*project);
    const host::ImportReport report = host::ImportDocument(document, *project, {}, console);
    host::SayImport(report, "the project", console);
    Expect(!said.empty(), "an import is reported");
    Expect(!host::PrintTree(*project, {}).empty(), "a project is printed");
    ExpectTrip(*project);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::optional<JSONNode> document = ReadBytes({reinterpret_cast<const char*>(data), size});
    if (!document) {
        return 0;
    }
    const JSONNode before = document->duplicate();
    const std::unique_ptr<CAEProject> project = MakeProject();
    AddTargets(*project);
    const int target = kTargets[size % std::size(kTargets)];
    CAEObject* const object = project->getCAEObject(target);
    Expect(object != nullptr, "every target is there");
    caerest::json::DeserializeJsonToObject(*document, object);
    Expect(*document == before, "an import leaves the document as it was");
    ExpectTrip(*object);
    ExpectTrip(*project);
    if (document->type() == JSON_NODE) {
        ExpectProgramImports(*document);
    }
    return 0;
}

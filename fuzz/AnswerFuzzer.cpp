// Applies any answer to the objects of a project: each has the key that the answer has for its identifier,
// and nothing else changes.

#include <EmbeddedModel.h>
#include <korvanejson/CaeRest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>

#include "Expect.h"
#include "Trip.h"
#include "host/document/DocumentImport.h"
#include "host/document/ReportText.h"

namespace {

constexpr int kLastIdentifier = 7;

using Keys = std::map<std::string, std::string>;

std::string KeyOf(CAEProject& project, int identifier) {
    return std::string(OuString(project.getCAEObject(identifier)->getDBKey()).GetAnsiBuffer());
}

/// Adds the keys of an answer: one object node, or an array of them.
void AddKeys(const JSONNode& answer, Keys& keys) {
    if (answer.type() != JSON_ARRAY) {
        caerest::json::util::ParseNode(answer, keys);
        return;
    }
    for (const JSONNode& element : answer) {
        caerest::json::util::ParseNode(element, keys);
    }
}

/// Identifiers that mean one object under several texts are applied in the order of the texts.
std::map<int, std::string> KeysByIdentifier(const Keys& keys) {
    std::map<int, std::string> byIdentifier;
    for (const auto& [identifier, key] : keys) {
        constexpr long kMost = 2147483647;
        const long number = std::strtol(identifier.c_str(), nullptr, 10);
        const long nearest = number > kMost ? kMost : number < -kMost - 1 ? -kMost - 1 : number;
        OuString text(key.c_str(), 0);
        byIdentifier[static_cast<int>(nearest)] = text.GetAnsiBuffer();
    }
    return byIdentifier;
}

void ExpectApplied(const JSONNode& answer, const Keys& keys) {
    const std::unique_ptr<CAEProject> project = MakeProject();
    AddTargets(*project);
    caerest::json::ApplyJsonResponseOnObject(answer, project->getCAEObject(2));
    const std::map<int, std::string> expected = KeysByIdentifier(keys);
    for (int identifier = 1; identifier <= kLastIdentifier; ++identifier) {
        const auto found = expected.find(identifier);
        Expect(KeyOf(*project, identifier) == (found != expected.end() ? found->second : std::string()),
               "an object has the key of the answer");
    }
    ExportDocument(*project);
}

/// The program does the same and reports it; only keys that are null are nothing to it.
void ExpectProgramApplies(const JSONNode& answer) {
    std::string said;
    host::Console console([&](std::string_view text) { said += text; }, false, &host::Console::Clock::now);
    const std::unique_ptr<CAEProject> project = MakeProject();
    AddTargets(*project);
    const host::AnswerReport report = host::ApplyAnswer(answer, *project, console);
    if (!report.hasFitted) {
        Expect(!report.whyUseless.empty(), "an answer that fits nothing is named");
        return;
    }
    host::SayAnswer(report, "the project", console);
    std::size_t keys = 0;
    for (int identifier = 1; identifier <= kLastIdentifier; ++identifier) {
        keys += KeyOf(*project, identifier).empty() ? 0 : 1;
    }
    Expect(report.keysSet >= keys, "the keys of the report are those of the objects");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::optional<JSONNode> answer = ReadBytes({reinterpret_cast<const char*>(data), size});
    if (!answer) {
        return 0;
    }
    const JSONNode before = answer->duplicate();
    Keys keys;
    AddKeys(*answer, keys);
    const Keys once = keys;
    AddKeys(*answer, keys);
    Expect(keys == once, "entries that are there already stay");
    ExpectApplied(*answer, keys);
    ExpectProgramApplies(*answer);
    Expect(*answer == before, "an answer is left as it was");
    return 0;
}

// Imports any document onto objects of a project with KorvaneExchange: adding does what the library does, a
// dry run says what the import then does, what was taken and what was left out are all values, and a second
// update changes nothing.

#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/ImportDocument.h>
#include <korvanejson/JsonSerializer.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "Expect.h"
#include "Trip.h"

namespace {

using korvane::exchange::ImportDocument;
using korvane::exchange::ImportOptions;
using korvane::exchange::ImportReport;
using korvane::exchange::Match;
using korvane::exchange::Reason;

constexpr int kTargets[] = {1, 2, 3, 4, 5, 6, 7};

std::string TextOf(CAEObject& object) {
    const json_string text = JsonSerializer(&object).GetJson().write();
    return {text.data(), text.size()};
}

/// Whether both say the same; identifiers of what a dry run does not make apart.
bool SaySame(const ImportReport& said, const ImportReport& done) {
    bool isSame = said.counts == done.counts && said.entries.size() == done.entries.size() &&
                  said.membersTaken == done.membersTaken && said.objectsAdded == done.objectsAdded &&
                  said.objectsMatched == done.objectsMatched && said.objectsMoved == done.objectsMoved &&
                  said.objectsRemoved == done.objectsRemoved && said.filesAdded == done.filesAdded &&
                  said.filesMatched == done.filesMatched && said.keys == done.keys &&
                  said.viewItemsLinked == done.viewItemsLinked;
    for (std::size_t index = 0; isSame && index < said.entries.size(); ++index) {
        isSame = said.entries[index].pointer == done.entries[index].pointer &&
                 said.entries[index].reason == done.entries[index].reason;
    }
    return isSame;
}

ImportReport ImportAfterADryRun(const JSONNode& document, CAEProject& project, CAEObject& target,
                                ImportOptions options) {
    const std::string before = TextOf(project);
    options.dryRun = true;
    const ImportReport said = ImportDocument(document, target, options);
    Expect(TextOf(project) == before, "a dry run changes nothing");
    options.dryRun = false;
    ImportReport done = ImportDocument(document, target, options);
    Expect(done.Count(Reason::kRefused) != 0 || SaySame(said, done), "a dry run says what the import does");
    Expect(libjson::is_valid(ToJson(done).c_str()), "a report is JSON");
    return done;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::optional<JSONNode> document = ReadBytes({reinterpret_cast<const char*>(data), size});
    if (!document) {
        return 0;
    }
    const JSONNode before = document->duplicate();
    const std::unique_ptr<CAEProject> project = MakeProject();
    AddTargets(*project);
    CAEObject* const target = project->getCAEObject(kTargets[size % std::size(kTargets)]);
    Expect(target != nullptr, "every target is there");
    const bool removes = size % 2 == 0;
    const ImportOptions update = {.match = Match::kByKey,
                                  .remove = removes,
                                  .sameRoot = size % 5 != 0,
                                  .allowStrayFiles = size % 3 == 0};

    ImportAfterADryRun(*document, *project, *target, update);
    const std::string updated = TextOf(*project);
    const ImportReport second = ImportAfterADryRun(*document, *project, *target, update);
    if (second.Count(Reason::kRefused) == 0) {
        Expect(!second.HasChanged(), "a second update reports no change");
        Expect(TextOf(*project) == updated, "a second update changes nothing");
    }
    const JSONNode own = JsonSerializer(&*project).GetJson();
    const ImportReport ofOwn = ImportDocument(own, *project, {.match = Match::kByKey, .remove = true});
    Expect(ofOwn.Count(Reason::kMerged) != 0 || !ofOwn.HasChanged(), "the own document reports no change");

    ImportAfterADryRun(*document, *project, *target, {.match = Match::kNever});
    korvane::exchange::ApplyAnswer(*document, *target);
    Expect(*document == before, "the document stays as it was");
    return 0;
}

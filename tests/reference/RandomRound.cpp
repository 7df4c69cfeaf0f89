#include <CAETypes.h>

#include <algorithm>

#include "RandomDocuments.h"
#include "RandomTexts.h"
#include "Round.h"

namespace {

using Kind = Action::Kind;

constexpr Kind kKinds[] = {Kind::kDocument,         Kind::kDocument,
                           Kind::kDocument,         Kind::kDocument,
                           Kind::kDocumentText,     Kind::kDocumentText,
                           Kind::kImport,           Kind::kImport,
                           Kind::kImport,           Kind::kImport,
                           Kind::kImport,           Kind::kImport,
                           Kind::kImport,           Kind::kImportOfExport,
                           Kind::kImportOfExport,   Kind::kApplyAnswer,
                           Kind::kApplyAnswer,      Kind::kApplyAnswer,
                           Kind::kFlatten,          Kind::kFlatten,
                           Kind::kObjectNodeOver,   Kind::kFileRecord,
                           Kind::kSections,         Kind::kVersions,
                           Kind::kFullVersions,     Kind::kImportMembers,
                           Kind::kImportMetadata,   Kind::kImportMetadata,
                           Kind::kImportFiles,      Kind::kImportChildren,
                           Kind::kImportFiles,      Kind::kImportVersions,
                           Kind::kImportVersions,   Kind::kImportLooseMetadata,
                           Kind::kImportFileRecord, Kind::kResolveReference,
                           Kind::kSmallThings};

JSONNode RandomNodeFor(Kind kind, Random& random) {
    switch (kind) {
        case Kind::kApplyAnswer:
        case Kind::kFlatten:
            return RandomAnswer(random);
        case Kind::kImportMetadata:
        case Kind::kImportLooseMetadata:
            return RandomSection(random, "metaData");
        case Kind::kImportChildren:
            return RandomSection(random, "children");
        case Kind::kImportFiles:
            return RandomSection(random, "files");
        case Kind::kImportVersions:
            return RandomSection(random, "versions");
        case Kind::kImportFileRecord:
            return RandomFileRecord(random);
        case Kind::kSmallThings:
            return RandomValue(random);
        default:
            return RandomDocument(random);
    }
}

Action::Preference RandomPreferenceFor(Kind kind, Random& random) {
    using Preference = Action::Preference;
    if (kind == Kind::kVersions || kind == Kind::kFullVersions) {
        return random.OneIn(4) ? Preference::kNone : Preference::kVersions;
    }
    if (kind == Kind::kImportFiles) {
        constexpr Preference kWithRoles[] = {Preference::kPart, Preference::kSubAssembly,
                                             Preference::kRunAssembly};
        return random.OneIn(4) ? Preference::kNone : random.Pick(kWithRoles);
    }
    constexpr Preference kPreferences[] = {Preference::kNone,        Preference::kNone,
                                           Preference::kPart,        Preference::kSubAssembly,
                                           Preference::kRunAssembly, Preference::kVersions};
    return random.Pick(kPreferences);
}

Action RandomAction(Random& random) {
    Action action;
    action.kind = random.Pick(kKinds);
    // The first object is the project; the rest, in the order of the walk.
    action.object = random.OneIn(30) ? -1 : random.OneIn(4) ? 0 : random.Below(10000);
    action.preference = RandomPreferenceFor(action.kind, random);
    action.version = random.OneIn(6) ? random.Below(3) : -1;
    action.otherObject = random.Below(10000);
    action.node = RandomNodeFor(action.kind, random);
    action.mode = RandomMode(random);
    action.choice = random.Next();
    return action;
}

Oddity RandomOddity(Random& random) {
    constexpr const char* kOperations[] = {"CAEObject::getType",
                                           "CAEObject::getType",
                                           "CAEObject::getParent",
                                           "CAEObject::getProject",
                                           "CAEProject::getCAEObject",
                                           "CAEProject::getFile",
                                           "CAEObject::getChildrenList",
                                           "CAEObject::getMetadataType",
                                           "CAEObject::getMetadataUnitString",
                                           "CAEObject::getMetadataValue",
                                           "CAEObject::getPointerToVersion",
                                           "CAEObject::createNewVersion",
                                           "createCAEObject",
                                           "getMasterAssemblyCAEIDByITEMID",
                                           "CAEObject::getTypeName",
                                           "CAEGetFileTypeName"};
    constexpr int kTypes[] = {0, 1, 2, 3, 3, 4, 4, 6, 7, 8, 21, 22, 23, 23, 26, 43, 99, -1};
    constexpr const char* kTexts[] = {nullptr, "", "Gadget", "Ma\xC3\x9F", "a\"b"};
    Oddity oddity;
    oddity.operation = random.Pick(kOperations);
    oddity.asked = random.OneIn(3) ? -1 : random.Below(10000);
    oddity.status = random.OneIn(2) ? 0 : random.Between(-1, 1);
    oddity.identifier = random.OneIn(3) ? std::nullopt : std::optional(random.Between(-1, 25));
    oddity.type = random.Pick(kTypes);
    oddity.answer = random.OneIn(3) ? -1 : random.Below(10000);
    for (int count = random.Below(4); count > 0; --count) {
        oddity.children.push_back(random.OneIn(3) ? -1 : random.Below(10000));
    }
    oddity.text = random.Pick(kTexts);
    // Only answers that cannot lead an export around in a circle are given again and again.
    constexpr const char* kOnce[] = {"CAEObject::getChildrenList", "CAEProject::getFile"};
    const bool isProject = oddity.operation == "CAEObject::getProject" && oddity.answer >= 0;
    oddity.always =
        !isProject && std::ranges::find(kOnce, oddity.operation) == std::end(kOnce) && random.OneIn(2);
    return oddity;
}

}  // namespace

Round RandomRound(std::uint64_t seed) {
    Random random(seed);
    Round round;
    round.units = random.OneIn(2) ? libjson::text_units::utf8 : libjson::text_units::bytes;
    // Documents may go through text as they are made.
    libjson::set_text_units(round.units);
    round.steps = RandomSteps(random);
    for (int count = random.OneIn(3) ? random.Between(2, 4) : 1; count > 0; --count) {
        round.actions.push_back(RandomAction(random));
    }
    for (int count = random.OneIn(3) ? random.Between(1, 3) : 0; count > 0; --count) {
        round.oddities.push_back(RandomOddity(random));
    }
    if (random.OneIn(5)) {
        round.throwingAction = random.Below(round.actions.size());
        round.throwsAfter = random.OneIn(2) ? random.Below(20) : random.Below(300);
    }
    return round;
}

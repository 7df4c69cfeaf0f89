#include "RandomModel.h"

#include <CAEFunctions.h>
#include <EmbeddedRestore.h>

#include <algorithm>
#include <set>
#include <string>

#include "ExportReach.h"
#include "RandomTexts.h"
#include "platform/korvane/Ask.h"
#include "support/ModelBuilders.h"

namespace {

constexpr _tagCAEObjectType kUsualKinds[] = {CAE_PART,
                                             CAE_PART,
                                             CAE_SUBASSEMBLY,
                                             CAE_MODEL,
                                             CAE_ITERATION,
                                             CAE_ITERATION,
                                             CAE_ITERATION_FOLDER,
                                             CAE_ITERATION_MODEL,
                                             CAE_ITERATION_MODEL,
                                             CAE_LOADCASE_VIEW,
                                             CAE_VIEW_ITEM,
                                             CAE_VIEW_ITEM};
constexpr int kFileTypes[] = {0, 1, 1, 2, 2, 3, 3, 4, 7, 13, 14, -1};
constexpr int kFileFormats[] = {0, 1, 1, 2, 2, 3, 99, -1};

/// So that exports through a chain of objects need no more stack than there is, the sanitizers' included.
constexpr int kLongestChain = 300;

constexpr int kFirstOtherIdentifier = 2000;

_tagFileType RandomFileType(Random& random) {
    return static_cast<_tagFileType>(random.Pick(kFileTypes));
}

/// The objects that hang on a root, each once.
void Collect(CAEObject& root, std::set<CAEObject*>& seen, std::vector<CAEObject*>& objects) {
    std::vector<CAEObject*> here;
    korvane::VisitTree(root, [&](CAEObject& object, int) { here.push_back(&object); });
    for (CAEObject* const object : here) {
        if (!seen.insert(object).second) {
            continue;
        }
        objects.push_back(object);
        if (auto* const project = dynamic_cast<CAEProject*>(object)) {
            for (CAEFile* const file : korvane::GetProjectFiles(*project)) {
                Collect(*file, seen, objects);
            }
        }
    }
}

void AttachRandomly(CAEObject& object, int fileId, Random& random) {
    switch (random.Below(5)) {
        case 0:
            object.attachCustomFile(fileId, nullptr);
            break;
        default:
            AttachFile(object, fileId, RandomFileType(random));
    }
}

}  // namespace

RandomModel::RandomModel(const Steps& steps)
    : project_(korvane::CreateProject(L"Project", L"/studies/")),
      other_(korvane::CreateProject(L"Other", L"C:\\other")) {
    for (CAEProject* const project : {project_.get(), other_.get()}) {
        korvane::SetCreation(*project, kTestDate, kTestUser);
        project->setCreatedDate(kTestDate);
        korvane::SetCreatedUserName(*project, kTestUser);
    }
    // An identifier means an object of one project only, in whichever a file is attached.
    korvane::SetNextIdentifier(*other_, kFirstOtherIdentifier);
    for (const std::uint64_t step : steps) {
        Take(step);
    }
}

void RandomModel::Take(std::uint64_t step) {
    using Work = void (RandomModel::*)(Random&);
    constexpr Work kWork[] = {
        &RandomModel::AddObjects,  &RandomModel::AddObjects,   &RandomModel::AddObjects,
        &RandomModel::AddObjects,  &RandomModel::AddObjects,   &RandomModel::AddFile,
        &RandomModel::AddFile,     &RandomModel::AddFile,      &RandomModel::AttachFile,
        &RandomModel::AttachFile,  &RandomModel::SetHeader,    &RandomModel::SetHeader,
        &RandomModel::SetHeader,   &RandomModel::SetMetadata,  &RandomModel::SetMetadata,
        &RandomModel::SetMetadata, &RandomModel::SetProject,   &RandomModel::SetReference,
        &RandomModel::AddVersion,  &RandomModel::SetIdentifier};
    Random random(step);
    if (random.OneIn(60)) {
        AddChain(random);
    } else if (random.OneIn(40)) {
        Detach(random);
    } else {
        (this->*random.Pick(kWork))(random);
    }
}

std::vector<CAEObject*> RandomModel::Roots() const {
    std::vector<CAEObject*> roots = {project_.get(), other_.get()};
    roots.insert(roots.end(), detached_.begin(), detached_.end());
    for (const std::unique_ptr<CAEFile>& file : files_) {
        roots.push_back(file.get());
    }
    return roots;
}

std::vector<CAEObject*> RandomModel::Objects() const {
    std::set<CAEObject*> seen;
    std::vector<CAEObject*> objects;
    for (CAEObject* const root : Roots()) {
        Collect(*root, seen, objects);
    }
    return objects;
}

CAEObject& RandomModel::PickObject(Random& random) const {
    CAEObject& object = *random.Pick(Objects());
    const Numbers versions = VersionsOf(object);
    if (versions.empty() || !random.OneIn(3)) {
        return object;
    }
    const auto& [major, minor] = random.Pick(versions);
    CAEObject* const version = VersionOf(object, major, minor);
    return version != nullptr ? *version : object;
}

void RandomModel::AddObjects(Random& random) {
    CAEObject* parent = random.OneIn(3) ? project_.get() : &PickObject(random);
    for (int count = random.Between(1, 3); count > 0 && parent != nullptr; --count) {
        const _tagCAEObjectType kind = random.OneIn(4) ? random.Pick(kObjectKinds) : random.Pick(kUsualKinds);
        CAEObject* const object = korvane::CreateObject(*parent, kind, RandomWide(random));
        if (object != nullptr && random.OneIn(2)) {
            object->setDBKey(OuString(RandomKey(random).c_str(), 0));
        }
        // Siblings, or each below the one before.
        parent = random.OneIn(2) ? parent : object;
    }
}

void RandomModel::AddChain(Random& random) {
    CAEObject* parent = &PickObject(random);
    for (int depth = random.Between(20, kLongestChain); depth > 0 && parent != nullptr; --depth) {
        parent = korvane::CreateObject(*parent, random.Pick(kUsualKinds), L"");
    }
    if (parent != nullptr) {
        parent->setDBKey(L"K1");
    }
}

void RandomModel::AddFile(Random& random) {
    const auto format = static_cast<_tagFileFormat>(random.Pick(kFileFormats));
    const _tagFileType type = RandomFileType(random);
    CAEFile* file = nullptr;
    if (random.OneIn(12)) {
        OuString path = RandomWide(random);
        file = files_.emplace_back(std::make_unique<CAEFile>(&path, type, format, false)).get();
    } else {
        CAEProject* const project = random.OneIn(4) ? PickObject(random).getProject() : project_.get();
        OuString path(L"/studies\\a/");
        path.Append(RandomWide(random).GetBuffer(), 0);
        file = korvane::CreateFile(project != nullptr ? *project : *project_, path, type, format);
    }
    file->m_locationType = RandomWide(random);
    file->m_fullPathCopy = RandomWide(random);
    file->SetFileDownloadFlag(random.OneIn(2));
    file->setGlobalFrameCoordinate(random.OneIn(2));
    for (int roles = random.Below(3); roles > 0; --roles) {
        if (CAEObject& object = PickObject(random); &object != file) {
            AttachRandomly(object, file->getID(), random);
        }
    }
}

void RandomModel::AttachFile(Random& random) {
    CAEObject& object = PickObject(random);
    const CAEObject& attached = PickObject(random);
    if (dynamic_cast<const CAEFile*>(&attached) == nullptr) {
        if (random.OneIn(3)) {
            AttachRandomly(object, 100000 + random.Below(10), random);
        }
        return;
    }
    // A version of a file has the identifier of the file, which is what is found under it.
    const int id = attached.getID();
    for (CAEProject* const project : {project_.get(), other_.get()}) {
        CAEFile* const found = project->getFile(id);
        if (found != nullptr && MayReach(*found, object)) {
            return;
        }
    }
    AttachRandomly(object, id, random);
}

void RandomModel::SetHeader(Random& random) {
    CAEObject& object = PickObject(random);
    switch (random.Below(5)) {
        case 0:
            object.setName(random.OneIn(3) ? OuString() : RandomWide(random));
            break;
        case 1:
            object.setDBKey(OuString(RandomKey(random).c_str(), 0));
            break;
        case 2:
            object.setLinkDBKey(OuString(RandomKey(random).c_str(), 0));
            break;
        case 3:
            object.setCreatedDate(RandomWide(random));
            break;
        default:
            korvane::SetCreatedUserName(object, RandomWide(random));
    }
}

void RandomModel::SetMetadata(Random& random) {
    CAEObject& object = PickObject(random);
    for (int entries = random.Between(1, 4); entries > 0; --entries) {
        const OuString name = random.OneIn(6) ? RandomWide(random) : RandomWideEntryName(random);
        const OuString value = RandomWide(random);
        const OuString unit = RandomWide(random);
        ::SetMetadata(object, name, value, unit, RandomWide(random));
    }
}

void RandomModel::SetProject(Random& random) {
    CAEObject& object = PickObject(random);
    auto* const project = dynamic_cast<CAEProject*>(&object);
    CAEProject& changed = project != nullptr ? *project : *project_;
    constexpr const wchar_t* kDirectories[] = {L"",        L"/",        L"D:/proj", L"\\\\server\\share\\\\x",
                                               L"///a//b", L"relative", L"."};
    switch (random.Below(4)) {
        case 0:
            changed.SetDisplayName(RandomWide(random));
            break;
        case 1:
            changed.setAdditionalType(random.OneIn(3) ? OuString(L"stra\u00DFe crash") : RandomWide(random));
            break;
        case 2:
            korvane::SetDirectory(changed, random.Pick(kDirectories));
            break;
        default:
            changed.SetProgramReference(random.OneIn(2));
    }
}

void RandomModel::SetReference(Random& random) {
    for (CAEObject* const object : Objects()) {
        if (auto* const item = dynamic_cast<CAEViewItem*>(object); item != nullptr && random.OneIn(2)) {
            item->setReferencedCAEObject(random.Below(30));
        }
    }
}

void RandomModel::SetIdentifier(Random& random) {
    CAEObject& object = PickObject(random);
    const int id = random.OneIn(2) ? random.Between(-20, 40) : random.Between(40, 80);
    // A file keeps its own: another's would lead the lists that it stands in to another file.
    if (dynamic_cast<CAEFile*>(&object) != nullptr) {
        return;
    }
    if (random.OneIn(2)) {
        korvane::Renumber(object, id);
    } else {
        object.setID(id);
    }
}

void RandomModel::AddVersion(Random& random) {
    CAEObject& object = PickObject(random);
    const int major = random.Below(3);
    const int minor = random.OneIn(4) ? 2147483647 : random.Below(2);
    // Copies hold copies of versions: without a limit they would double with every step.
    int inside = 0;
    korvane::VisitTree(object, [&](const CAEObject&, int) { ++inside; });
    if (inside <= 12) {
        const bool hasContent = !random.OneIn(4);
        object.createNewVersion(major, minor, hasContent, random.OneIn(2));
    }
}

void RandomModel::Detach(Random& random) {
    CAEObject& object = PickObject(random);
    CAEObject& newParent = *random.Pick(Objects());
    CAEObject* const parent = object.getParent();
    CAEObject* leaving = &object;
    if (parent == nullptr || MayReach(object, newParent) || parent->detachChild(leaving, false) != 0) {
        return;
    }
    if (random.OneIn(2) || newParent.addChild(&object) != 0) {
        detached_.push_back(&object);
    }
}

RandomModel::Steps RandomSteps(Random& random) {
    RandomModel::Steps steps(
        static_cast<std::size_t>(random.OneIn(8) ? random.Between(60, 120) : random.Between(0, 40)));
    std::ranges::generate(steps, [&] { return random.Next(); });
    return steps;
}

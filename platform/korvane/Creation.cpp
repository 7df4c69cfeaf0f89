#include "Creation.h"

#include <chrono>

#include "Access.h"
#include "CAEFunctions.h"
#include "CAEPart.h"
#include "CAERunAssembly.h"
#include "CAESubAssembly.h"
#include "ObjectData.h"
#include "ObjectTree.h"
#include "Recorded.h"
#include "Status.h"

#if defined(_WIN32)
#include <cstdlib>
#else
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <vector>
#endif

namespace korvane {
namespace {

#if defined(_WIN32)

OuString FindUserName() {
    return OuString(_wgetenv(L"USERNAME"));
}

#else

/// Throws std::bad_alloc if there is hardly any memory left. The name service does not withstand that: it
/// ends the program, or knows no name.
void EnsureMemory() {
    constexpr std::size_t kReserve = std::size_t{1} << 20U;
    ::operator delete(::operator new(kReserve));
}

OuString FindUserName() {
    constexpr std::size_t kFirstBufferSize = 1024;
    constexpr std::size_t kLastBufferSize = kFirstBufferSize * 1024;
    for (std::size_t size = kFirstBufferSize; size <= kLastBufferSize; size *= 4) {
        std::vector<char> buffer(size);
        passwd entry{};
        passwd* found = nullptr;
        EnsureMemory();
        const int status = getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
        if (status == 0 && found != nullptr) {
            return OuString(found->pw_name, 0);
        }
        if (status != ERANGE) {
            break;
        }
    }
    return OuString(std::getenv("USER"), 0);
}

#endif

}  // namespace

std::unique_ptr<CAEProject> Access::MakeProject() {
    // std::make_unique does not reach the private constructor.
    return std::unique_ptr<CAEProject>(new CAEProject());
}

std::unique_ptr<CAEObject> Access::MakeObject(_tagCAEObjectType type) {
    switch (type) {
        case CAE_PART:
            return std::unique_ptr<CAEObject>(new CAEPart());
        case CAE_SUBASSEMBLY:
            return std::unique_ptr<CAEObject>(new CAESubAssembly());
        case CAE_FILE:
            return std::unique_ptr<CAEObject>(new CAEFile());
        case CAE_PROJECT:
            return MakeProject();
        case CAE_ITERATION_MODEL:
            return std::unique_ptr<CAEObject>(new CAERunAssembly());
        case CAE_VIEW_ITEM:
            return std::unique_ptr<CAEObject>(new CAEViewItem());
        default:
            return std::unique_ptr<CAEObject>(new CAEObject(type));
    }
}

OuString FormatDate(std::time_t time) {
    using namespace std::chrono;
    const auto point = floor<seconds>(system_clock::from_time_t(time));
    const auto day = floor<days>(point);
    const year_month_day date(day);
    const hh_mm_ss clock(point - day);
    OuString text;
    text.Format(L"%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
    return text;
}

const OuString& PresentUserName() {
    static const OuString name = [] {
        const OuString found = FindUserName();
        return found.IsEmpty() ? OuString(L"unknown") : found;
    }();
    return name;
}

CAEObject* CreateUnder(CAEObject& parent, _tagCAEObjectType type, const OuString& projectDirectory) {
    ObjectTree& tree = *Access::Data(parent).tree;
    if (!CanBeCreated(type)) {
        return nullptr;
    }
    std::unique_ptr<CAEObject> made = Access::MakeObject(type);
    tree.StampCreation(*made);
    if (CAEProject* const project = AsProject(*made)) {
        Access::Project(*project).directory = projectDirectory;
    }
    const int id = tree.TakeIdentifier();
    if (id == 0) {
        return nullptr;
    }
    Access::SetId(*made, id);
    return &tree.HangNewChild(parent, std::move(made));
}

}  // namespace korvane

using korvane::Access;
using korvane::kDone;
using korvane::kFailed;
using korvane::Recorded;

int createCAEObject(CAEProject* project, const int& parentId, _tagCAEObjectType type, int& newId) {
    const Recorded note("createCAEObject", project, parentId, type);
    if (const auto* const odd = note.Odd()) {
        newId = odd->identifier.value_or(newId);
        return odd->status;
    }
    if (project == nullptr) {
        return kFailed;
    }
    CAEObject* const parent = Access::Data(*project).tree->Find(parentId);
    if (parent == nullptr) {
        return kFailed;
    }
    const CAEObject* const object = korvane::CreateUnder(*parent, type, Access::Project(*project).directory);
    if (object == nullptr) {
        return kFailed;
    }
    newId = Access::Id(*object);
    return kDone;
}

int getMasterAssemblyCAEIDByITEMID(CAEProject* project, OuString itemId, int& id) {
    const Recorded note("getMasterAssemblyCAEIDByITEMID", project, itemId);
    if (const auto* const odd = note.Odd()) {
        id = odd->identifier.value_or(id);
        return odd->status;
    }
    if (project == nullptr) {
        return kFailed;
    }
    const int found = Access::Data(*project).tree->FindMasterAssembly(itemId);
    if (found == 0) {
        return kFailed;
    }
    id = found;
    return kDone;
}

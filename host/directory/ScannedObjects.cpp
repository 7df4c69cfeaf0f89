#include "ScannedObjects.h"

#include <EmbeddedModel.h>

#include <algorithm>

#include "format/Values.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr const wchar_t* kFiles = L"Files";
constexpr const wchar_t* kSize = L"Size";
constexpr const wchar_t* kSizeUnit = L"B";
constexpr const wchar_t* kSolver = L"Solver";

OuString ToText(std::string_view text) {
    return OuString(std::string(text).c_str(), 0);
}

template <typename Source>
void SetDateAndUser(CAEObject& object, const Source& source) {
    object.setCreatedDate(ToText(FormatTime(source.modified)));
    if (source.owner) {
        korvane::SetCreatedUserName(object, ToText(OwnerName(*source.owner)));
    }
}

}  // namespace

void Totals::Add(const ScannedFile& file) {
    isUncertain = isUncertain || file.isRemembered;
    ++files;
    bytes += file.isLink ? 0 : file.size;
    if (file.type == CAE_FILE_DECK && file.solver != Solver::None) {
        solvers.emplace(SolverName(file.solver));
    }
}

void SetTotals(CAEObject& object, const std::string& description, const Totals& totals) {
    if (!description.empty()) {
        object.setMetadataValue(ToText(format::kDescriptionEntry), ToText(description));
    }
    if (totals.isUncertain) {
        return;
    }
    object.setMetadataValue(kFiles, ToText(std::to_string(totals.files)));
    object.setMetadataValue(kSize, ToText(std::to_string(totals.bytes)));
    korvane::SetMetadataUnit(object, kSize, kSizeUnit);
    std::string solvers;
    for (const std::string& solver : totals.solvers) {
        solvers += (solvers.empty() ? "" : ", ") + solver;
    }
    if (!solvers.empty()) {
        object.setMetadataValue(kSolver, ToText(solvers));
    }
}

bool UpdateMetadata(CAEObject& object, const CAEObject& read) {
    bool isChanged = false;
    const auto update = [&](const korvane::MetadataValues& entry) {
        OuString value;
        OuString unit;
        const bool isThere = object.getMetadataValue(entry.name, value) == 0;
        object.getMetadataUnitString(entry.name, unit);
        if (!isThere || !(value == entry.value)) {
            object.setMetadataValue(entry.name, entry.value);
            isChanged = true;
        }
        if (!entry.unit.IsEmpty() && !(unit == entry.unit)) {
            korvane::SetMetadataUnit(object, entry.name, entry.unit);
            isChanged = true;
        }
    };
    std::ranges::for_each(korvane::GetMetadata(read), update);
    OuString value;
    // Entries cannot be removed.
    if (read.getMetadataValue(kFiles, value) == 0 && read.getMetadataValue(kSolver, value) != 0 &&
        object.getMetadataValue(kSolver, value) == 0) {
        update({kSolver, {}, {}, {}});
    }
    return isChanged;
}

void SetOrigin(CAEObject& object, const ScannedFile& file) {
    if (!file.isRemembered) {
        SetDateAndUser(object, file);
    }
}

void SetOrigin(CAEObject& object, const ScannedDirectory& directory) {
    SetDateAndUser(object, directory);
}

int AddFile(CAEProject& project, const ScannedDirectory& directory, const ScannedFile& file,
            _tagFileType type) {
    CAEFile& added = *korvane::CreateFile(project, ToOuString(directory.path / file.name), type, file.format);
    added.m_fullPathCopy = ToOuString(directory.path / file.name);
    added.SetFileDownloadFlag(!file.isRemembered);
    SetOrigin(added, file);
    return added.getID();
}

}  // namespace host

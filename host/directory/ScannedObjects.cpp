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
constexpr const wchar_t* kStudies = L"Studies";
constexpr const wchar_t* kNodes = L"Nodes";
constexpr const wchar_t* kElements = L"Elements";
constexpr const wchar_t* kMaterials = L"Materials";
constexpr const wchar_t* kSteps = L"Steps";
constexpr const wchar_t* kUnits = L"Units";

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

/// Names in a list with commas. A deck can have thousands.
std::string Listed(const std::vector<std::string>& names) {
    constexpr std::size_t kMostNames = 20;
    std::string text;
    for (std::size_t index = 0; index < std::min(names.size(), kMostNames); ++index) {
        text += (text.empty() ? "" : ", ") + names[index];
    }
    return text +
           (names.size() > kMostNames ? " and " + std::to_string(names.size() - kMostNames) + " more" : "");
}

bool HasEntry(const CAEObject& object, const wchar_t* name) {
    OuString value;
    return object.getMetadataValue(name, value) == 0;
}

/// Entries that a reading of the directory gives the object, if it gives any, and that no user does.
std::vector<const wchar_t*> EntriesOfReading(const CAEObject& read) {
    if (read.getType() == CAE_ITERATION && HasEntry(read, kSolver)) {
        return {kNodes, kElements, kMaterials, kSteps};
    }
    return HasEntry(read, kFiles) ? std::vector{kSolver} : std::vector<const wchar_t*>();
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

void SetModelMetadata(CAEObject& iteration, const ScannedFile& deck) {
    const auto set = [&](const wchar_t* name, const std::string& value) {
        if (!value.empty()) {
            iteration.setMetadataValue(name, ToText(value));
        }
    };
    const auto setCount = [&](const wchar_t* name, const std::optional<std::uint64_t>& count) {
        set(name, count ? std::to_string(*count) : std::string());
    };
    if (deck.isRemembered) {
        return;
    }
    set(kSolver, std::string(SolverName(deck.solver)));
    if (deck.model != nullptr) {
        setCount(kNodes, deck.model->nodes);
        setCount(kElements, deck.model->elements);
        set(kMaterials, Listed(deck.model->materials));
        setCount(kSteps, deck.model->steps);
        set(kUnits, deck.model->units);
    }
}

ValueChanges UpdateMetadata(CAEObject& object, const CAEObject& read) {
    using Value = ValueChange::Value;
    ValueChanges changes;
    const auto update = [&](const korvane::MetadataValues& entry) {
        OuString value;
        OuString unit;
        const bool isThere = object.getMetadataValue(entry.name, value) == 0;
        object.getMetadataUnitString(entry.name, unit);
        const std::string name = entry.name.GetAnsiBuffer();
        const std::string unitNow = entry.unit.GetAnsiBuffer();
        if (!isThere || !(value == entry.value)) {
            object.setMetadataValue(entry.name, entry.value);
            const auto before = isThere ? std::optional<std::string>(value.GetAnsiBuffer()) : std::nullopt;
            changes.push_back({Value::Metadata, name, before, entry.value.GetAnsiBuffer(), unitNow});
        }
        if (!(unit == entry.unit)) {
            korvane::SetMetadataUnit(object, entry.name, entry.unit);
            if (isThere) {
                changes.push_back({Value::Unit, name, unit.GetAnsiBuffer(), unitNow});
            }
        }
    };
    std::ranges::for_each(korvane::GetMetadata(read), update);
    // Entries cannot be removed.
    for (const wchar_t* const name : EntriesOfReading(read)) {
        if (!HasEntry(read, name) && HasEntry(object, name)) {
            update({name, {}, {}, {}});
        }
    }
    return changes;
}

void UpdateTotals(CAEObject& object, const CAEObject& read) {
    for (const wchar_t* const name : {kFiles, kSize, kSolver, kStudies}) {
        OuString value;
        if (read.getMetadataValue(name, value) == 0) {
            object.setMetadataValue(name, value);
        }
    }
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

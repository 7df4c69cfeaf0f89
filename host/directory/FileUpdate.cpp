#include "FileUpdate.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>

#include <string>
#include <utility>

#include "format/Kinds.h"
#include "host/document/ObjectTexts.h"

namespace host {
namespace {

/// What a file gets from a new reading of it.
ValueChanges ChangesOf(const CAEFile& file, const CAEFile& read) {
    using Value = ValueChange::Value;
    ValueChanges changes;
    const auto add = [&](Value value, std::string from, std::string to) {
        if (from != to) {
            changes.push_back({value, {}, std::move(from), std::move(to)});
        }
    };
    const auto formatOf = [](const CAEFile& of) {
        return std::string(format::NameOfFileFormat(static_cast<format::FileFormat>(of.getFileFormat())));
    };
    add(Value::Type, CAEGetFileTypeName(file.getFileType()), CAEGetFileTypeName(read.getFileType()));
    add(Value::Format, formatOf(file), formatOf(read));
    add(Value::Date, DateOf(file).GetAnsiBuffer(), DateOf(read).GetAnsiBuffer());
    return changes;
}

}  // namespace

FileUpdate::FileUpdate(CAEProject& project, const ProjectOrigins& origins, const ProjectOrigins& reading,
                       const ProjectMatching& matching, UpdateReport& report)
    : project_(project), reading_(reading), report_(report) {
    for (std::size_t place = 0; place < reading.Files().size(); ++place) {
        const FileOrigin& read = reading.Files()[place];
        if (const std::optional<std::size_t> matched = matching.Files()[place]) {
            CAEFile& file = *origins.Files()[*matched].file;
            identifiers_.emplace(read.file->getID(), file.getID());
            isThere_.insert(file.getID());
            Update(file, *read.file);
        } else {
            Add(read);
        }
    }
}

void FileUpdate::Add(const FileOrigin& read) {
    const CAEFile& from = *read.file;
    CAEFile* file = nullptr;
    if (read.isChild) {
        file = dynamic_cast<CAEFile*>(korvane::CreateObject(project_, CAE_FILE, NameOf(from)));
        file->setFullPathName(PathOf(from));
        file->setFileType(from.getFileType());
        file->setFileFormat(from.getFileFormat());
    } else {
        file = korvane::CreateFile(project_, PathOf(from), from.getFileType(), from.getFileFormat());
    }
    file->m_fullPathCopy = from.m_fullPathCopy;
    file->SetFileDownloadFlag(korvane::IsDownloaded(from));
    file->setCreatedDate(DateOf(from));
    korvane::SetCreatedUserName(*file, CreatorOf(from));
    identifiers_.emplace(from.getID(), file->getID());
    isThere_.insert(file->getID());
    isAdded_.insert(file->getID());
    ++report_.added.files;
    report_.isChanged = true;
}

void FileUpdate::Update(CAEFile& file, const CAEFile& read) {
    const bool isRead = korvane::IsDownloaded(read);
    if (!isRead) {
        report_.Note(UpdateReport::Change::Unreadable, file, DirectoryOf(project_));
    }
    if (!(PathOf(file) == PathOf(read))) {
        file.setFullPathName(PathOf(read));
        report_.isChanged = true;
    }
    // A file that an import created has no creator. From now on it is one of the directory.
    const bool isImported = CreatorOf(file).IsEmpty();
    if (!isRead || (!isImported && file.getFileType() == read.getFileType() &&
                    file.getFileFormat() == read.getFileFormat() && korvane::IsDownloaded(file) &&
                    DateOf(file) == DateOf(read))) {
        return;
    }
    ValueChanges changes = ChangesOf(file, read);
    file.setFileType(read.getFileType());
    file.setFileFormat(read.getFileFormat());
    file.SetFileDownloadFlag(true);
    file.setCreatedDate(DateOf(read));
    if (isImported) {
        korvane::SetCreatedUserName(file, CreatorOf(read));
        file.m_fullPathCopy = read.m_fullPathCopy;
    }
    ++report_.changed.files;
    report_.isChanged = true;
    report_.Note(UpdateReport::Change::Changed, file, DirectoryOf(project_), true, std::move(changes));
}

void FileUpdate::ReportAdded(const std::function<bool(const CAEObject& read)>& isAdded) {
    std::unordered_set<int> isOfAdded;
    for (const ObjectOrigin& read : reading_.Objects()) {
        if (isAdded(*read.object)) {
            const std::vector<int> files = korvane::GetFileRoles(*read.object).files;
            isOfAdded.insert(files.begin(), files.end());
        }
    }
    for (const FileOrigin& read : reading_.Files()) {
        const int identifier = IdentifierOf(read.file->getID());
        if (isAdded_.contains(identifier)) {
            report_.Note(UpdateReport::Change::Added, *project_.getFile(identifier), DirectoryOf(project_),
                         !isOfAdded.contains(read.file->getID()));
        }
    }
}

}  // namespace host

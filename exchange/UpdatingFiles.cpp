#include <korvaneexchange/PrintableText.h>

#include <utility>

#include "NodeText.h"
#include "UpdatingImport.h"
#include "objectjson/Sections.h"

namespace korvane::exchange {
namespace {

format::FileType FileTypeOfRecord(const LastMembers& last) {
    return last.fileType == nullptr ? format::FileType::kUnknown
                                    : static_cast<format::FileType>(GetCAEFileType(TextOf(last.fileType)));
}

/// What an export calls a file whose name has folders in it.
OuString LastComponent(const OuString& name) {
    const std::string text = AnsiFormOf(name);
    const std::size_t slash = text.find_last_of("/\\");
    return slash == std::string::npos ? name : TextFromAnsi(text.substr(slash + 1));
}

}  // namespace

UpdatingImport::Found UpdatingImport::FindFileByKey(const JSONNode& record, const OuString& key) {
    const std::string shown = "the key " + Excerpt(Utf8Of(key));
    const TreeIndex::Owners& owners = index_.FilesWith(key);
    if (keys_.HasFileTwice(key)) {
        return Conflict(record, owners.object, shown + " occurs twice in the document");
    }
    const TreeIndex::Owners& objects = index_.ObjectsWith(key);
    if (!owners.several.empty() || !objects.several.empty() || objects.object != nullptr) {
        return Conflict(record, objects.object, shown + " belongs to several files or to another object");
    }
    if (owners.object != nullptr) {
        return {.object = owners.object};
    }
    const auto made = madeFiles_.find(AnsiFormOf(key));
    isMadeAlready_ = made != madeFiles_.end();
    return {.object = isMadeAlready_ ? made->second : nullptr};
}

UpdatingImport::Found UpdatingImport::FindFile(const ImportTarget& owner, const JSONNode& record,
                                               const LastMembers& last) {
    const OuString key = TextOf(last.key);
    isMadeAlready_ = false;
    if (!IsEmpty(key)) {
        const Found found = FindFileByKey(record, key);
        if (found.isConflict || found.object != nullptr || isMadeAlready_) {
            return found;
        }
    }
    MatchedNode* const match = MatchOf(AboveInnermost());
    if (match == nullptr || owner.object == nullptr) {
        return {};
    }
    const std::string sign = SignOfFile(FileTypeOfRecord(last), LastComponent(TextOf(last.anyName)));
    CAEObject* const file = match->Files().Find(sign, !IsEmpty(key), match->TakenFiles());
    // A file of several objects has several records. Different ones would be set in turn in every update.
    if (const auto found = fileRecords_.find(file); found != fileRecords_.end() && *found->second != record) {
        return Conflict(record, file, "another record of the same file says something else");
    }
    return {.object = file};
}

bool UpdatingImport::IsAttachedAbove(const CAEFile* file, const OuString& key) {
    MatchedNode* const above = MatchOf(AboveInnermost());
    return (file != nullptr && above != nullptr && above->HasFile(*file)) ||
           (!IsEmpty(key) && attached_.contains({AboveInnermost().node, AnsiFormOf(key)}));
}

bool UpdatingImport::HasRole(const ImportTarget& owner, const JSONNode& record, CAEFile* file) {
    const LastMembers last(record);
    const format::FileType type =
        last.fileType == nullptr && file != nullptr ? FileTypeOf(*file) : FileTypeOfRecord(last);
    if (IsAttached(type, owner.Kind())) {
        return true;
    }
    Tell(Reason::kNoRole, {}, 0, [&] {
        const std::string subject = Describe(record) + " at " + Describe(*AboveInnermost().node);
        return std::pair(subject, "the file " + subject + " is left out, because its type has no role there");
    });
    return false;
}

ImportPolicy::FileLanding UpdatingImport::EnterFile(const ImportTarget& owner, const JSONNode& record) {
    const FileLanding landing = ReportingImport::EnterFile(owner, record);
    if (landing.isLeftOut) {
        return landing;
    }
    const LastMembers last(record);
    const Found found = FindFile(owner, record, last);
    auto* const file = static_cast<CAEFile*>(found.object);
    const bool isAttached = IsAttachedAbove(file, TextOf(last.key));
    if (found.isConflict || (!isAttached && !HasRole(owner, record, file))) {
        KeepOwnersOfKey(record);
        Untake();
        --Result().elementsTaken;
        Leave();
        return {.isLeftOut = true};
    }
    if (file == nullptr && !isMadeAlready_) {
        return landing;
    }
    ++Result().filesMatched;
    Innermost().isNew = false;
    if (file == nullptr) {
        return landing;
    }
    Match(*file, record);
    fileRecords_.emplace(file, &record);
    MatchOf(Innermost())->isAttached = isAttached;
    if (MatchedNode* const above = MatchOf(AboveInnermost())) {
        above->TakenFiles().insert(file);
    }
    return {.isLeftOut = false, .file = file};
}

bool UpdatingImport::SetsPath(CAEFile& file, const OuString& path) {
    const MatchedNode* const match = MatchOf(Innermost());
    return match == nullptr ? ReportingImport::SetsPath(file, path)
                            : match->isNameChanged && !Options().dryRun;
}

bool UpdatingImport::AttachesFile(const ImportTarget& owner, CAEFile& file) {
    const MatchedNode* const match = MatchOf(Innermost());
    const std::string key = AnsiFormOf(file.getDBKey());
    const bool isAttachedNow = !key.empty() && !attached_.emplace(AboveInnermost().node, key).second;
    if (match != nullptr) {
        if (match->isAttached && !match->isTypeChanged) {
            return false;
        }
        TellAttached(DescribeAsItWas(file));
        return !Options().dryRun && owner.object != nullptr;
    }
    if (!Innermost().isNew) {
        if (!isAttachedNow) {
            TellAttached(Describe(*Innermost().node));
        }
        return false;
    }
    if (!key.empty()) {
        madeFiles_.emplace(key, Options().dryRun ? nullptr : &file);
    }
    return ReportingImport::AttachesFile(owner, file);
}

void UpdatingImport::TellAttached(const std::string& file) {
    Tell(Reason::kChanged, {}, 0, [&] {
        const std::string subject = "the file " + file;
        return std::pair(subject, subject + " is attached to " + Describe(*AboveInnermost().node));
    });
}

void UpdatingImport::LeaveFile(const ImportTarget& owner) {
    LeaveMatched(Innermost());
    if (const MatchedNode* const match = MatchOf(Innermost())) {
        open_.erase(&match->Object());
    }
    ReportingImport::LeaveFile(owner);
}

}  // namespace korvane::exchange

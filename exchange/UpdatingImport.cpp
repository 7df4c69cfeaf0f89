#include "UpdatingImport.h"

#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "NodeText.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/NodeReading.h"
#include "objectjson/Sections.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {
namespace {

std::string Became(const OuString& from, const OuString& to) {
    return Excerpt(Utf8Of(from)) + " becomes " + Excerpt(Utf8Of(to));
}

OuString NameOf(CAEObject& object) {
    OuString name;
    object.getName(name);
    return name;
}

format::FileType FileTypeOfRecord(const LastMembers& last) {
    return last.fileType == nullptr ? format::FileType::kUnknown
                                    : static_cast<format::FileType>(GetCAEFileType(TextOf(last.fileType)));
}

/// Hangs the object elsewhere; where that fails, it hangs below its old parent again, at the end.
bool Rehang(CAEObject& object, CAEObject& from, CAEObject& to) {
    CAEObject* leaving = &object;
    from.detachChild(leaving, false);
    try {
        if (to.addChild(&object) == 0) {
            return true;
        }
    } catch (...) {
        from.addChild(&object);
        throw;
    }
    from.addChild(&object);
    return false;
}

OuString ExportedType(const CAEProject& project) {
    OuString type = project.getAdditionalType();
    type.MakeUpper();
    return type;
}

/// Whether an export writes the "type" for the object: for a project its own, which no import reads as a
/// kind.
bool IsOfType(CAEObject& object, const OuString& type) {
    const auto* const project = dynamic_cast<CAEProject*>(&object);
    return project != nullptr &&
           (IsWrittenAs(project->getAdditionalType(), type) || IsWrittenAs(ExportedType(*project), type));
}

bool IsInLineWithKey(CAEObject& object, const OuString& value, OuString& present) {
    present = object.getDBKey();
    if (IsWrittenAs(present, value)) {
        return true;
    }
    if (KindOf(object) == Kind::kViewItem) {
        // An export writes the view item's own key, an import takes it for the key of what it shows.
        present = object.getLinkDBKey();
    }
    return IsWrittenAs(present, value);
}

bool IsInLineWithRecord(CAEFile& file, format::MemberName member, const OuString& value, OuString& present) {
    const std::string text = AnsiFormOf(value);
    if (member == member::kFileType) {
        present = TextOfModel(CAEGetFileTypeName(static_cast<int>(FileTypeOf(file))));
        return GetCAEFileType(value) == file.getFileType() || IsWrittenAs(present, value);
    }
    if (member == member::kFileFormat) {
        const char* const name = format::NameOfFileFormat(FileFormatOf(file));
        present = OuString(name, 0);
        return text == name || format::FileFormatOfName(text) == FileFormatOf(file);
    }
    if (member == member::kFilePath) {
        return true;
    }
    present = file.m_locationType;
    return IsWrittenAs(present, value);
}

}  // namespace

UpdatingImport::UpdatingImport(const ImportOptions& options, ImportReport& report, CAEObject& target,
                               const DocumentKeys& keys)
    : ReportingImport(options, report, keys.ElementCount()), keys_(keys), index_(target) {}

// Where elements land

void UpdatingImport::Match(CAEObject& object, const JSONNode& element) {
    landed_.insert(&object);
    open_.insert(&object);
    Innermost().identifier = object.getID();
    Innermost().matching = std::make_unique<MatchedNode>(object, element, keys_);
}

bool UpdatingImport::EnterRoot(const ImportTarget& target, const JSONNode& node) {
    Enter(node, false);
    if (!HasType(node)) {
        return false;
    }
    CAEObject& object = *target.object;
    const OuString key = TextOf(LastMembers(node).key);
    if (!IsEmpty(key) && KindOf(object) != Kind::kViewItem) {
        const OuString own = object.getDBKey();
        const TreeIndex::Owners& owners = index_.ObjectsWith(key);
        if (!owners.several.empty() || (owners.object != nullptr && owners.object != &object) ||
            (!IsEmpty(own) && !IsWrittenAs(own, key))) {
            Conflict(node, &object, "the target of the import has another key, " + Excerpt(Utf8Of(own)));
            return false;
        }
    }
    Result().root = object.getID();
    Result().hasRoot = true;
    ++Result().objectsMatched;
    Match(object, node);
    return true;
}

void UpdatingImport::EnterParentOfRoot(const ImportTarget& target) {
    ReportingImport::EnterParentOfRoot(target);
    Match(*target.object, noNode_);
}

UpdatingImport::Found UpdatingImport::Conflict(const JSONNode& element, CAEObject* object,
                                               const std::string& why) {
    Tell(Reason::kConflict, {}, object == nullptr ? 0 : object->getID(), [&] {
        return std::pair(Describe(element),
                         Describe(element) + " is left out with everything below it: " + why);
    });
    return {.isConflict = true};
}

UpdatingImport::Found UpdatingImport::FindByKey(const JSONNode& element, const OuString& key,
                                                const OuString& type) {
    const Kind kind = format::KindOfType(AnsiFormOf(type));
    const std::string shown = "the key " + Excerpt(Utf8Of(key));
    const TreeIndex::Owners& owners = index_.ObjectsWith(key);
    if (keys_.HasTwice(key)) {
        return Conflict(element, owners.object, shown + " occurs twice in the document");
    }
    if (!owners.several.empty()) {
        return Conflict(element, nullptr, shown + " belongs to several objects");
    }
    if (const TreeIndex::Owners& files = index_.FilesWith(key);
        files.object != nullptr || !files.several.empty()) {
        return Conflict(element, files.object, shown + " belongs to a file");
    }
    if (owners.object == nullptr) {
        return {};
    }
    if (owners.isOutside) {
        return Conflict(element, owners.object,
                        shown + " belongs to an object that is not below the target of the import, " +
                            DescribeAsItWas(*owners.object));
    }
    const bool isOfType = kind == Kind::kUnknown && IsOfType(*owners.object, type);
    if (KindOf(*owners.object) != kind && !isOfType) {
        return Conflict(element, owners.object,
                        shown + " belongs to an object of another kind, " + DescribeAsItWas(*owners.object));
    }
    if (open_.contains(owners.object)) {
        return Conflict(element, owners.object, shown + " belongs to an object that it lies below");
    }
    return {.object = owners.object};
}

UpdatingImport::Found UpdatingImport::FindObject(const JSONNode& element, const LastMembers& last) {
    const Kind kind = format::KindOfType(AnsiFormOf(TextOf(last.type)));
    const OuString key = TextOf(last.key);
    MatchedNode* const parent = MatchOf(AboveInnermost());
    const OuString name = TextOf(last.anyName);
    if (kind == Kind::kViewItem && !IsEmpty(key)) {
        const TreeIndex::Owners& owners = index_.ViewItemsWith(key);
        if (owners.object != nullptr && !landed_.contains(owners.object)) {
            return {.object = owners.object};
        }
        CAEObject* const linked =
            parent == nullptr ? nullptr : parent->Children().Find(SignOfLink(key, name), false, landed_);
        if (linked != nullptr) {
            return {.object = linked};
        }
    } else if (!IsEmpty(key)) {
        if (const Found found = FindByKey(element, key, TextOf(last.type));
            found.isConflict || found.object != nullptr) {
            return found;
        }
    }
    if (parent == nullptr) {
        return {};
    }
    const bool withoutKey = !IsEmpty(key) && kind != Kind::kViewItem;
    if (kind == Kind::kUnknown) {
        return {.object = parent->Children().Find(SignOfType(TextOf(last.type), name), withoutKey, landed_)};
    }
    if (kind != Kind::kProject) {
        return {.object = parent->Children().Find(SignOf(kind, name), withoutKey, landed_)};
    }
    // An import names a project by its "displayName", an export writes that as "name", and what an import
    // does with the "name" cannot be read back: a project without a name may be the one.
    for (const OuString& known : {TextOf(last.displayName), TextOf(last.name), OuString()}) {
        if (CAEObject* const found = parent->Children().Find(SignOf(kind, known), withoutKey, landed_)) {
            return {.object = found};
        }
    }
    return {};
}

bool UpdatingImport::Move(const ImportTarget& parent, CAEObject& object) {
    CAEObject* const from = object.getParent();
    if (from == parent.object) {
        return true;
    }
    if (!Options().dryRun && from != nullptr && !Rehang(object, *from, *parent.object)) {
        Conflict(*Innermost().node, &object, "the object model does not let it hang there");
        return false;
    }
    ++Result().objectsMoved;
    Tell(Reason::kMoved, {}, object.getID(), [&] {
        const std::string subject = DescribeAsItWas(object);
        return std::pair(subject, subject + " moves from " +
                                      (from == nullptr ? "nowhere" : DescribeAsItWas(*from)) + " to " +
                                      (parent.object == nullptr ? Describe(*AboveInnermost().node)
                                                                : DescribeAsItWas(*parent.object)));
    });
    return true;
}

std::optional<ImportTarget> UpdatingImport::EnterChild(const ImportTarget& parent, const JSONNode& element) {
    CountStep();
    Enter(element, false);
    const bool isRoot = HasParentOfRoot() && Innermost().section.empty();
    std::optional<ImportTarget> child;
    if (HasType(element)) {
        const LastMembers last(element);
        const Found found = FindObject(element, last);
        if (found.object != nullptr && Move(parent, *found.object)) {
            ++Result().membersTaken;
            ++Result().objectsMatched;
            Match(*found.object, element);
            child = ImportTarget{found.object, parent.project, this};
        } else if (found.object == nullptr && !found.isConflict) {
            child = Make(parent, element);
            if (child) {
                haveAssembliesChanged_ = haveAssembliesChanged_ || IsAssembly(child->Kind());
                if (child->object != nullptr) {
                    open_.insert(child->object);
                }
                TellAdded();
            }
        }
    }
    if (!child) {
        KeepOwnersOfKey(element);
        KeepProjectWithoutType(element);
        Leave();
        return std::nullopt;
    }
    if (isRoot) {
        Result().hasRoot = true;
        Result().root = Innermost().identifier;
    }
    return child;
}

void UpdatingImport::KeepOwnersOfKey(const JSONNode& element) {
    const OuString key = TextOf(LastMembers(element).key);
    for (const TreeIndex::Owners* const owners :
         {&index_.ObjectsWith(key), &index_.ViewItemsWith(key), &index_.FilesWith(key)}) {
        inConflict_.insert(inConflict_.end(), owners->several.begin(), owners->several.end());
        if (owners->object != nullptr) {
            inConflict_.push_back(owners->object);
        }
    }
}

void UpdatingImport::KeepProjectWithoutType(const JSONNode& element) {
    MatchedNode* const parent = MatchOf(AboveInnermost());
    const LastMembers last(element);
    if (parent != nullptr && IsEmpty(TextOf(last.type))) {
        landed_.insert(parent->Children().Find(SignOfType({}, TextOf(last.name)), false, landed_));
    }
}

void UpdatingImport::TellAdded() {
    const Frame& frame = Innermost();
    Tell(Reason::kAdded, {}, 0, [&] {
        const std::string subject = (frame.isFileRecord ? "the file " : "") + Describe(*frame.node);
        return std::pair(subject, subject + " is new");
    });
}

void UpdatingImport::LeaveMatched(Frame& frame) {
    MatchedNode* const match = MatchOf(frame);
    if (match == nullptr) {
        return;
    }
    CAEObject& object = match->Object();
    const auto tellKept = [&](format::MemberName section, const std::string& what) {
        Tell(Reason::kKept, PointerTo(section.View()), object.getID(), [&] {
            const std::string subject = what + " of " + DescribeAsItWas(object);
            return std::pair(subject, subject + " is not in the document, and stays");
        });
    };
    if (frame.hasMetadata) {
        for (const std::string& name : match->ListedEntries()) {
            const MatchedNode::Entry& entry = match->Entries()[name];
            if (entry.lastRecord == nullptr) {
                tellKept(member::kMetaData, "the metadata entry " + Excerpt(Utf8Of(entry.name)));
            }
        }
    }
    if (frame.hasFiles) {
        for (CAEFile* const file : match->ListedFiles()) {
            if (!landed_.contains(file)) {
                tellKept(member::kFiles, "the file " + DescribeAsItWas(*file));
            }
        }
    }
    if (frame.hasChildren) {
        for (CAEObject* const child : match->ListedChildren()) {
            // Session objects are never written.
            if (!landed_.contains(child) && KindOf(*child) != Kind::kSessionObject) {
                missing_.push_back({child, std::nullopt});
                if (Builder().IsListing()) {
                    missing_.back().pointer = Pointer() + PointerTo(member::kChildren.View());
                    Builder().Reserve(missing_.back().pointer->size());
                }
            }
        }
    }
}

void UpdatingImport::LeaveChild(const ImportTarget& child) {
    LeaveMatched(Innermost());
    open_.erase(child.object);
    Leave();
}

void UpdatingImport::Finish() {
    if (!HasParentOfRoot()) {
        LeaveMatched(Innermost());
    }
    // Nothing is done for objects in conflict, so what they lie below stays too.
    std::unordered_set<const CAEObject*> staying;
    for (CAEObject* object : inConflict_) {
        while (object != nullptr && !landed_.contains(object) && staying.insert(object).second) {
            object = object->getParent();
        }
    }
    for (Missing& missing : missing_) {
        if (missing.pointer) {
            Builder().Release(missing.pointer->size());
        }
        if (!landed_.contains(missing.object)) {
            KeepOrRemove(missing, staying);
        }
    }
}

void UpdatingImport::KeepOrRemove(Missing& missing, const std::unordered_set<const CAEObject*>& staying) {
    CAEObject& object = *missing.object;
    const std::optional<std::size_t> removed =
        Options().remove && !staying.contains(&object) ? CountRemoved(object, staying) : std::nullopt;
    const Reason reason = removed ? Reason::kRemoved : Reason::kKept;
    if (missing.pointer) {
        const std::string subject = DescribeAsItWas(object);
        Builder().Add(reason, std::move(*missing.pointer), object.getID(), subject,
                      subject + (removed ? " is not in the document, and is removed with everything below it"
                                         : " is not in the document, and stays"));
    } else {
        Builder().CountUnlisted(reason);
    }
    Result().objectsRemoved += removed.value_or(0);
    if (removed && !Options().dryRun) {
        CAEObject* leaving = &object;
        object.getParent()->detachChild(leaving, true);
    }
}

std::optional<std::size_t> UpdatingImport::CountRemoved(
    CAEObject& root, const std::unordered_set<const CAEObject*>& staying) const {
    std::size_t count = 0;
    std::vector<CAEObject*> open = {&root};
    while (!open.empty()) {
        CAEObject& object = *open.back();
        open.pop_back();
        // In a dry run, what moves away still hangs there.
        if (landed_.contains(&object)) {
            continue;
        }
        const std::vector<CAEFile*> files = FilesOf(object);
        if (std::ranges::any_of(files, [&](const CAEFile* file) { return staying.contains(file); })) {
            return std::nullopt;
        }
        count += KindOf(object) == Kind::kFile ? 0 : 1;
        const std::vector<CAEObject*> children = ChildrenOf(object);
        open.insert(open.end(), children.begin(), children.end());
    }
    return count;
}

// What is set

std::string UpdatingImport::DescribeAsItWas(CAEObject& object) const {
    const auto found = describedBefore_.find(&object);
    return found == describedBefore_.end() ? Describe(object) : found->second;
}

void UpdatingImport::TellChange(CAEObject& object, const std::string& component, const std::string& what,
                                const OuString& from, const OuString& to) {
    Tell(Reason::kChanged, component, object.getID(), [&] {
        const std::string subject = what + " of " + DescribeAsItWas(object);
        return std::pair(subject, subject + ": " + Became(from, to));
    });
}

bool UpdatingImport::TellNotComparable(const std::string& component, const std::string& what) {
    Untake();
    Tell(Reason::kNotComparable, component, 0, [&] {
        const std::string subject = Excerpt(what) + " of " + Describe(*Innermost().node);
        return std::pair(subject, subject +
                                      " is left out: the object has a value that cannot be read back, so an "
                                      "update does not know whether it is another one");
    });
    return false;
}

bool UpdatingImport::IsCurrentMemberLast(const MatchedNode& match, format::MemberName member,
                                         bool isProject) const {
    const LastMembers& last = match.Last();
    const JSONNode* const counts = member == member::kDatabaseKey   ? last.key
                                   : member == member::kCreatedDate ? last.createdDate
                                   : !isProject                     ? last.anyName
                                   : member == member::kName        ? last.name
                                                                    : last.displayName;
    return counts == CurrentMember();
}

bool UpdatingImport::IsInLine(CAEObject& object, format::MemberName member, const OuString& value,
                              OuString& present) const {
    if (member == member::kName || member == member::kDisplayName) {
        present = ExportedName(object);
        return IsWrittenAs(present, value) || IsWrittenAs(NameOf(object), value);
    }
    if (member == member::kDatabaseKey) {
        return IsInLineWithKey(object, value, present);
    }
    if (member == member::kCreatedDate) {
        object.getCreatedDate(present);
        return IsWrittenAs(present, value);
    }
    if (auto* const project = member == member::kType ? dynamic_cast<CAEProject*>(&object) : nullptr) {
        present = project->getAdditionalType();
        return IsOfType(object, value);
    }
    auto* const file = dynamic_cast<CAEFile*>(&object);
    return file == nullptr || IsInLineWithRecord(*file, member, value, present);
}

bool UpdatingImport::SetsMember(const ImportTarget& target, format::MemberName member,
                                const OuString& value) {
    MatchedNode* const match = MatchOf(Innermost());
    const bool isFlag = member == member::kIsInCoordinateGlobalFrame || member == member::kIsFileDownloaded;
    if (match == nullptr) {
        if (isFlag && isMadeAlready_) {
            return TellNotComparable(PointerTo(member.View()), std::string(member.View()));
        }
        return ReportingImport::SetsMember(target, member, value);
    }
    CAEObject& object = *target.object;
    const bool isProject = KindOf(object) == Kind::kProject;
    const bool isHeader = member == member::kName || member == member::kDisplayName ||
                          member == member::kDatabaseKey || member == member::kCreatedDate;
    if (IsNullKey() && member == member::kDatabaseKey) {
        return false;
    }
    CountKey(member, value);
    // An earlier one would be set and overwritten in every update.
    if (isHeader && !IsCurrentMemberLast(*match, member, isProject)) {
        return false;
    }
    const std::string component = PointerTo(member.View());
    if (isFlag) {
        return TellNotComparable(component, std::string(member.View()));
    }
    OuString present;
    if (IsInLine(object, member, value, present)) {
        return false;
    }
    if (isProject && member == member::kName) {
        return TellNotComparable(component, std::string(member.View()));
    }
    TellChange(object, component, Excerpt(member.View()), present, value);
    if (member == member::kName || member == member::kDisplayName) {
        match->isNameChanged = true;
        describedBefore_.emplace(&object, Describe(object));
    }
    match->isTypeChanged = match->isTypeChanged || member == member::kFileType;
    match->isLinkChanged = match->isLinkChanged || member == member::kDatabaseKey;
    haveAssembliesChanged_ =
        haveAssembliesChanged_ || (member == member::kDatabaseKey && IsAssembly(KindOf(object)));
    return Sets(target, member, value) && !Options().dryRun;
}

ImportPolicy::EntrySetting UpdatingImport::EnterRecord(const ImportTarget& target, const JSONNode& record,
                                                       const OuString& name, const OuString& type,
                                                       const OuString& value) {
    const EntrySetting setting = ReportingImport::EnterRecord(target, record, name, type, value);
    MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr) {
        return setting;
    }
    MatchedNode::Entry& entry = match->Entries()[ComparedName(name)];
    if (entry.lastRecord != &record) {
        return {false, false};
    }
    CAEObject& object = *target.object;
    OuString presentType;
    OuString unit;
    if (entry.isThere) {
        object.getMetadataType(entry.name, presentType);
        object.getMetadataUnitString(entry.name, unit);
    }
    const std::string what = "the metadata entry " + Excerpt(Utf8Of(name));
    // An export writes the unit where an import reads the type.
    const bool setsType = !entry.isThere || !(IsWrittenAs(presentType, type) || IsWrittenAs(unit, type));
    const bool setsValue = !entry.isThere || !IsWrittenAs(entry.value, value);
    if (setsValue) {
        TellChange(object, RecordComponent(), what, entry.value, value);
    } else if (setsType) {
        TellChange(object, RecordComponent() + PointerTo(member::kMetaDataType.View()), "the type of " + what,
                   presentType, type);
    }
    return {setsType && !Options().dryRun, setsValue && !Options().dryRun};
}

bool UpdatingImport::ResolvesReference(const ImportTarget& viewItem) {
    const MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr || match->isLinkChanged) {
        return ReportingImport::ResolvesReference(viewItem);
    }
    ++Result().viewItems;
    const OuString key = viewItem.object->getLinkDBKey();
    if (HasMasterAssembly(viewItem.project, key)) {
        ++Result().viewItemsLinked;
        return haveAssembliesChanged_ && !Options().dryRun;
    }
    // What an export writes is the view item's own key, and asks for nothing to be shown.
    if (!IsEmpty(key) && IsWrittenAs(TextOf(match->Last().key), key)) {
        TellNoMasterAssembly(0, key);
    }
    return false;
}

void UpdatingImport::LeaveReference(const ImportTarget& viewItem, bool isFound) {
    const MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr || match->isLinkChanged) {
        ReportingImport::LeaveReference(viewItem, isFound);
    }
}

// Files

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
    const std::string sign = SignOfFile(FileTypeOfRecord(last), TextOf(last.anyName));
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

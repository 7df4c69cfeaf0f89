#include "UpdatingImport.h"

#include <korvaneexchange/PrintableText.h>

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

bool IsAssembly(Kind kind) {
    return kind == Kind::kSubAssembly || kind == Kind::kIterationModel;
}

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

/// Whether one of the files of the object, or of those below it, is among these.
bool HasFileAmong(CAEObject& root, const std::unordered_set<const CAEObject*>& files) {
    std::vector<CAEObject*> open = {&root};
    while (!files.empty() && !open.empty()) {
        CAEObject& object = *open.back();
        open.pop_back();
        for (const CAEFile* const file : FilesOf(object)) {
            if (files.contains(file)) {
                return true;
            }
        }
        const std::vector<CAEObject*> children = ChildrenOf(object);
        open.insert(open.end(), children.begin(), children.end());
    }
    return false;
}

bool IsInLineWithKey(CAEObject& object, const OuString& value, OuString& present) {
    present = object.getDBKey();
    if (AreEqual(present, value)) {
        return true;
    }
    if (KindOf(object) == Kind::kViewItem) {
        // An export writes the view item's own key, an import takes it for the key of what it shows.
        present = object.getLinkDBKey();
    }
    return AreEqual(present, value);
}

bool IsInLineWithRecord(CAEFile& file, format::MemberName member, const OuString& value, OuString& present) {
    const std::string text = AnsiFormOf(value);
    if (member == member::kFileType) {
        present = TextOfModel(CAEGetFileTypeName(static_cast<int>(FileTypeOf(file))));
        return GetCAEFileType(value) == file.getFileType();
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
    return AreEqual(present, value);
}

}  // namespace

UpdatingImport::UpdatingImport(const ImportOptions& options, ImportReport& report, CAEObject& target,
                               const DocumentKeys& keys)
    : ReportingImport(options, report, keys.ElementCount()), keys_(keys), index_(target) {}

// Where elements land

void UpdatingImport::Match(CAEObject& object, const JSONNode& element) {
    landed_.insert(&object);
    open_.insert(&object);
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
            (!IsEmpty(own) && !AreEqual(own, key))) {
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
    if (object != nullptr) {
        inConflict_.push_back(object);
    }
    Tell(Reason::kConflict, {}, object == nullptr ? 0 : object->getID(), [&] {
        return std::pair(Describe(element),
                         Describe(element) + " is left out with everything below it: " + why);
    });
    return {.isConflict = true};
}

UpdatingImport::Found UpdatingImport::FindByKey(const JSONNode& element, const OuString& key, Kind kind) {
    const std::string shown = "the key " + Excerpt(Utf8Of(key));
    const TreeIndex::Owners& owners = index_.ObjectsWith(key);
    if (keys_.HasTwice(key)) {
        return Conflict(element, owners.object, shown + " occurs twice in the document");
    }
    if (!owners.several.empty()) {
        inConflict_.insert(inConflict_.end(), owners.several.begin(), owners.several.end());
        return Conflict(element, nullptr, shown + " belongs to several objects");
    }
    if (owners.object == nullptr) {
        return {};
    }
    if (KindOf(*owners.object) != kind) {
        return Conflict(element, owners.object,
                        shown + " belongs to an object of another kind, " + Describe(*owners.object));
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
        if (const Found found = FindByKey(element, key, kind); found.isConflict || found.object != nullptr) {
            return found;
        }
    }
    if (parent == nullptr) {
        return {};
    }
    const bool withoutKey = !IsEmpty(key) && kind != Kind::kViewItem;
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
    if (!Options().dryRun && from != nullptr) {
        CAEObject* leaving = &object;
        from->detachChild(leaving, false);
        if (parent.object->addChild(&object) != 0) {
            from->addChild(&object);
            Conflict(*Innermost().node, &object, "the object model does not let it hang there");
            return false;
        }
    }
    ++Result().objectsMoved;
    Tell(Reason::kMoved, {}, object.getID(), [&] {
        const std::string subject = Describe(object);
        return std::pair(
            subject,
            subject + " moves from " + (from == nullptr ? "nowhere" : Describe(*from)) + " to " +
                (parent.object == nullptr ? Describe(*AboveInnermost().node) : Describe(*parent.object)));
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
                TellAdded(child->object == nullptr ? 0 : child->object->getID());
            }
        }
    }
    if (!child) {
        Leave();
        return std::nullopt;
    }
    if (isRoot) {
        Result().hasRoot = true;
        Result().root = child->object == nullptr ? 0 : child->object->getID();
    }
    return child;
}

void UpdatingImport::TellAdded(int identifier) {
    const Frame& frame = Innermost();
    Tell(Reason::kAdded, {}, identifier, [&] {
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
            const std::string subject = what + " of " + Describe(object);
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
                tellKept(member::kFiles, "the file " + Describe(*file));
            }
        }
    }
    if (frame.hasChildren) {
        for (CAEObject* const child : match->ListedChildren()) {
            // Session objects are never written.
            if (!landed_.contains(child) && KindOf(*child) != Kind::kSessionObject) {
                missing_.push_back({child, Builder().IsListing()
                                               ? Pointer() + PointerTo(member::kChildren.View())
                                               : std::string()});
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
        while (object != nullptr && staying.insert(object).second) {
            object = object->getParent();
        }
    }
    for (Missing& missing : missing_) {
        CAEObject* object = missing.object;
        if (landed_.contains(object)) {
            continue;
        }
        const int identifier = object->getID();
        const std::string subject = Describe(*object);
        const bool isRemoved =
            Options().remove && !staying.contains(object) && !HasFileAmong(*object, staying);
        if (isRemoved && !Options().dryRun) {
            object->getParent()->detachChild(object, true);
        }
        Result().objectsRemoved += isRemoved ? 1 : 0;
        Builder().Add(
            isRemoved ? Reason::kRemoved : Reason::kKept, std::move(missing.pointer), identifier, subject,
            subject + (isRemoved ? " is not in the document, and is removed with everything below it"
                                 : " is not in the document, and stays"));
    }
}

// What is set

void UpdatingImport::TellChange(CAEObject& object, const std::string& component, const std::string& what,
                                const OuString& from, const OuString& to) {
    Tell(Reason::kChanged, component, object.getID(), [&] {
        const std::string subject = what + " of " + Describe(object);
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
        return AreEqual(present, value) || AreEqual(NameOf(object), value);
    }
    if (member == member::kDatabaseKey) {
        return IsInLineWithKey(object, value, present);
    }
    if (member == member::kCreatedDate) {
        object.getCreatedDate(present);
        return AreEqual(present, value);
    }
    if (auto* const project = member == member::kType ? dynamic_cast<CAEProject*>(&object) : nullptr) {
        // An export writes it in upper case.
        present = project->getAdditionalType();
        return AreEqualInAnyCase(present, value);
    }
    auto* const file = dynamic_cast<CAEFile*>(&object);
    return file == nullptr || IsInLineWithRecord(*file, member, value, present);
}

bool UpdatingImport::SetsMember(const ImportTarget& target, format::MemberName member,
                                const OuString& value) {
    const bool isSet = ReportingImport::SetsMember(target, member, value);
    MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr) {
        return isSet;
    }
    CAEObject& object = *target.object;
    const bool isProject = KindOf(object) == Kind::kProject;
    const bool isHeader = member == member::kName || member == member::kDisplayName ||
                          member == member::kDatabaseKey || member == member::kCreatedDate;
    if (IsNullKey() && member == member::kDatabaseKey) {
        return false;
    }
    // An earlier one would be set and overwritten in every update.
    if (isHeader && !IsCurrentMemberLast(*match, member, isProject)) {
        return false;
    }
    const std::string component = PointerTo(member.View());
    if (member == member::kIsInCoordinateGlobalFrame || member == member::kIsFileDownloaded) {
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
    match->isNameChanged = match->isNameChanged || member == member::kName || member == member::kDisplayName;
    match->isTypeChanged = match->isTypeChanged || member == member::kFileType;
    match->isLinkChanged = match->isLinkChanged || member == member::kDatabaseKey;
    haveAssembliesChanged_ =
        haveAssembliesChanged_ || (member == member::kDatabaseKey && IsAssembly(KindOf(object)));
    return !Options().dryRun;
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
        object.getMetadataType(name, presentType);
        object.getMetadataUnitString(name, unit);
    }
    const std::string what = "the metadata entry " + Excerpt(Utf8Of(name));
    // An export writes the unit where an import reads the type.
    const bool setsType = !entry.isThere || !(AreEqual(presentType, type) || AreEqual(unit, type));
    const bool setsValue = !entry.isThere || !AreEqual(entry.value, value);
    if (setsValue) {
        TellChange(object, RecordComponent(), what, entry.value, value);
    } else if (setsType) {
        TellChange(object, RecordComponent() + PointerTo(member::kMetaDataType.View()), "the type of " + what,
                   presentType, type);
    }
    return {setsType && !Options().dryRun, setsValue && !Options().dryRun};
}

bool UpdatingImport::ResolvesReference(const ImportTarget& viewItem) {
    const bool resolves = ReportingImport::ResolvesReference(viewItem);
    const MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr || match->isLinkChanged || haveAssembliesChanged_ || !resolves) {
        return resolves;
    }
    int master = 0;
    getMasterAssemblyCAEIDByITEMID(viewItem.project, viewItem.object->getLinkDBKey(), master);
    Result().viewItemsLinked += master != 0 ? 1 : 0;
    return false;
}

// Files

UpdatingImport::Found UpdatingImport::FindFile(const ImportTarget& owner, const JSONNode& record,
                                               const LastMembers& last) {
    const OuString key = TextOf(last.key);
    MatchedNode* const match = MatchOf(AboveInnermost());
    if (!IsEmpty(key)) {
        if (match != nullptr) {
            const MatchedNode::KeyOwners own = match->FilesWith(key);
            if (own.count > 1 || (own.count == 1 && landed_.contains(own.file))) {
                return Conflict(record, own.file, "the key " + Excerpt(Utf8Of(key)) + " occurs twice");
            }
            if (own.count == 1) {
                return {.object = own.file};
            }
        }
        const TreeIndex::Owners& owners = index_.FilesWith(key);
        const TreeIndex::Owners& objects = index_.ObjectsWith(key);
        if (!owners.several.empty() || !objects.several.empty() || objects.object != nullptr) {
            inConflict_.insert(inConflict_.end(), owners.several.begin(), owners.several.end());
            inConflict_.insert(inConflict_.end(), objects.several.begin(), objects.several.end());
            return Conflict(
                record, objects.object,
                "the key " + Excerpt(Utf8Of(key)) + " belongs to several files or to another object");
        }
        if (owners.object != nullptr) {
            return {.object = owners.object};
        }
    }
    if (match == nullptr || owner.object == nullptr) {
        return {};
    }
    const std::string sign = SignOfFile(FileTypeOfRecord(last), TextOf(last.anyName));
    return {.object = match->Files().Find(sign, !IsEmpty(key), landed_)};
}

bool UpdatingImport::HasRole(const ImportTarget& owner, const JSONNode& record) {
    if (IsAttached(FileTypeOfRecord(LastMembers(record)), owner.Kind())) {
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
    const Found found = FindFile(owner, record, LastMembers(record));
    if (found.isConflict) {
        Untake();
        Leave();
        return {.isLeftOut = true};
    }
    if (found.object == nullptr && !HasRole(owner, record)) {
        Untake();
        Leave();
        return {.isLeftOut = true};
    }
    if (found.object == nullptr) {
        return landing;
    }
    auto* const file = static_cast<CAEFile*>(found.object);
    MatchedNode* const above = MatchOf(AboveInnermost());
    Innermost().isNew = false;
    Match(*file, record);
    MatchedNode& match = *MatchOf(Innermost());
    match.isAttached = above != nullptr && above->HasFile(*file);
    ++Result().filesMatched;
    return {.isLeftOut = false, .file = file};
}

bool UpdatingImport::SetsPath(CAEFile& file, const OuString& path) {
    const MatchedNode* const match = MatchOf(Innermost());
    return match == nullptr ? ReportingImport::SetsPath(file, path)
                            : match->isNameChanged && !Options().dryRun;
}

bool UpdatingImport::AttachesFile(const ImportTarget& owner, CAEFile& file) {
    const MatchedNode* const match = MatchOf(Innermost());
    if (match == nullptr) {
        return ReportingImport::AttachesFile(owner, file);
    }
    if (match->isAttached && !match->isTypeChanged) {
        return false;
    }
    Tell(Reason::kChanged, {}, file.getID(), [&] {
        const std::string subject = "the file " + Describe(file);
        return std::pair(subject, subject + " is attached to " + Describe(*AboveInnermost().node));
    });
    return !Options().dryRun && owner.object != nullptr;
}

void UpdatingImport::LeaveFile(const ImportTarget&) {
    LeaveMatched(Innermost());
    if (const MatchedNode* const match = MatchOf(Innermost())) {
        open_.erase(&match->Object());
    }
    Leave();
}

}  // namespace korvane::exchange

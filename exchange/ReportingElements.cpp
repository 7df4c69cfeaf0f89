#include <korvaneexchange/PrintableText.h>

#include <utility>

#include "NodeText.h"
#include "ReportingImport.h"
#include "TreeIndex.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"
#include "objectjson/Sections.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {

bool IsAssembly(Kind kind) {
    return kind == Kind::kSubAssembly || kind == Kind::kIterationModel;
}

// Children

bool ReportingImport::HasType(const JSONNode& element) {
    const JSONNode* const type = FindMember(element, member::kType);
    const NodeText text = type == nullptr ? NodeText() : NodeValue(*type);
    if (!UpToNul(text).empty()) {
        return true;
    }
    Tell(Reason::kNoType, {}, 0, [&] {
        return std::pair(
            Describe(element),
            Describe(element) + " is left out with everything below it, because it has no \"type\"");
    });
    return false;
}

std::optional<ImportTarget> ReportingImport::Make(const ImportTarget& parent, const JSONNode& element) {
    const std::string type = Utf8OfValue(*FindMember(element, member::kType));
    const Kind kind = format::KindOfType(type);
    ImportTarget made = {nullptr, parent.project, this, kind};
    // An update that has nothing to do asks for nothing to be made, not even what cannot be.
    const bool asks = kind != Kind::kUnknown || options_.match == Match::kNever;
    if (!options_.dryRun && asks) {
        made.object = CreateChild(*parent.object, *parent.project, element);
    }
    if (options_.dryRun ? kind != Kind::kUnknown : made.object != nullptr) {
        Frame& frame = frames_.back();
        frame.isNew = true;
        frame.identifier = made.object == nullptr ? 0 : made.object->getID();
        ++report_.membersTaken;
        if (made.Kind() == Kind::kFile) {
            ++report_.filesAdded;
            ++report_.filesAsChildren;
        } else {
            ++report_.objectsAdded;
        }
        return made;
    }
    if (kind == Kind::kUnknown) {
        Tell(Reason::kUnknownType, {}, 0, [&] {
            const std::string subject = Describe(element) + " of type " + Excerpt(type);
            return std::pair(subject,
                             subject + " is left out with everything below it: its \"type\" is not known");
        });
    } else {
        Tell(Reason::kRefused, {}, 0, [&] {
            return std::pair(Describe(element),
                             Describe(element) +
                                 " is left out with everything below it, because the object "
                                 "was not created");
        });
    }
    return std::nullopt;
}

std::optional<ImportTarget> ReportingImport::EnterChild(const ImportTarget& parent, const JSONNode& element) {
    CountStep();
    Enter(element, false);
    report_.elements += IsInnermostRoot() ? 0 : 1;
    std::optional<ImportTarget> child;
    if (HasType(element)) {
        child = Make(parent, element);
    }
    if (!child) {
        Leave();
        return std::nullopt;
    }
    TellAdded();
    CountLanded();
    return child;
}

void ReportingImport::CountLanded() {
    if (IsInnermostRoot()) {
        report_.hasRoot = true;
        report_.root = frames_.back().identifier;
    } else {
        ++report_.elementsTaken;
    }
}

void ReportingImport::TellAdded() {
    builder_.Count(Reason::kAdded);
}

bool ReportingImport::ResolvesReference(const ImportTarget& viewItem) {
    ++report_.viewItems;
    if (!options_.dryRun) {
        return viewItem.object != nullptr;
    }
    const Frame& frame = frames_.back();
    const OuString key = frame.linkKey ? *frame.linkKey : OuString();
    if (HasMasterAssembly(viewItem.project, key)) {
        ++report_.viewItemsLinked;
    } else {
        TellNoMasterAssembly(frame.identifier, key);
    }
    return false;
}

bool ReportingImport::HasMasterAssembly(CAEProject* project, const OuString& key) const {
    if (IsEmpty(key) || project == nullptr) {
        return false;
    }
    int master = 0;
    getMasterAssemblyCAEIDByITEMID(project, key, master);
    return (master != 0 && !assembliesWithOtherKeys_.contains(master)) ||
           assemblyKeys_.contains(AnsiFormOf(key));
}

void ReportingImport::LeaveReference(const ImportTarget& viewItem, bool isFound) {
    if (isFound) {
        ++report_.viewItemsLinked;
        return;
    }
    TellNoMasterAssembly(viewItem.object->getID(), viewItem.object->getLinkDBKey());
}

void ReportingImport::TellNoMasterAssembly(int identifier, const OuString& key) {
    const Frame& frame = frames_.back();
    Tell(Reason::kNoMasterAssembly, {}, identifier, [&] {
        const std::string node = Describe(*frame.node);
        if (IsEmpty(key)) {
            return std::pair(node, node + " shows nothing, because it has no key");
        }
        const std::string subject = node + " with the key " + Excerpt(Utf8Of(key));
        return std::pair(subject,
                         subject + " shows nothing, because no assembly with its key came before it");
    });
}

void ReportingImport::LeaveChild(const ImportTarget&) {
    Leave();
}

// Files

bool ReportingImport::IsStray(const JSONNode& record) {
    const std::string name = Utf8Of(TextOf(LastMembers(record).anyName));
    const bool leadsOut = name.find_first_of("/\\") != std::string::npos || name == ".." || name == ".";
    if (!leadsOut || options_.allowStrayFiles) {
        return false;
    }
    Tell(Reason::kLeadsOut, {}, 0, [&] {
        return std::pair(Describe(record),
                         "the file " + Describe(record) +
                             " is left out, because its name leads out of the project's directory");
    });
    return true;
}

ImportPolicy::FileLanding ReportingImport::EnterFile(const ImportTarget&, const JSONNode& record) {
    CountStep();
    Frame& frame = Enter(record, true);
    ++report_.elements;
    if (IsStray(record)) {
        Leave();
        return {.isLeftOut = true};
    }
    ++report_.elementsTaken;
    frame.isNew = true;
    ++report_.membersTaken;
    if (record.type() != JSON_NODE) {
        Tell(Reason::kNamelessFile, {}, 0, [&] {
            return std::pair(Describe(record),
                             Describe(record) + " stands for a file: a file without a name is made");
        });
    }
    return {};
}

bool ReportingImport::SetsPath(CAEFile&, const OuString&) {
    return true;
}

bool ReportingImport::AttachesFile(const ImportTarget& owner, CAEFile& file) {
    Frame& frame = frames_.back();
    ++report_.filesAdded;
    frame.isUnattached = !IsAttached(FileTypeOf(file), owner.Kind());
    report_.filesAttached += frame.isUnattached ? 0 : 1;
    // It gets its identifier when it has been attached.
    frame.madeFile = options_.dryRun ? nullptr : &file;
    return !options_.dryRun;
}

void ReportingImport::TellUnattached() {
    Tell(Reason::kUnattached, {}, 0, [&] {
        const std::string subject =
            Describe(*frames_.back().node) + " at " + Describe(*AboveInnermost().node);
        return std::pair(
            subject, "the file " + subject + " is attached to no object, because its type has no role there");
    });
}

void ReportingImport::LeaveFile(const ImportTarget&) {
    Frame& frame = frames_.back();
    if (frame.isNew) {
        frame.identifier = frame.madeFile == nullptr ? 0 : frame.madeFile->getID();
        TellAdded();
    }
    if (frame.isUnattached) {
        TellUnattached();
    }
    Leave();
}

}  // namespace korvane::exchange

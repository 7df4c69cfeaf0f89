#include <EmbeddedRestore.h>

#include <map>
#include <string>

#include "RandomModel.h"
#include "Show.h"
#include "platform/korvane/Ask.h"

namespace {

std::string Listed(const std::vector<int>& numbers) {
    std::string shown;
    for (const int number : numbers) {
        shown += (shown.empty() ? "" : " ") + std::to_string(number);
    }
    return shown;
}

/// Writes down everything that can be reached from a model's roots.
class StateWriter {
public:
    std::vector<std::string> Write(const RandomModel& model);

private:
    void WriteReachable(CAEObject& root, const std::string& place);
    void WriteVersions(CAEObject& object, const std::string& place);
    void WriteObject(CAEObject& object);
    void WriteMetadata(const CAEObject& object);
    void WriteFiles(CAEObject& object);
    void WriteClass(CAEObject& object);
    void WriteIdentifiers(CAEProject& project);
    void Note(const std::string& name, const std::string& value) {
        lines_.push_back("    " + name + " " + value);
    }
    /// Every object has a number of its own, in the order in which they are met.
    std::string NumberOf(const CAEObject* object) const;

    std::map<const CAEObject*, int> numbers_;
    std::vector<CAEObject*> objects_;
    std::vector<std::string> places_;
    std::vector<std::string> lines_;
};

std::vector<std::string> StateWriter::Write(const RandomModel& model) {
    for (CAEObject* const root : model.Roots()) {
        WriteReachable(*root, "root");
    }
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        lines_.push_back("object @" + std::to_string(i) + ", " + places_[i]);
        WriteObject(*objects_[i]);
        WriteMetadata(*objects_[i]);
        WriteFiles(*objects_[i]);
        WriteClass(*objects_[i]);
    }
    for (CAEObject* const root : model.Roots()) {
        if (auto* const project = dynamic_cast<CAEProject*>(root)) {
            WriteIdentifiers(*project);
        }
    }
    return lines_;
}

std::string StateWriter::NumberOf(const CAEObject* object) const {
    if (object == nullptr) {
        return "none";
    }
    const auto found = numbers_.find(object);
    return found != numbers_.end() ? "@" + std::to_string(found->second) : "unreached";
}

/// Numbers everything below the root, then the versions of each object; what already has a number is only
/// named.
void StateWriter::WriteReachable(CAEObject& root, const std::string& place) {
    if (numbers_.count(&root) != 0) {
        lines_.push_back(place + " is " + NumberOf(&root));
        return;
    }
    std::vector<CAEObject*> here;
    korvane::VisitTree(root, [&](CAEObject& object, int depth) {
        if (numbers_.emplace(&object, static_cast<int>(objects_.size())).second) {
            objects_.push_back(&object);
            places_.push_back(place + ", depth " + std::to_string(depth));
            here.push_back(&object);
        }
    });
    for (CAEObject* const object : here) {
        if (auto* const project = dynamic_cast<CAEProject*>(object)) {
            for (CAEFile* const file : korvane::GetProjectFiles(*project)) {
                WriteReachable(*file, "file of " + NumberOf(project));
            }
        }
        WriteVersions(*object, "version of " + NumberOf(object));
    }
}

void StateWriter::WriteVersions(CAEObject& object, const std::string& place) {
    for (const auto& [major, minor] : VersionsOf(object)) {
        if (CAEObject* const version = VersionOf(object, major, minor)) {
            WriteReachable(*version, place + " " + std::to_string(major) + "." + std::to_string(minor));
        }
    }
}

void StateWriter::WriteObject(CAEObject& object) {
    OuString text;
    Note("identifier", std::to_string(object.getID()) + " kind " + std::to_string(object.getType()));
    object.getName(text);
    Note("name", ShowText(text));
    Note("keys", ShowText(object.getDBKey()) + " " + ShowText(object.getLinkDBKey()));
    object.getCreatedDate(text);
    Note("created", ShowText(text));
    object.getCreatedUserName(text);
    Note("user", ShowText(text));
    Note("parent", NumberOf(object.getParent()) + " project " + NumberOf(object.getProject()));
    const korvane::VersionNumber version = korvane::GetCurrentVersion(object);
    Note("current version", std::to_string(version.majorNumber) + "." + std::to_string(version.minorNumber));
}

void StateWriter::WriteMetadata(const CAEObject& object) {
    OuTemplateArray<OuString, OuCRTAllocator> names;
    OuTemplateArray<OuString, OuCRTAllocator> values;
    object.getAllMetadata(names, values);
    for (int i = 0; i < names.GetSize(); ++i) {
        OuString type;
        OuString unit;
        object.getMetadataType(names[i], type);
        object.getMetadataUnitString(names[i], unit);
        Note("entry",
             ShowText(names[i]) + " " + ShowText(values[i]) + " " + ShowText(type) + " " + ShowText(unit));
    }
}

void StateWriter::WriteFiles(CAEObject& object) {
    const korvane::FileRoles roles = korvane::GetFileRoles(object);
    if (roles.files.empty()) {
        return;
    }
    Note("files",
         Listed(roles.files) + ", meshes " + Listed(roles.meshes) + ", custom " + Listed(roles.customFiles));
    Note("roles", Listed({roles.cadFile, roles.graphicFile, roles.activeMesh, roles.feRepresentation}));
}

void StateWriter::WriteClass(CAEObject& object) {
    if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
        OuString directory;
        project->getDirectory(directory);
        Note("project", ShowText(korvane::GetDisplayName(*project)) + " " +
                            ShowText(project->getAdditionalType()) + " " + ShowText(directory) +
                            (korvane::GetProgramReference(*project) ? " referring" : ""));
    } else if (const auto* const file = dynamic_cast<CAEFile*>(&object)) {
        OuString path;
        file->getFullPathName(path);
        Note("paths",
             ShowText(path) + " " + ShowText(file->m_fullPathCopy) + " " + ShowText(file->m_locationType));
        Note("file", Listed({file->getFileType(), file->getFileFormat()}) +
                         (korvane::IsInGlobalFrame(*file) ? " global" : "") +
                         (korvane::IsDownloaded(*file) ? " downloaded" : ""));
    } else if (const auto* const item = dynamic_cast<CAEViewItem*>(&object)) {
        Note("shows", std::to_string(korvane::GetReferencedObject(*item)));
    } else if (dynamic_cast<CAEPart*>(&object) != nullptr) {
        Note("class", "part");
    } else if (dynamic_cast<CAESubAssembly*>(&object) != nullptr) {
        Note("class", "sub-assembly");
    } else if (dynamic_cast<CAERunAssembly*>(&object) != nullptr) {
        Note("class", "run assembly");
    }
}

/// What every identifier is found as, and which would be the next.
void StateWriter::WriteIdentifiers(CAEProject& project) {
    const int next = korvane::GetNextIdentifier(project);
    lines_.push_back("identifiers of " + NumberOf(&project) + ", next " + std::to_string(next));
    for (int id = 0; id < next + 100; ++id) {
        if (const CAEObject* const found = project.getCAEObject(id)) {
            Note(std::to_string(id), NumberOf(found));
        }
    }
}

}  // namespace

std::vector<std::string> StateOf(const RandomModel& model) {
    return StateWriter().Write(model);
}

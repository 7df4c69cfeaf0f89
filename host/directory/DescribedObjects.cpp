#include "DescribedObjects.h"

#include <EmbeddedModel.h>

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "DescriptionFile.h"
#include "format/Values.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"
#include "host/system/FileSystem.h"
#include "host/system/InputFile.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

OuString ToText(std::string_view text) {
    return OuString(std::string(text).c_str(), 0);
}

path FileIn(const ScannedDirectory& directory) {
    return directory.path / kDescriptionFile;
}

class Describer {
public:
    Describer(path file, Console& console, Described& described)
        : file_(std::move(file)), console_(console), described_(described) {}

    void Describe(CAEObject& object, const DescriptionFile& description);
    void NameProblem(const TextPlace& place, const std::string& text);

private:
    void Set(CAEObject& object, const DescribedObject& says);
    void SetAll(const std::vector<CAEObject*>& objects, const std::vector<DescribedObject>& described,
                _tagCAEObjectType kind, const char* word);

    path file_;
    Console& console_;
    Described& described_;
};

void Describer::NameProblem(const TextPlace& place, const std::string& text) {
    ++described_.problems;
    console_.Say(Quoted(file_) + ", line " + std::to_string(place.line) + ", column " +
                 std::to_string(place.column) + ": " + text);
}

void Describer::Set(CAEObject& object, const DescribedObject& says) {
    if (!says.name.empty()) {
        object.setName(ToText(says.name));
        if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
            project->SetDisplayName(ToText(says.name));
        }
        described_.named.insert(&object);
    }
    if (!says.description.empty()) {
        object.setMetadataValue(ToText(format::kDescriptionEntry), ToText(says.description));
    }
    for (const DescribedEntry& entry : says.metadata) {
        object.setMetadataValue(ToText(entry.name), ToText(entry.value));
        korvane::SetMetadataUnit(object, ToText(entry.name), ToText(entry.unit));
    }
}

void Describer::SetAll(const std::vector<CAEObject*>& objects, const std::vector<DescribedObject>& described,
                       _tagCAEObjectType kind, const char* word) {
    // By the names that they have before any is changed.
    std::unordered_map<std::string, CAEObject*> byName;
    for (CAEObject* const object : objects) {
        if (object->getType() == kind) {
            byName.emplace(NameOf(*object).GetAnsiBuffer(), object);
        }
    }
    std::vector<std::pair<CAEObject*, const DescribedObject*>> found;
    for (const DescribedObject& says : described) {
        const auto object = byName.find(says.key);
        if (object != byName.end()) {
            found.emplace_back(object->second, &says);
        } else {
            NameProblem(says.place, Quoted(says.key) + " is left out: there is no " + word + " of this name");
        }
    }
    for (const auto& [object, says] : found) {
        Set(*object, *says);
    }
}

void Describer::Describe(CAEObject& object, const DescriptionFile& description) {
    for (const DescriptionProblem& problem : description.problems) {
        NameProblem(problem.place, problem.text);
    }
    DescribedObject own = description.study;
    if (object.getType() == CAE_ASSEMBLY_FOLDER && !own.name.empty()) {
        NameProblem(own.place, "'name' is left out: only projects, studies, iterations and parts get names");
        own.name.clear();
    }
    Set(object, own);
    const std::vector<CAEObject*> children = ChildrenOf(object);
    std::vector<CAEObject*> iterations;
    for (const CAEObject* const child : children) {
        if (child->getType() == CAE_ITERATION_FOLDER) {
            iterations = ChildrenOf(*child);
        }
    }
    SetAll(iterations, description.iterations, CAE_ITERATION, "iteration");
    SetAll(children, description.parts, CAE_PART, "part");
}

}  // namespace

void ApplyDescription(CAEObject& object, const ScannedDirectory& directory, Console& console,
                      Described& described) {
    if (!directory.hasDescription) {
        return;
    }
    Describer describer(FileIn(directory), console, described);
    std::string text;
    // One byte more shows that a file is too long.
    const std::error_code error =
        ReadInputFile(FileIn(directory), text, {kMostOfDescriptionFile + 1, kMostOfDescriptionFile});
    ThrowIfOutOfMemory(error);
    if (error && !IsOverLimit(error)) {
        describer.NameProblem({}, "the file is left out: " + error.message());
        return;
    }
    text.resize(error ? kMostOfDescriptionFile + 1 : text.size());
    describer.Describe(object, ReadDescriptionFile(text));
}

void RefuseDescription(const ScannedDirectory& directory, Console& console, Described& described) {
    if (directory.hasDescription) {
        Describer(FileIn(directory), console, described)
            .NameProblem({},
                         "the file is left out, because its directory is not a study. Describe the study "
                         "that its files belong to");
    }
}

}  // namespace host

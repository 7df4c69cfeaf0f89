#include "StudyList.h"

#include <EmbeddedModel.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "FileFacts.h"
#include "ObjectWalk.h"
#include "format/Values.h"
#include "host/system/Columns.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::size_t kLongestDescription = 160;

struct Study {
    CAEObject* object;
    std::string path;
    std::size_t iterations = 0;
    std::size_t files = 0;
    std::uint64_t bytes = 0;
};

class StudyLister {
public:
    void Visit(const WalkedObject& walked);
    std::string Text() const;

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    std::vector<Study> studies_;
    /// The study that each object is or is in, for all objects that can have something below them.
    std::unordered_map<const CAEObject*, std::size_t> studyOf_;
    std::size_t files_ = 0;
    std::uint64_t bytes_ = 0;
    std::size_t missing_ = 0;
};

void StudyLister::Visit(const WalkedObject& walked) {
    CAEObject& object = walked.object;
    std::size_t study = walked.above != nullptr ? studyOf_.at(walked.above) : kNone;
    if (object.getType() == CAE_MODEL) {
        study = studies_.size();
        studies_.push_back({&object, walked.Path()});
    }
    if (!walked.isAttached) {
        studyOf_.emplace(&object, study);
    }
    if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
        const FileOnDisk found = LookUpFile(*file);
        ++files_;
        bytes_ += found.size;
        missing_ += found.presence == FilePresence::Missing ? 1 : 0;
        if (study != kNone) {
            ++studies_[study].files;
            studies_[study].bytes += found.size;
        }
    } else if (object.getType() == CAE_ITERATION && study != kNone) {
        ++studies_[study].iterations;
    }
}

/// The entry for people; empty if the object does not have it.
std::string EntryOf(const CAEObject& object, const OuString& name) {
    korvane::MetadataValues entry;
    if (object.getMetadataValue(name, entry.value) != 0) {
        return {};
    }
    object.getMetadataUnitString(name, entry.unit);
    object.getMetadataType(name, entry.type);
    return ShownValue(Printable(entry.value), Printable(UnitOf(entry)));
}

std::string Or(std::string text, const std::string& otherwise) {
    return text.empty() ? otherwise : text;
}

std::string StudyLister::Text() const {
    std::vector<std::vector<std::string>> rows;
    for (const Study& study : studies_) {
        const std::string files = EntryOf(*study.object, L"Files");
        const std::string description = EntryOf(*study.object, OuString(format::kDescriptionEntry, 0));
        rows.push_back({Printable(std::string_view(study.path)), "#" + std::to_string(study.object->getID()),
                        Or(EntryOf(*study.object, L"Solver"), "-"),
                        FormatCount(study.iterations, "iteration", "iterations"),
                        files.empty() ? FormatCount(study.files, "file", "files")
                                      : files + (files == "1" ? " file" : " files"),
                        Or(EntryOf(*study.object, L"Size"), FormatSize(study.bytes)),
                        std::string(CutUtf8(description, kLongestDescription))});
    }
    return AlignColumns(rows) + (rows.empty() ? "" : "\n") +
           FormatCount(studies_.size(), "study", "studies") + ", " + FormatCount(files_, "file", "files") +
           " (" + FormatSize(bytes_) + ")" +
           (missing_ > 0 ? ", " + std::to_string(missing_) + " missing" : "") + "\n";
}

}  // namespace

std::string ListStudies(CAEObject& root) {
    StudyLister lister;
    WalkObjects(root, [&](const WalkedObject& walked) { lister.Visit(walked); });
    return lister.Text();
}

}  // namespace host

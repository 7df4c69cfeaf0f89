#include "FileFormats.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace {

constexpr const char* kDescriptionFile = R"(name = "Bracket"
description = "Loads on the arm"
[metadata]
Mass = { value = 2.4, unit = "kg" }
Checked = 2026-11-22
[iteration."job"]
name = 'First'
metadata.Reviewer = "Ada"
)";
constexpr const char* kIgnoreFile = "# what solvers leave\n*.log\nscratch/\n!keep.log\n*.d?t\n";
constexpr const char* kMesh = R"(solid part
facet normal 0 0 1
 outer loop
  vertex 0 0 0
  vertex 1 0 0
  vertex 0 1e0 0
 endloop
endfacet
endsolid part
)";

constexpr std::string_view kWork = "work/";

}  // namespace

std::ostream& operator<<(std::ostream& stream, const FileFormat& format) {
    return stream << format.name;
}

const std::vector<FileFormat>& AllFileFormats() {
    using enum DamagedReading;
    static const std::vector<FileFormat> formats = {
        {"ProjectFile", "work/p.kvp", AsSound, "", {{"tree", "FILE"}, {"export", "FILE"}}, "Import"},
        {"Database", "work/s.db", AsSound, "", {{"fetch", "KEY", "--db", "FILE"}}, "Store"},
        {"Document", "given/document.json", AsText},
        {"DocumentOfAPart", "given/other.json", AsText},
        {"Answer", "given/answer.json", AsText},
        {"Description", "given/studies/korvane.toml", AsFarAsItGoes, kDescriptionFile},
        {"IgnoreRules", "given/studies/.korvaneignore", AsFarAsItGoes, kIgnoreFile},
        {"Mesh", "given/studies/part.stl", AsFarAsItGoes, kMesh},
    };
    return formats;
}

bool FileFormat::IsReadBy(const ProgramCommand& command) const {
    const bool isThere = !place.starts_with(kWork) || command.HasFile();
    // The directory behind this switch may be read, but only the files in it that an input names are.
    const auto named = std::ranges::find(command.arguments, "--files-in");
    return isThere && std::ranges::any_of(command.arguments, [&](const std::string& argument) {
               const bool isOnlyAllowed = named != command.arguments.end() && &argument == &*std::next(named);
               return !isOnlyAllowed && (argument == place || place.starts_with(argument + '/'));
           });
}

std::string FileFormat::Sound() const {
    return place.starts_with(kWork) ? "given/" + place.substr(kWork.size()) : place;
}

std::vector<std::string> FileFormat::Arguments(std::vector<std::string> reading, const std::string& file,
                                               const std::string& key) {
    std::ranges::replace(reading, "FILE", file);
    std::ranges::replace(reading, "KEY", key);
    return reading;
}

const FileFormat& FormatOf(const ProgramCommand& command) {
    const auto found =
        std::ranges::find(AllFileFormats(), std::string(kWork) + command.file, &FileFormat::place);
    if (found == AllFileFormats().end()) {
        throw std::runtime_error("no format has the place of '" + command.file + "'");
    }
    return *found;
}

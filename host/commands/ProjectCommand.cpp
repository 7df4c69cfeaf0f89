#include "ProjectCommand.h"

#include <EmbeddedModel.h>

#include <CLI/CLI.hpp>
#include <vector>

#include "Command.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Text.h"

namespace host {

void AddDryRun(CLI::App& command, bool& isDryRun) {
    command.add_flag("--dry-run", isDryRun, "Say what would be done, and change nothing");
}

void SayDryRun(bool isDryRun, Console& console) {
    if (isDryRun) {
        console.Say("nothing was changed, because of --dry-run");
    }
}

int DoWithProjectFile(const std::string& file, Console& console, const std::function<int()>& work) {
    try {
        return work();
    } catch (const DatabaseError& error) {
        console.Say(Quoted(file) + " " + error.what() + ". Nothing was changed");
        return kFailure;
    }
}

OuString DirectoryOfFile(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(file, error);
    return ToOuString((error ? file : whole).lexically_normal().parent_path());
}

ObjectCounts CountObjects(CAEProject& project) {
    ObjectCounts counts;
    std::vector<CAEProject*> projects;
    const auto count = [&](CAEObject& top) {
        korvane::VisitTree(top, [&](CAEObject& object, int) {
            ++(object.getType() == CAE_FILE ? counts.files : counts.objects);
            if (auto* const inner = dynamic_cast<CAEProject*>(&object)) {
                projects.push_back(inner);
            }
        });
    };
    count(project);
    --counts.objects;
    while (!projects.empty()) {
        const CAEProject& counted = *projects.back();
        projects.pop_back();
        for (CAEFile* const file : korvane::GetProjectFiles(counted)) {
            count(*file);
        }
    }
    return counts;
}

}  // namespace host

#include "ProjectObjects.h"

#include <EmbeddedModel.h>

#include <vector>

namespace host {

std::unique_ptr<CAEProject> CreateSimulationProject(const OuString& name, const OuString& directory) {
    std::unique_ptr<CAEProject> project = korvane::CreateProject(name, directory);
    project->setAdditionalType(kSimulationType);
    return project;
}

void VisitProject(CAEProject& project,
                  const std::function<void(CAEObject& object, const ObjectPlace& place)>& visitor) {
    // Projects whose files are still to be visited.
    std::vector<CAEProject*> projects;
    const auto visit = [&](CAEObject& top, const ObjectPlace& placeOfTop) {
        korvane::VisitTree(top, [&](CAEObject& object, int depth) {
            visitor(object, depth == 0 ? placeOfTop : ObjectPlace{object.getParent(), false});
            if (auto* const inner = dynamic_cast<CAEProject*>(&object)) {
                projects.push_back(inner);
            }
        });
    };
    visit(project, {});
    while (!projects.empty()) {
        const CAEProject& owner = *projects.back();
        projects.pop_back();
        for (CAEFile* const file : korvane::GetProjectFiles(owner)) {
            visit(*file, {&owner, true});
        }
    }
}

ObjectCounts CountObjects(CAEProject& project) {
    ObjectCounts counts;
    VisitProject(project, [&](const CAEObject& object, const ObjectPlace&) {
        ++(object.getType() == CAE_FILE ? counts.files : counts.objects);
    });
    return counts;
}

}  // namespace host

#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <functional>
#include <memory>

/// Projects, and everything that belongs to them.
namespace host {

/// A project as this program makes them: with the name and the directory, the additional type "Simulation",
/// and without objects.
std::unique_ptr<CAEProject> CreateSimulationProject(const OuString& name, const OuString& directory);

/// Where an object hangs: below its parent, or in a project as one of the files that it has beside its
/// children.
struct ObjectPlace {
    /// Null for the project that the visit began with.
    const CAEObject* above = nullptr;
    bool isProjectFile = false;
};

/// Calls the visitor for the project and everything that belongs to it: what hangs below it, the files of
/// every project in it, and what hangs below those. What an object hangs in comes before it, siblings in
/// their order. Needs no stack in proportion to the nesting. The visitor must not change the tree.
void VisitProject(CAEProject& project,
                  const std::function<void(CAEObject& object, const ObjectPlace& place)>& visitor);

struct ObjectCounts {
    /// Objects that are no files, the project itself left out.
    std::size_t objects = 0;
    /// Files, among the children and of the project.
    std::size_t files = 0;
};
ObjectCounts CountObjects(CAEProject& project);

}  // namespace host

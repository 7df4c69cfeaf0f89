#pragma once

#include <CAEProject.h>

#include <cstddef>
#include <functional>
#include <memory>

/// Projects and their objects.
namespace host {

/// The additional type of the projects that this program makes.
inline constexpr const wchar_t* kSimulationType = L"Simulation";

/// A project without objects, with the additional type "Simulation".
std::unique_ptr<CAEProject> CreateSimulationProject(const OuString& name, const OuString& directory);

/// The place of an object: below its parent, or among the files that a project has besides its children.
struct ObjectPlace {
    /// Null for the project that the visit begins with.
    const CAEObject* above = nullptr;
    bool isProjectFile = false;
};

/// Visits the project and everything that belongs to it: the objects below it, the files of every project in
/// it, and the objects below those. An object is visited before what is below it, and siblings in their
/// order. The depth of nesting needs no stack. The visitor must not change the tree.
void VisitProject(CAEProject& project,
                  const std::function<void(CAEObject& object, const ObjectPlace& place)>& visitor);

struct ObjectCounts {
    /// Objects that are not files, the project itself among them.
    std::size_t objects = 0;
    /// Files among the children and files of projects.
    std::size_t files = 0;
};
ObjectCounts CountObjects(CAEProject& project);

}  // namespace host

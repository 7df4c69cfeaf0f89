#pragma once

#include <vector>

class CAEObject;

namespace korvane {

class OwnedObjects;

/// The versions of one object, and whose version it is itself.
struct Versions {
    struct Version {
        int major;
        int minor;
        CAEObject* object;
    };

    /// In the order of creation; a version made in place of another takes its place.
    std::vector<Version> list;
    /// The number of the object's present content.
    int currentMajor = 0;
    int currentMinor = 0;
    /// The object whose list holds this one; null for an object that is not a version.
    CAEObject* versionOf = nullptr;
};

/// Separates an object that is to be destroyed from its versions and from the object whose version it is. Its
/// versions that hang nowhere join the list of what is to be destroyed.
void DissolveVersions(CAEObject& object, OwnedObjects& owner, OwnedObjects& doomed) noexcept;

/// To be called for an object that no longer hangs: a version that has its own object somewhere under it is
/// no longer a version of it, because otherwise each of the two would be part of the other.
void PartFromObjectWithin(CAEObject& detached) noexcept;

}  // namespace korvane

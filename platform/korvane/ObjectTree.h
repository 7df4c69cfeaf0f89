#pragma once

#include <ctime>
#include <memory>
#include <set>
#include <utility>

#include "CAEFile.h"
#include "CAEObject.h"
#include "CAEProject.h"
#include "IdentifierTable.h"

namespace korvane {

/// A list of objects that it owns, linked through the objects themselves.
class OwnedObjects {
public:
    OwnedObjects() = default;
    OwnedObjects(const OwnedObjects&) = delete;
    OwnedObjects& operator=(const OwnedObjects&) = delete;
    ~OwnedObjects();

    CAEObject& Append(std::unique_ptr<CAEObject> object) noexcept;
    /// Takes one object over from the list that owns it, to the end of this one.
    void Take(OwnedObjects& from, CAEObject& object) noexcept;
    void TakeAll(OwnedObjects& from) noexcept;
    CAEObject* First() const noexcept { return first_; }

private:
    void Link(CAEObject& object) noexcept;

    CAEObject* first_ = nullptr;
    CAEObject* last_ = nullptr;
};

/// What all projects of one tree share: the objects, hanging or not, the identifiers, and the look-ups by
/// identifier and by database key. It belongs to the project at the root.
///
/// Objects that hang are known to the look-ups, under the identifier that they had when they came in. Where
/// an identifier is taken then, it stays with the object that has it, and the newcomer is not found.
class ObjectTree {
public:
    /// Takes the root in, which gets the first identifier.
    explicit ObjectTree(CAEProject& root);

    CAEObject* Find(int id) const noexcept { return identifiers_.Find(id); }
    int TakeIdentifier() noexcept { return identifiers_.TakeNext(); }
    int NextIdentifier() const noexcept { return identifiers_.Next(); }
    void SkipIdentifiersBefore(int next) noexcept { identifiers_.SkipBefore(next); }
    /// The lowest identifier of the master assemblies with the key; 0 when there is none.
    int FindMasterAssembly(const OuString& key) const;
    /// Gives the object another database key.
    void SetKey(CAEObject& object, const OuString& key);

    /// Owns the object from now on; it hangs nowhere yet.
    CAEObject& Own(std::unique_ptr<CAEObject> object) noexcept;
    void OwnAll(OwnedObjects& objects) noexcept;
    /// Hangs an object that hangs nowhere after the children of the parent, with everything under it.
    void HangChild(CAEObject& parent, CAEObject& child);
    /// The same after the files of the project.
    void HangFile(CAEProject& project, CAEFile& file);
    /// Hangs a new object, or a new file of the project, and owns it from now on. Where there is no memory
    /// for that, it is destroyed.
    CAEObject& HangNewChild(CAEObject& parent, std::unique_ptr<CAEObject> child);
    CAEFile& HangNewFile(CAEProject& project, std::unique_ptr<CAEObject> file);
    /// Takes an object with everything under it out of the place where it hangs.
    void Unhang(CAEObject& object) noexcept;
    /// Destroys an object that hangs nowhere, everything under it and their versions.
    void Destroy(CAEObject& object) noexcept;
    /// Makes the tree find a hanging object under another identifier. False, with nothing changed, when that
    /// is taken or not positive.
    bool Renumber(CAEObject& object, int id);

    /// Notes the present date and user, or those that were set for this tree.
    void StampCreation(CAEObject& object);
    /// The date and user for objects created from now on; empty texts mean the present ones.
    void SetCreation(const OuString& date, const OuString& userName) noexcept;

private:
    using KeyedId = std::pair<OuString, int>;

    void Enter(CAEObject& top);
    void Leave(CAEObject& top) noexcept;
    void Register(CAEObject& object);
    void Unregister(CAEObject& object) noexcept;

    OwnedObjects objects_;
    IdentifierTable identifiers_;
    /// The registered sub-assemblies and run assemblies that have a key.
    std::set<KeyedId> masterAssemblies_;
    OuString fixedDate_;
    OuString fixedUserName_;
    std::time_t presentSecond_ = -1;
    OuString presentDate_;
};

/// The object above: the parent, or for a file the project that has it; null for a root and what hangs
/// nowhere.
CAEObject* HangsOn(const CAEObject& object) noexcept;
/// Whether `inner` is `outer`, lies under it, or lies under a version of it or of something under it.
bool IsWithin(const CAEObject& inner, const CAEObject& outer) noexcept;
/// The object after this one among everything under `top`: parents first, children before the files of a
/// project. Null after the last. Keeps its place in the objects' own links, so that it needs neither stack
/// nor memory.
CAEObject* NextUnder(const CAEObject& object, const CAEObject& top) noexcept;
/// The first of the files that addFile put into the project; null for other objects too.
CAEObject* FirstFileOf(const CAEObject& object) noexcept;
/// The object as a project; null for other kinds.
CAEProject* AsProject(CAEObject& object) noexcept;

}  // namespace korvane

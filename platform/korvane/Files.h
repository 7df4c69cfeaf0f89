#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "CAEObject.h"

namespace korvane {

/// The files attached to one object, by identifier, each once, in the order in which they were first
/// attached, and their roles. An identifier is looked for one by one among few files, through an index among
/// many.
class AttachedFiles {
public:
    struct File {
        int id;
        bool isMesh;
        bool isCustom;
    };

    AttachedFiles() = default;
    AttachedFiles(const AttachedFiles& other);
    AttachedFiles& operator=(const AttachedFiles&) = delete;

    /// Null when no file with the identifier is attached.
    const File* Find(int id) const;
    /// The attached file with the identifier; attached now, without a role, when it was not.
    File& FindOrAttach(int id);
    const std::vector<File>& Files() const noexcept { return files_; }

    /// The current file of each role that only one file has; 0 for none.
    int cadFile = 0;
    int graphicFile = 0;
    int activeMesh = 0;
    int feRepresentation = 0;

private:
    using Index = std::unordered_map<int, std::size_t>;

    std::size_t PositionOf(int id) const;

    std::vector<File> files_;
    /// Made by the first look-up among many files, a copy's own as well.
    mutable std::unique_ptr<Index> index_;
};

/// What the role operations of parts, sub-assemblies and run assemblies come to; statuses as theirs.
int SetCadFile(CAEObject& object, int fileId);
int SetGraphicFile(CAEObject& object, int fileId);
int AttachMesh(CAEObject& object, int fileId);
int SetActiveMesh(CAEObject& object, int fileId);
int SetFeRepresentation(CAEObject& object, int fileId);

}  // namespace korvane

#pragma once

#include <CAEProject.h>

#include <vector>

#include "DirectoryTree.h"

namespace host {

/// A file of a study, with the directory that it lies in.
struct StudyFile {
    const ScannedDirectory* directory;
    const ScannedFile* file;
    /// The object that stands for it already, 0 for none.
    int identifier;
};

/// Makes a study of the files below the parent: parts, iterations and custom files (DirectoryReader.h says
/// which file becomes what). `directory` gives it its name, and `files` are those of it and of directories
/// below.
CAEObject& AddStudy(CAEObject& parent, const ScannedDirectory& directory, const std::vector<StudyFile>& files,
                    CAEProject& project);

}  // namespace host

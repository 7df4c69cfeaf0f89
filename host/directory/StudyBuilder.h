#pragma once

#include <CAEProject.h>

#include <vector>

#include "DirectoryTree.h"

namespace host {

/// A file of a study, and the directory that it is in.
struct StudyFile {
    const ScannedDirectory* directory;
    const ScannedFile* file;
    /// The identifier of its object, if it has one already, otherwise 0.
    int identifier;
};

/// Creates a study below the parent from the files: parts, iterations and custom files (DirectoryReader.h
/// says what each file becomes). The study has the name of `directory`; `files` are in it or in directories
/// below it.
CAEObject& AddStudy(CAEObject& parent, const ScannedDirectory& directory, const std::vector<StudyFile>& files,
                    CAEProject& project);

}  // namespace host

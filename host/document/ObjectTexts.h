#pragma once

#include <CAEFile.h>
#include <CAEProject.h>

/// The texts of objects, which the object model fills in, as values.
namespace host {

inline OuString NameOf(const CAEObject& object) {
    OuString name;
    object.getName(name);
    return name;
}

inline OuString DateOf(const CAEObject& object) {
    OuString date;
    object.getCreatedDate(date);
    return date;
}

inline OuString CreatorOf(const CAEObject& object) {
    OuString creator;
    object.getCreatedUserName(creator);
    return creator;
}

inline OuString PathOf(const CAEFile& file) {
    OuString path;
    file.getFullPathName(path);
    return path;
}

inline OuString DirectoryOf(const CAEProject& project) {
    OuString directory;
    project.getDirectory(directory);
    return directory;
}

}  // namespace host

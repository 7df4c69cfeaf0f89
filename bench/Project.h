#pragma once

#include <EmbeddedModel.h>

#include <memory>
#include <string>

/// The project that everything is measured with, the same one every time: objects of every kind that hangs
/// below a project, eight below each, with four metadata entries (two of them with a unit) and a database
/// key; thirteen files to twenty objects; one name in a hundred with characters beyond ASCII. Identifiers and
/// memory are in the order of the tree, as in a project that was read or imported.
///
/// No text has a slash: other JSON libraries write it without an escape, and texts are compared byte for
/// byte.
std::unique_ptr<CAEProject> MakeProject(int objects);

/// A project without objects that has what a host gives a new one.
std::unique_ptr<CAEProject> MakeEmptyProject();

/// Gives the objects of such a project the database keys that MakeProject gives them, and their files none.
void ResetKeys(CAEProject& project);

inline constexpr const wchar_t* kDirectory = L"/studies/";

#pragma once

#include <CAEProject.h>

#include <memory>

namespace bench {

/// A project with this many objects besides itself, always the same: all kinds, eight children per parent,
/// 0.65 files and four metadata entries per object, two of these with a unit, and one name in a hundred
/// beyond ASCII. No object has a key.
std::unique_ptr<CAEProject> MakeBenchProject(int objects);

}  // namespace bench

#pragma once

#include <string>

#include "InputLines.h"
#include "ModelRecorder.h"

namespace host {

/// Continues with the lines of another file. Returns false if it cannot be read: then the model says that its
/// nodes and elements are missing.
bool IncludeFile(const std::string& name, InputLines& lines, ModelRecorder& model);

}  // namespace host

#pragma once

#include <CAEObject.h>

#include <string>
#include <vector>

#include "Field.h"
#include "host/system/Console.h"

namespace host {

/// The names of all metadata entries in the tree, each once, in the order in which they occur. Names that
/// differ in letter case only are one.
std::vector<std::string> MetadataNames(CAEObject& root);

/// The names in quotation marks, the first ten of them: `'Mass', 'Material' and 3 more`.
std::string ListNames(const std::vector<std::string>& names);

/// Says of each field that is a metadata entry which no object has, and what may have been meant. `input` is
/// what the user called the tree.
void SayUnknownNames(CAEObject& root, const std::vector<Field>& fields, const std::string& input,
                     Console& console);

}  // namespace host

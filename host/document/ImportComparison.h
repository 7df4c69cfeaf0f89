#pragma once

#include <CAEProject.h>
#include <libjson.h>

#include <cstddef>

#include "ImportReport.h"

namespace host {

/// How much the target of an import and its project had before it.
struct BeforeImport {
    explicit BeforeImport(CAEObject& target);
    std::size_t children;
    std::size_t files;
};

/// Compares a document with what its import onto the target made of it and adds that to the report. Members
/// are followed in the order in which the import follows them, so that each element of the document meets the
/// object or file that was made for it.
void CompareImport(const JSONNode& document, CAEObject& target, const BeforeImport& before,
                   ImportReport& report);

}  // namespace host

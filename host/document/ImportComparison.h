#pragma once

#include <CAEProject.h>
#include <libjson.h>

#include <cstddef>

#include "ImportReport.h"

namespace host {

/// The numbers of children and files that the target of an import and its project have before it.
struct BeforeImport {
    explicit BeforeImport(CAEObject& target);
    std::size_t children;
    std::size_t files;
};

/// Compares a document with what its import onto the target created, and adds that to the report. The members
/// are followed in the order of the import, so that each element meets the object or file that was created
/// from it.
void CompareImport(const JSONNode& document, CAEObject& target, const BeforeImport& before,
                   ImportReport& report);

}  // namespace host

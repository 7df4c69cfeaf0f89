#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "Export.h"
#include "Progress.h"

class CAEObject;

namespace korvane::exchange {

/// Which children an export writes, at every level.
enum class ExportMode {
    kEverything,
    /// Only files.
    kProject,
    /// Everything but iteration models.
    kStudy,
};

enum class Layout { kCompact, kIndented };

struct WriteOptions {
    ExportMode mode = ExportMode::kEverything;
    Layout layout = Layout::kCompact;
    /// Asked before the first object, and then every few hundred objects and files.
    ProgressCallback progress = {};
};

/// What was written.
struct WriteReport {
    /// Object nodes, the root among them, and file records.
    std::size_t objects = 0;
    std::size_t files = 0;
    std::size_t bytes = 0;
};

/// Takes the text of a document, page by page. A page lives for the time of the call. What it throws ends the
/// writing and reaches the caller.
using DocumentSink = std::function<void(std::string_view page)>;

/// Writes the document of the object, with everything below it, into the sink: the bytes of
/// JsonSerializer::GetJson, written compactly or indented, in the same order of calls into the object model.
/// The mode belongs to this call; calls with different modes may run at once on trees of their own.
///
/// With the embedded JSON library, pages have 16 KiB and memory does not grow with the document; with an
/// installed one, which makes a whole document first, the sink gets one page. Throws Stopped where the
/// callback stopped it (the sink has the beginning of the text then), std::bad_alloc, and what the object
/// model or the sink throws.
KORVANEEXCHANGE_API WriteReport WriteDocument(CAEObject& object, const WriteOptions& options,
                                              const DocumentSink& sink);

}  // namespace korvane::exchange

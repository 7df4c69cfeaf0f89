#pragma once

#include <array>
#include <cstddef>

#include "DocumentSink.h"
#include "ExportMode.h"
#include "ObjectModel.h"

class DocumentWriter;

/// Writes the object's document into the sink: the bytes that the node of JsonSerializer::GetJson writes, in
/// the same order of calls into the object model. Without an object, the document has only its last member.
///
/// Where the JSON library writes text without nodes, the sink gets pages of 16 KiB, and the memory used does
/// not depend on the length of the document: only what the object model hands out for the objects on the way
/// from the root to the present one (lists of children and files) is kept, and 20 KiB. An installed JSON
/// library makes the whole document first, and the sink gets its text as one piece.
void WriteDocument(CAEObject* object, ExportMode mode, DocumentSink& sink);

/// Writes what the root of the object's document holds.
void WriteRootMembers(CAEObject* object, ExportMode mode, DocumentWriter& out);

/// Collects a document's text, which is ASCII, as a wide one.
class WideText final : public DocumentSink {
public:
    void Write(const char* text, std::size_t length) override;

    /// The text so far, which is empty then.
    OuString Take();

private:
    void Append(const char* text, std::size_t length);

    /// What is widened at a time stays in the processor's innermost cache.
    static constexpr std::size_t kMostWidened = 1024;

    OuString text_;
    std::array<wchar_t, kMostWidened> widened_{};
};

#pragma once

#include <string_view>

/// Keeps a document that the running test made, for the test `documents.schema`, which checks all of them
/// against docs/document.schema.json when the programs that make them have run. Each goes to a file of its
/// own, named after the test and numbered.
///
/// The text must be a whole document as JsonSerializer writes it, its root with "subType", compact or
/// indented; nested no deeper than a thousand levels, or the check takes minutes. The program must have been
/// declared with korvanejson_test(... DOCUMENTS). A text that cannot be written fails the running test.
void SaveDocument(std::string_view text);

#pragma once

#include "PageContent.h"
#include "PageNumbers.h"
#include "PageText.h"

namespace host {

/// Writes the members of a file, and of an object, as the scripts of the page read them, without the braces
/// around them.
void AddFileRecord(PageText& text, PageNumbers& numbers, const PageFile& shown);
void AddObjectRecord(PageText& text, PageNumbers& numbers, const PageContent& content,
                     const PageObject& shown);

}  // namespace host

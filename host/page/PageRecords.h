#pragma once

#include "PageContent.h"
#include "PageText.h"

namespace host {

/// Writes the members of a file, and of an object, as the scripts of the page read them, without the braces
/// around them.
void AddFileRecord(PageText& text, const PageFile& shown);
void AddObjectRecord(PageText& text, const PageContent& content, const PageObject& shown);

}  // namespace host

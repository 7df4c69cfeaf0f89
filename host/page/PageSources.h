#pragma once

#include <string_view>

/// The files of web/ as the build puts them into the program, with the hashes by which a page's content
/// security policy allows them.
namespace host::page {

extern const std::string_view kFrame;
extern const std::string_view kStyle;
extern const std::string_view kStyleHash;
extern const std::string_view kScript;
extern const std::string_view kScriptHash;
/// What shows models; empty if the program was built without it.
extern const std::string_view kView;
extern const std::string_view kViewHash;

}  // namespace host::page

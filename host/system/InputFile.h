#pragma once

#include <filesystem>
#include <string>
#include <system_error>

/// Reading whole texts.
namespace host {

/// Reads the whole file; what was read before an error stays in the text. A directory is an error.
std::error_code ReadInputFile(const std::filesystem::path& file, std::string& text);

/// Reads the standard input to its end, byte by byte as it comes.
std::error_code ReadStandardInput(std::string& text);

}  // namespace host

#pragma once

#include <filesystem>
#include <string>
#include <system_error>

/// Reading whole files.
namespace host {

/// Reads the whole file. If there is an error, the text has what was read before. A directory is an error.
std::error_code ReadInputFile(const std::filesystem::path& file, std::string& text);

/// Reads the standard input to its end, without any conversion.
std::error_code ReadStandardInput(std::string& text);

}  // namespace host

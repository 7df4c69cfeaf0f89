#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

/// Reading whole files.
namespace host {

/// The longest texts that are read.
struct InputLimits {
    std::uint64_t most;
    /// Many devices have no end.
    std::uint64_t mostFromDevice = std::uint64_t{1} << 20U;
};

/// 8 GiB, or half of the machine's memory if that is less: what is read needs several times its length.
InputLimits UsualLimits();

/// Whether the error is that a text is longer than the limits allow. Its message then says what to do.
bool IsOverLimit(const std::error_code& error);

/// Reads the whole file. If there is an error, the text has what was read before. A directory is an error,
/// and so is a text that is longer than the limits allow.
std::error_code ReadInputFile(const std::filesystem::path& file, std::string& text,
                              const InputLimits& limits = UsualLimits());

/// Reads the standard input to its end, without any conversion.
std::error_code ReadStandardInput(std::string& text, const InputLimits& limits = UsualLimits());

}  // namespace host

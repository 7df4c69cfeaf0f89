#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace host {

/// The media type of a picture that browsers show, by its name and its first bytes; empty for anything else.
/// Only files whose names are those of pictures are opened.
std::string_view PictureType(const std::filesystem::path& file);

}  // namespace host

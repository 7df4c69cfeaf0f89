#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

/// The whole text of a file.
inline std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (!(text << file.rdbuf())) {
        throw std::runtime_error("cannot read " + path);
    }
    return text.str();
}

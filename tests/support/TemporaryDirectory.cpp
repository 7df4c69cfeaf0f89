#include "support/TemporaryDirectory.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace {

std::filesystem::path FromUtf8(std::string_view name) {
#if defined(_WIN32)
    return std::filesystem::path(std::u8string(name.begin(), name.end()));
#else
    return std::filesystem::path(name);
#endif
}

std::filesystem::path MakeOwnDirectory() {
    const std::filesystem::path folder = std::filesystem::canonical(std::filesystem::temp_directory_path());
    std::random_device random;
    for (;;) {
        std::filesystem::path path = folder / ("korvane-json-test-" + std::to_string(random()));
        if (std::filesystem::create_directory(path)) {
            return path;
        }
    }
}

}  // namespace

TemporaryDirectory::TemporaryDirectory() : path_(MakeOwnDirectory()) {}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryDirectory::operator/(std::string_view name) const {
    return path_ / FromUtf8(name);
}

std::filesystem::path TemporaryDirectory::Write(std::string_view name, std::string_view content) const {
    std::filesystem::path file = *this / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!stream.flush()) {
        throw std::runtime_error("cannot write " + ToUtf8(file));
    }
    return file;
}

std::filesystem::path TemporaryDirectory::MakeDirectory(std::string_view name) const {
    std::filesystem::path directory = *this / name;
    std::filesystem::create_directories(directory);
    return directory;
}

std::string ReadWholeFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + ToUtf8(file));
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

Content ContentOf(const std::filesystem::path& folder) {
    Content content;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::u8string name = entry.path().lexically_relative(folder).generic_u8string();
        content[{name.begin(), name.end()}] = entry.is_regular_file() ? ReadWholeFile(entry.path()) : "";
    }
    return content;
}

std::string ToUtf8(const std::filesystem::path& path) {
#if defined(_WIN32)
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
#else
    return path.native();
#endif
}

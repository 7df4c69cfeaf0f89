#include "FileSystem.h"

#include <algorithm>
#include <iterator>

namespace host {

bool IsBelow(const std::filesystem::path& root, const std::filesystem::path& candidate) {
    const auto [rootEnd, ignored] =
        std::mismatch(root.begin(), root.end(), candidate.begin(), candidate.end());
    // A root like "/" ends with an empty component.
    return rootEnd == root.end() || (std::next(rootEnd) == root.end() && rootEnd->empty());
}

std::filesystem::path FolderOf(const std::filesystem::path& file) {
    std::error_code error;
    std::filesystem::path whole = ResolvePath(file, error);
    if (!error) {
        return whole.parent_path();
    }
    ThrowIfOutOfMemory(error);
    whole = std::filesystem::absolute(file, error);
    ThrowIfOutOfMemory(error);
    std::filesystem::path folder = (error ? file : whole).lexically_normal().parent_path();
    whole = ResolvePath(folder, error);
    ThrowIfOutOfMemory(error);
    return error ? folder : whole;
}

std::filesystem::path FollowToNewFile(std::filesystem::path path) {
    constexpr int kMostLinks = 40;
    for (int count = 0; count < kMostLinks; ++count) {
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error) {
            break;
        }
        path = path.parent_path() / next;
    }
    return path;
}

}  // namespace host

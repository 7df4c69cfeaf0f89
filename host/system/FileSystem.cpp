#include "FileSystem.h"

namespace host {

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

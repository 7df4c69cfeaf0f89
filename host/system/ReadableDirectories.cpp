#include "ReadableDirectories.h"

#include <algorithm>
#include <system_error>

#include "FileSystem.h"
#include "ServerPath.h"

namespace host {
namespace {

using std::filesystem::path;

bool IsBelowAny(const std::vector<path>& directories, const path& file) {
    return std::ranges::any_of(directories, [&](const path& directory) { return IsBelow(directory, file); });
}

/// The full path, of which nothing is looked up.
path WholePath(const path& file) {
    std::error_code error;
    const path whole = std::filesystem::absolute(file, error);
    ThrowIfOutOfMemory(error);
    return (error ? file : whole).lexically_normal();
}

}  // namespace

void ReadableDirectories::Add(const path& directory) {
    std::error_code error;
    path resolved = ResolvePath(directory, error);
    if (!error) {
        resolved_.push_back(std::move(resolved));
        named_.push_back(WholePath(directory));
    }
}

bool ReadableDirectories::Has(const path& resolved) const {
    return IsBelowAny(resolved_, resolved);
}

ReadableDirectories::Found ReadableDirectories::Find(const path& file) const {
    if (IsOnOtherServer(file)) {
        return {.isOutside = true};
    }
    std::error_code error;
    path resolved = ResolvePath(file, error);
    if (!error) {
        return Has(resolved) ? Found{.resolved = std::move(resolved)} : Found{.isOutside = true};
    }
    // What is not there must look the same outside as what is.
    const path whole = WholePath(file);
    return {.isOutside = !Has(whole) && !IsBelowAny(named_, whole)};
}

}  // namespace host

#include "ServerPath.h"

#include <algorithm>
#include <system_error>

#if defined(_WIN32)
#include <set>

#include "FileSystem.h"
#endif
#include "Text.h"

namespace host {
namespace {

#if defined(_WIN32)
std::set<std::string>& AllowedServers() {
    static std::set<std::string> servers;
    return servers;
}

std::string ServerOf(const std::filesystem::path& path) {
    return ServerIn(ToOuString(path).GetAnsiBuffer());
}
#endif

}  // namespace

std::string ServerIn(std::string_view path) {
    constexpr std::string_view kDevices = "//?/";
    std::string text = ToUpperAscii(path);
    std::ranges::replace(text, '\\', '/');
    for (const std::string_view same : {"/?\?/", "//./"}) {
        if (text.starts_with(same)) {
            text.replace(0, same.size(), kDevices);
        }
    }
    constexpr std::string_view kShares = "//?/UNC/";
    if (text.starts_with(kShares)) {
        text.replace(0, kShares.size(), "//");
    }
    if (!text.starts_with("//")) {
        return {};
    }
    const std::size_t share = text.find('/', 2);
    return text.substr(0, share == std::string::npos ? share : text.find('/', share + 1));
}

#if defined(_WIN32)

void AllowServerOf(const std::filesystem::path& named) {
    // A drive can be a share.
    std::error_code error;
    const std::filesystem::path resolved = ResolvePath(named, error);
    for (const std::string& server : {ServerOf(named), error ? std::string() : ServerOf(resolved)}) {
        if (!server.empty()) {
            AllowedServers().insert(server);
        }
    }
}

bool IsOnOtherServer(const std::filesystem::path& path) {
    const std::string server = ServerOf(path);
    return !server.empty() && !AllowedServers().contains(server);
}

#else

void AllowServerOf(const std::filesystem::path&) {}

bool IsOnOtherServer(const std::filesystem::path&) {
    return false;
}

#endif

}  // namespace host

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Paths that name another machine.
///
/// Where Windows looks at `\\server\share\file`, it contacts the server and logs on there in the name of the
/// user. A project file from elsewhere must not bring that about, so the paths in it are looked at on those
/// servers only that the user has named. On Linux no path names a server: what lies on one was mounted
/// before.
namespace host {

/// The server and the share, or the device, that a path names on Windows, as `//SERVER/SHARE` in one spelling
/// for all that mean the same. Empty if it names none.
std::string ServerIn(std::string_view path);

/// From now on, paths on the server on which this one lies may be looked at. The user has named it.
void AllowServerOf(const std::filesystem::path& named);

/// Whether looking at the path would contact a server, or open a device, that the user has not named.
bool IsOnOtherServer(const std::filesystem::path& path);

}  // namespace host

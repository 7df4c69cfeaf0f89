#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

/// The files that the program writes before they take the place of others.
///
/// Their names are random, so that nobody who may write in the same folder can foresee them:
/// `.korvane-json-` with 32 hexadecimal digits and `.tmp`. The process that writes one holds it locked
/// or open. Any other one was left behind by a process that was killed.
namespace host {

/// Bytes that nobody can foresee.
std::array<std::uint8_t, 16> RandomBytes();

/// A new name for a temporary file in the folder.
std::filesystem::path NewTemporaryName(const std::filesystem::path& folder);

/// Whether a file name is one that NewTemporaryName gives.
bool IsTemporaryName(const std::filesystem::path& name);

/// Removes the temporary files in the folder, with their journals, that processes of this user have left
/// behind, and temporary names that a file there still has beside its own. Files that are still being
/// written, files of other users, and files with other names stay. What cannot be removed stays without a
/// word.
void RemoveLeftovers(const std::filesystem::path& folder);

/// An empty temporary file that this process holds, as long as it exists, against RemoveLeftovers: for a
/// library that opens the file by its name. It must outlive what the library has opened, because closing it
/// drops the library's own locks on Linux. If the file cannot be created, that is left for the library to
/// find out.
class HeldTemporaryFile {
public:
    explicit HeldTemporaryFile(const std::filesystem::path& name);
    ~HeldTemporaryFile();
    HeldTemporaryFile(const HeldTemporaryFile&) = delete;
    HeldTemporaryFile& operator=(const HeldTemporaryFile&) = delete;

private:
    std::intptr_t handle_;
};

/// As long as it exists, the file with the name is removed if the user or the system ends the program: by
/// SIGINT, SIGTERM, SIGHUP or SIGQUIT, or by a console event on Windows. The program ends by the signal all
/// the same. A journal that SQLite keeps beside the file is removed with it. Only the first of several
/// at a time does so.
class RemovedOnInterrupt {
public:
    explicit RemovedOnInterrupt(const std::filesystem::path& name);
    ~RemovedOnInterrupt();
    RemovedOnInterrupt(const RemovedOnInterrupt&) = delete;
    RemovedOnInterrupt& operator=(const RemovedOnInterrupt&) = delete;

private:
    bool isFirst_;
};

}  // namespace host

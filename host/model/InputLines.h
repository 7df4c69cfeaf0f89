#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "ModelFile.h"
#include "SolverModel.h"

namespace host {

/// The name of an included file without quotes, and with slashes as this platform's paths have them.
std::string FileReference(std::string_view text);

/// The lines of a file and of those that it includes, one after another.
class InputLines {
public:
    explicit InputLines(const ModelLimits& limits);

    /// Begins with this file. Returns an error if it cannot be read.
    std::error_code Open(const std::filesystem::path& file);

    /// The next line without its end. It is valid until the next call. Returns false at the end, and after
    /// the reading was stopped.
    bool Next(std::string_view& line);

    /// Continues with the lines of another file, then with those behind. Returns false if there is no such
    /// file that may be read.
    bool Include(const std::string& name);

    /// Leaves out the other lines of the file of the last line, or of all files.
    void SkipFile();
    void SkipAll() { files_.clear(); }

    /// How many files are open: that of the last line, and those that include it.
    std::size_t Depth() const { return files_.size(); }

    /// The file and the line, for messages: `mesh.inp:12`.
    std::string Place() const;

    /// Why the reading stopped before the end; empty if it did not.
    const std::string& StopReason() const { return stopReason_; }

private:
    bool IsTimeOver();
    std::error_code Push(const std::filesystem::path& resolved);
    bool MayInclude(const std::filesystem::path& resolved) const;
    void Stop(const std::string& reason);

    const ModelLimits& limits_;
    ModelDeadline deadline_;
    std::filesystem::path root_;
    std::filesystem::path directory_;
    std::vector<std::unique_ptr<ModelFile>> files_;
    std::string stopReason_;
};

}  // namespace host

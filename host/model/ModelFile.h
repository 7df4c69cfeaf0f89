#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include "SolverModel.h"

namespace host {

/// The time that the reading of a model may take.
class ModelDeadline {
public:
    explicit ModelDeadline(const ModelLimits& limits) : limits_(limits), end_(limits.now() + limits.budget) {}

    bool IsOver() const { return limits_.now() >= end_; }

private:
    const ModelLimits& limits_;
    ModelLimits::Clock::time_point end_;
};

inline constexpr const char* kTimeIsOver = "the time for reading it was over";

/// A file that a model is read from: its lines, its bytes, or first the ones and then the others. It is read
/// in blocks of one size, and of a line or so many bytes no more is in memory than the file has.
class ModelFile {
public:
    enum class Content { Text, Any };

    /// Text ends the reading where a byte is zero.
    ModelFile(const ModelDeadline& deadline, Content content) : deadline_(deadline), content_(content) {}

    /// The path must be one without links. Returns an error if the file cannot be read.
    std::error_code Open(const std::filesystem::path& resolved);

    const std::filesystem::path& Path() const { return path_; }
    /// The size when it was opened.
    std::uint64_t Size() const { return size_; }

    /// The next line without its end, the next bytes, and what comes next, which is less than so many bytes
    /// at the end of the file. They are valid until the next call. Next and NextLine return false at the end,
    /// and after the reading was stopped.
    bool NextLine(std::string_view& line);
    bool Next(std::size_t count, std::string_view& bytes);
    std::string_view Peek(std::size_t count);
    /// Continues behind the next place with the text.
    bool SkipBehind(std::string_view text);

    /// The file and the line, for messages (`mesh.inp:12`), or the byte where the last line or the last bytes
    /// begin, if any bytes were read (`part.stl, byte 84`).
    std::string Place() const;

    /// Why the reading stopped before the end; empty if it did not.
    const std::string& StopReason() const { return stopReason_; }

private:
    bool Refill();

    const ModelDeadline& deadline_;
    Content content_;
    std::filesystem::path path_;
    std::uint64_t size_ = 0;
    std::ifstream stream_;
    std::string buffer_;
    std::size_t begin_ = 0;
    /// How many bytes are in front of the buffer.
    std::uint64_t before_ = 0;
    std::uint64_t line_ = 0;
    bool isReadInBytes_ = false;
    std::uint64_t bytesBegin_ = 0;
    bool isAtEnd_ = false;
    std::string stopReason_;
};

}  // namespace host

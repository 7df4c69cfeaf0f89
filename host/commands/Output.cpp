#include "Output.h"

#include <CAEFile.h>

#include <filesystem>
#include <system_error>

#include "host/directory/OwnFiles.h"
#include "host/document/ProjectObjects.h"
#include "host/system/Database.h"
#include "host/system/FileSystem.h"
#include "host/system/ServerPath.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right) {
    std::error_code error;
    if (std::filesystem::exists(left, error)) {
        return std::filesystem::is_regular_file(left, error) &&
               std::filesystem::equivalent(left, right, error);
    }
    return WouldBeSameFile(left, right);
}

/// Whether the file is neither empty nor a document, an answer, a page or a plot of this program, so that
/// none of these must replace it. What is in a file that cannot be read is not known.
bool HasOtherContent(const std::filesystem::path& file) {
    FileSample sample;
    if (ReadSample(file, 4096, 0, sample)) {
        return true;
    }
    const OwnFile own = OwnFileOf(sample.head);
    return !sample.head.empty() && (own == OwnFile::None || own == OwnFile::Database);
}

void SayNotReplaced(const std::string& file, const std::string& reason, Console& console) {
    console.Say("cannot write " + Quoted(file) + ": " + reason +
                ". Nothing was changed; give another file with -o");
}

constexpr const char* kFileOfProject = "it is a file of the project, not a document, a page or a plot";

/// Whether it is a file in the directory, at any depth, with other content.
bool IsFileOfProject(const std::filesystem::path& file, const std::filesystem::path& directory) {
    std::error_code error;
    if (!std::filesystem::is_directory(directory, error) || !std::filesystem::is_regular_file(file, error)) {
        return false;
    }
    const std::filesystem::path root = ResolvePath(directory, error);
    if (error) {
        return false;
    }
    const std::filesystem::path whole = ResolvePath(file, error);
    const std::filesystem::path relative = whole.lexically_relative(root);
    return !error && !relative.empty() && *relative.begin() != ".." && HasOtherContent(whole);
}

}  // namespace

std::string CompactText(const JSONNode& document) {
    const auto text = document.write();
    std::string line(text.c_str(), text.size());
    line += '\n';
    return line;
}

bool IsReplaceable(const std::string& file, const std::vector<std::string>& inputs, Console& console) {
    if (file == kStandardStream) {
        return true;
    }
    const std::filesystem::path target = PathFromUtf8(file);
    std::string reason;
    for (const std::string& input : inputs) {
        if (input != kStandardStream && IsSameFile(target, PathFromUtf8(input))) {
            reason = "the command itself works on that file";
        } else if (IsFileOfProject(target, PathFromUtf8(input))) {
            reason = kFileOfProject;
        }
    }
    std::error_code ignored;
    if (reason.empty() && IsDatabaseFile(target, ignored)) {
        reason = "it is a database";
    }
    if (reason.empty()) {
        return true;
    }
    SayNotReplaced(file, reason, console);
    return false;
}

bool IsReplaceableIn(CAEProject& project, const std::string& file, Console& console) {
    const std::filesystem::path target = PathFromUtf8(file);
    std::error_code error;
    if (file == kStandardStream || !std::filesystem::is_regular_file(target, error) ||
        !HasOtherContent(target)) {
        return true;
    }
    bool isFileOfProject = false;
    VisitProject(project, [&](const CAEObject& object, const ObjectPlace&) {
        if (const auto* const known = dynamic_cast<const CAEFile*>(&object);
            known != nullptr && !isFileOfProject) {
            OuString path;
            known->getFullPathName(path);
            isFileOfProject = !path.IsEmpty() && !IsOnOtherServer(ToPath(path)) &&
                              std::filesystem::equivalent(target, ToPath(path), error);
        }
    });
    if (isFileOfProject) {
        SayNotReplaced(file, kFileOfProject, console);
    }
    return !isFileOfProject;
}

std::optional<std::filesystem::path> PathOfOutput(const std::string& file) {
    if (file == kStandardStream) {
        return PathOfStandardOutput();
    }
    std::error_code error;
    std::filesystem::path path = ResolvePath(PathFromUtf8(file), error);
    return error ? std::nullopt : std::optional(path);
}

bool WriteOutput(const std::string& file, std::string_view text, Console& console) {
    if (file == kStandardStream) {
        return WriteToStandardOutput(text, console);
    }
    return WriteOutput(
        file, [text](const WritePiece& write) { return write(text); }, console);
}

bool WriteOutput(const std::string& file, const WriteText& write, Console& console) {
    if (file == kStandardStream) {
        std::string text;
        // Memory takes every piece.
        static_cast<void>(CollectText(write, text));
        return WriteToStandardOutput(text, console);
    }
    const std::filesystem::path target = PathFromUtf8(file);
    const std::error_code error = WriteOutputFile(target, write);
    if (!error || error == std::errc::broken_pipe) {
        return true;
    }
    std::error_code ignored;
    const bool isFile = std::filesystem::is_regular_file(target, ignored);
    console.Say("cannot write " + Quoted(file) + ": " + error.message() +
                (isFile ? ". The old file was kept" : "") +
                ". Give another file with -o, or check its directory, the free space and the permissions");
    return false;
}

bool WriteToStandardOutput(std::string_view text, Console& console) {
    const std::error_code error = WriteAll(Stream::Output, text);
    if (!error || error == std::errc::broken_pipe) {
        return true;
    }
    console.Say("cannot write to the standard output: " + error.message());
    return false;
}

}  // namespace host

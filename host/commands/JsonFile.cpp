#include "JsonFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "Command.h"
#include "ProjectInput.h"
#include "host/system/Database.h"
#include "host/system/FileSystem.h"
#include "host/system/OutputFile.h"
#include "host/system/Text.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

namespace host {
namespace {

constexpr const char* kStandardStream = "-";

std::error_code ReadStandardInput(std::string& text) {
#if defined(_WIN32)
    static_cast<void>(::_setmode(::_fileno(stdin), _O_BINARY));
#endif
    std::array<char, 65536> buffer{};
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), stdin)) > 0) {
        text.append(buffer.data(), count);
    }
    return std::ferror(stdin) != 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
}

std::error_code ReadFile(const std::filesystem::path& file, std::string& text) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (error) {
        return error;
    }
    if (std::filesystem::is_directory(status)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 65536> buffer{};
    while (stream) {
        stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        text.append(buffer.data(), static_cast<std::size_t>(stream.gcount()));
    }
    const bool isWhole = stream.eof() && !stream.bad();
    return isWhole ? std::error_code() : std::error_code(errno != 0 ? errno : EIO, std::generic_category());
}

bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right) {
    std::error_code error;
    if (std::filesystem::exists(left, error)) {
        return std::filesystem::is_regular_file(left, error) &&
               std::filesystem::equivalent(left, right, error);
    }
    return WouldBeSameFile(left, right);
}

/// Whether it is a file somewhere below the directory that holds something, but no document.
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
    FileSample sample;
    if (error || relative.empty() || *relative.begin() == ".." || ReadSample(whole, 4096, 0, sample)) {
        return false;
    }
    const std::string_view text = Trim(sample.head);
    return !text.empty() && text.front() != '{';
}

}  // namespace

std::string InputName(const std::string& file) {
    return file == kStandardStream ? "the standard input" : Quoted(file);
}

std::optional<JSONNode> ReadJson(const std::string& file, Console& console) {
    console.ShowProgress("Reading the document", 0, 0);
    std::string text;
    const std::error_code error =
        file == kStandardStream ? ReadStandardInput(text) : ReadFile(PathFromUtf8(file), text);
    if (error) {
        console.Say("cannot read " + InputName(file) + ": " + error.message() +
                    ". Give a JSON document that you may read");
        return std::nullopt;
    }
    try {
        return libjson::parse(json_string(text.data(), text.size()));
    } catch (const std::invalid_argument& fault) {
        console.Say("cannot read " + InputName(file) + ": " + fault.what() + ". Nothing was changed");
        return std::nullopt;
    }
}

bool IsImportable(const JSONNode& document, const std::string& file, Console& console) {
    std::string reason;
    if (document.type() != JSON_NODE) {
        reason = "it is no object node";
    } else if (const auto type = document.find("type"); type == document.end()) {
        reason = "its root has no \"type\"";
    } else if (type->as_string().c_str()[0] == '\0') {
        reason = "its root's \"type\" is empty";
    }
    if (reason.empty()) {
        return true;
    }
    console.Say("cannot use " + InputName(file) + ": " + reason +
                ", and nothing is imported of such a document. Nothing was changed");
    return false;
}

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
            reason = "the command works on that file itself";
        } else if (IsFileOfProject(target, PathFromUtf8(input))) {
            reason = "it is a file of the project and no document";
        }
    }
    std::error_code ignored;
    if (reason.empty() && IsDatabaseFile(target, ignored)) {
        reason = "a database lies there";
    }
    if (reason.empty()) {
        return true;
    }
    console.Say("cannot write " + Quoted(file) + ": " + reason +
                ". Nothing was changed; give another file with -o");
    return false;
}

bool WriteOutput(const std::string& file, std::string_view text, Console& console) {
    if (file == kStandardStream) {
        return WriteToStandardOutput(text, console);
    }
    const std::filesystem::path target = PathFromUtf8(file);
    const std::error_code error = WriteOutputFile(target, text);
    if (!error || error == std::errc::broken_pipe) {
        return true;
    }
    std::error_code ignored;
    const bool isFile = std::filesystem::is_regular_file(target, ignored);
    console.Say("cannot write " + Quoted(file) + ": " + error.message() +
                (isFile ? ". The file is as it was" : "") +
                ". Give another file with -o, or make room and permission for this one");
    return false;
}

}  // namespace host

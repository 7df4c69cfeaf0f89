#include "ProjectInput.h"

#include <utility>

#include "ExitStatus.h"
#include "host/directory/DirectoryReader.h"
#include "host/directory/SelectedPart.h"
#include "host/document/DocumentFile.h"
#include "host/document/DocumentImport.h"
#include "host/document/ReportText.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Database.h"
#include "host/system/FileSystem.h"
#include "host/system/Phase.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::string_view kExtension = ".KVP";

std::optional<OpenedProject> OpenProjectFile(const std::string& name, Console& console) {
    try {
        const Phase phase(console, "reading " + Quoted(name));
        return OpenedProject{ReadProjectFile(PathFromUtf8(name), console), 0};
    } catch (const DatabaseError& error) {
        console.Say(Quoted(name) + " " + error.what());
        return std::nullopt;
    }
}

std::optional<OpenedProject> OpenDirectory(const InputOptions& options,
                                           const std::optional<std::filesystem::path>& leftOut,
                                           Console& console) {
    const std::string& name = options.input;
    DirectoryReading reading =
        ReadDirectory(PathFromUtf8(name), leftOut, console, nullptr, options.selection);
    if (!reading.refusal.empty()) {
        console.Say(reading.refusal);
        return std::nullopt;
    }
    if (reading.project == nullptr) {
        console.Say("cannot read " + Quoted(name) + ": " + reading.error.message() +
                    ". Give a directory of simulation files, or a project file, that you can read");
        return std::nullopt;
    }
    return OpenedProject{std::move(reading.project), reading.unreadableCount, reading.described.problems,
                         std::move(reading.exclusion)};
}

}  // namespace

bool HasProjectFileName(const std::string& name) {
    return ToUpperAscii(name).ends_with(kExtension);
}

InputKind KindOfInput(const std::string& name) {
    if (name == kStandardStream) {
        return InputKind::Document;
    }
    const std::filesystem::path file = PathFromUtf8(name);
    Entry entry;
    if (InspectTarget(file, entry) || entry.type == EntryType::Directory) {
        return InputKind::Directory;
    }
    std::error_code ignored;
    return IsDatabaseFile(file, ignored) || HasProjectFileName(name) ? InputKind::ProjectFile
                                                                     : InputKind::Document;
}

bool IsSelectionPossible(const InputOptions& options, Console& console) {
    const bool isPossible = options.selection.IsEmpty() || KindOfInput(options.input) == InputKind::Directory;
    if (!isPossible) {
        console.Say(InputName(options.input) +
                    " is not a directory, and --study and --exclude choose from a directory. Leave them out");
    }
    return isPossible;
}

std::string SelectionComplaint(const Selection& selection, const std::string& first,
                               const std::string& second) {
    const bool isPossible = selection.IsEmpty() || KindOfInput(first) == InputKind::Directory ||
                            KindOfInput(second) == InputKind::Directory;
    return isPossible ? ""
                      : "--study and --exclude choose from a directory, and neither " + InputName(first) +
                            " nor " + InputName(second) + " is one";
}

Selection SelectionFor(const std::string& name, const Selection& selection) {
    return KindOfInput(name) == InputKind::Directory ? selection : Selection();
}

void KeepComparedPart(const Selection& selection, const ComparedProject& first,
                      const ComparedProject& second) {
    const auto keep = [](const ComparedProject& whole, const ComparedProject& chosen) {
        if (whole.project != nullptr && chosen.project != nullptr &&
            KindOfInput(whole.name) == InputKind::ProjectFile &&
            KindOfInput(chosen.name) == InputKind::Directory) {
            KeepSelectedPart(*whole.project, *chosen.project, chosen.exclusion);
        }
    };
    if (!selection.IsEmpty()) {
        keep(first, second);
        keep(second, first);
    }
}

std::optional<OpenedProject> OpenProject(const InputOptions& options,
                                         const std::optional<std::filesystem::path>& leftOut,
                                         Console& console) {
    if (!IsSelectionPossible(options, console)) {
        return std::nullopt;
    }
    switch (KindOfInput(options.input)) {
        case InputKind::Directory:
            return OpenDirectory(options, leftOut, console);
        case InputKind::ProjectFile:
            return OpenProjectFile(options.input, console);
        case InputKind::Document:
            break;
    }
    console.Say(InputName(options.input) +
                " is neither a directory nor a project file. 'korvane-json import' makes a "
                "project file from a document");
    return std::nullopt;
}

int Finish(const InputOptions& options, const OpenedProject& opened, Console& console) {
    if (opened.unreadableCount == 0 && opened.problemCount == 0) {
        return kSuccess;
    }
    const auto say = [&](std::size_t count, const std::string& what) {
        if (count == 0) {
            return;
        }
        const std::string text =
            FormatCount(count, "entry", "entries") + what + (count == 1 ? "was" : "were") + " left out" +
            (options.isStrict ? "; --strict does not allow that" : "; with --strict that is a failure");
        if (options.isStrict) {
            console.Say(text);
        } else {
            console.Note(text);
        }
    };
    say(opened.unreadableCount, " could not be read or named in a document, and ");
    say(opened.problemCount, " of korvane.toml files ");
    return options.isStrict ? kFailure : kSuccess;
}

OpenedDocument OpenDocument(const std::string& name, Console& console) {
    OpenedDocument opened;
    const std::optional<JSONNode> document = ReadJson(name, console);
    if (!document || !IsImportable(*document, name, console)) {
        return opened;
    }
    const std::filesystem::path file = PathFromUtf8(name);
    opened.project = MakeProjectFor(*document, ToOuString(file.stem()), DirectoryOfFile(file));
    const ImportReport report = ImportDocument(*document, *opened.project, {}, console);
    opened.root = opened.project->getCAEObject(report.root);
    SayLeftOut(report, InputName(name), console);
    return opened;
}

OuString DirectoryOfFile(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(file, error);
    ThrowIfOutOfMemory(error);
    return ToOuString((error ? file : whole).lexically_normal().parent_path());
}

}  // namespace host

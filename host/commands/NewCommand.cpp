#include <memory>

#include "Commands.h"
#include "Complaint.h"
#include "DatabaseCommand.h"
#include "Done.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "ProjectInput.h"
#include "ReportJson.h"
#include "host/document/ProjectObjects.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/FileSystem.h"
#include "host/system/Phase.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct NewOptions {
    std::string first;
    std::string second;
    bool isEmpty = false;
    bool isForced = false;
    bool isStrict = false;
    Selection selection;
    bool isDryRun = false;
    ReportFormat format = ReportFormat::Text;

    const std::string& Directory() const { return first; }
    const std::string& File() const { return isEmpty ? first : second; }
};

/// The project, read from its directory, or without objects.
std::optional<OpenedProject> MakeProject(const NewOptions& options, Console& console) {
    const std::filesystem::path file = PathFromUtf8(options.File());
    if (options.isEmpty) {
        return OpenedProject{CreateSimulationProject(ToOuString(file.stem()), DirectoryOfFile(file)), 0};
    }
    std::error_code isNew;
    const std::filesystem::path old = ResolvePath(file, isNew);
    return OpenProject({options.Directory(), options.isStrict, options.selection},
                       isNew ? std::nullopt : std::optional(old), console);
}

/// What is wrong with the names; empty if nothing is.
std::string NamesComplaint(const NewOptions& options) {
    if (options.first.empty() || options.second.empty() != options.isEmpty) {
        return std::string("give ") +
               (options.isEmpty ? "only a project file with --empty" : "a directory and a project file");
    }
    if (!options.isForced && !HasProjectFileName(options.File())) {
        return Quoted(options.File()) +
               " would become a project file, and its name does not end in .kvp. Give another name, or "
               "--force "
               "if that is meant; 'korvane-json export' writes documents";
    }
    return {};
}

int MakeProjectFile(const NewOptions& options, Console& console) {
    const std::filesystem::path file = PathFromUtf8(options.File());
    std::error_code error;
    const bool isThere = std::filesystem::exists(std::filesystem::symlink_status(file, error));
    if (isThere && !options.isForced) {
        console.Say(
            Quoted(options.File()) +
            " already exists and was not changed. Give another name, or --force to replace the project "
            "in it");
        return kFailure;
    }
    return ChangeDatabase(options.File(), console, [&] {
        // A file of another kind with this name is not replaced: opening it fails.
        std::optional<ProjectFile> old;
        if (isThere) {
            old.emplace(ProjectFile::Open(file, !options.isDryRun, console));
        }
        std::optional<OpenedProject> reading = MakeProject(options, console);
        if (!reading) {
            return kFailure;
        }
        if (!options.isDryRun && old) {
            const Phase phase(console, "writing " + Quoted(options.File()));
            old->Save(*reading->project, console);
        } else if (!old && !options.isDryRun) {
            const Phase phase(console, "writing " + Quoted(options.File()));
            CreateProjectFile(file, *reading->project, console);
        } else if (!old) {
            RefuseNewName(file);
        }
        const int status = ReportDone(options.isDryRun, console, [&] {
            const ObjectCounts counts = CountObjects(*reading->project);
            if (options.format == ReportFormat::Json) {
                const NewReport report{counts, isThere, reading->unreadableCount};
                // The report comes last: where status 3 says that it is missing, it is.
                const int finished = Finish({{}, options.isStrict}, *reading, console);
                const int written = WriteReport(ToJson(report, options.isDryRun), options.isDryRun, console);
                return written == kSuccess ? finished : written;
            }
            console.Note(Quoted(options.File()) + ": " + FormatCount(counts.objects, "object", "objects") +
                         ", the project among them, and " + FormatCount(counts.files, "file", "files") +
                         (isThere ? ", in place of the project that was there" : ""));
            SayDryRun(options.isDryRun, console);
            return Finish({{}, options.isStrict}, *reading, console);
        });
        KeepUntilExit(std::move(reading->project));
        return status;
    });
}

}  // namespace

void AddNewCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<NewOptions>();
    const Command command = AddCommand(
        program, "new", "Create a project file from a directory of studies, or one without objects");
    command
        .AddOption("DIR", options->first,
                   "The directory with the studies, or a project file; omit it with --empty")
        .Type("");
    command.AddOption("PROJECT.kvp", options->second, "The project file to create").Type("");
    command.AddFlag("--empty", options->isEmpty, "Create a project without objects");
    command.AddFlag("--force", options->isForced,
                    "Replace the project in an existing project file, and take a name for the project\n"
                    "file that does not end in .kvp");
    command.AddFlag("--strict", options->isStrict,
                    "End with status 1 if an entry of the directory cannot be read, or has a name\n"
                    "that a document cannot carry, or if a korvane.toml has an entry that cannot be used.\n"
                    "The project file is created without that entry");
    AddSelection(command, options->selection);
    AddDryRun(command, options->isDryRun);
    AddReportFormat(command, options->format);
    AddExamples(
        command,
        "  korvane-json new projects/bracket bracket.kvp\n"
        "  korvane-json new --empty rebuilt.kvp\n",
        "A project file is a SQLite 3 database. It holds everything about the project and its objects,\n"
        "identifiers included, except versions of objects, which no command creates.");
    command.Call([options, &console, &status] {
        if (const std::string complaint = NamesComplaint(*options); !complaint.empty()) {
            console.Say(UsageMessage(complaint, "new"));
            status = kBadUsage;
            return;
        }
        status = MakeProjectFile(*options, console);
    });
}

}  // namespace host

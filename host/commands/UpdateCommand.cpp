#include <algorithm>
#include <memory>
#include <utility>

#include "Commands.h"
#include "DatabaseCommand.h"
#include "Done.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "ProjectInput.h"
#include "ReportJson.h"
#include "host/directory/DirectoryReader.h"
#include "host/directory/ProjectUpdate.h"
#include "host/directory/RelativePath.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/FileSystem.h"
#include "host/system/Phase.h"
#include "host/system/ServerPath.h"
#include "host/system/Text.h"

namespace host {
namespace {

using std::filesystem::path;

struct UpdateOptions {
    std::string directory;
    std::string file;
    bool isRemoving = false;
    bool isForced = false;
    bool isMoved = false;
    bool isStrict = false;
    Selection selection;
    bool isDryRun = false;
    ReportFormat format = ReportFormat::Text;
};

bool IsDirectory(const path& candidate) {
    std::error_code error;
    const bool isDirectory = std::filesystem::is_directory(candidate, error);
    ThrowIfOutOfMemory(error);
    return isDirectory;
}

/// What counts as most of the files of a project.
bool AreMost(std::size_t part, std::size_t all) {
    return 2 * part > all;
}

bool HasMostOf(const KnownFiles& known, const path& directory) {
    const auto count = std::ranges::count_if(known, [&](const auto& file) {
        const path place = directory / PathOfRelative(file.second.path);
        std::error_code error;
        const bool isThere = !IsOnOtherServer(place) && std::filesystem::exists(place, error);
        ThrowIfOutOfMemory(error);
        return isThere;
    });
    return AreMost(static_cast<std::size_t>(count), known.size());
}

/// Whether the directory is the project's: the one that it has, or that one moved. Otherwise says so: reading
/// another directory would make everything in the project missing.
bool IsDirectoryOf(const CAEProject& project, const KnownFiles& known, const UpdateOptions& options,
                   Console& console) {
    OuString text;
    project.getDirectory(text);
    const path own = ToPath(text);
    const path given = PathFromUtf8(options.directory);
    std::error_code error;
    // A server that the user has not named is not asked, and the directory on it is not the one that was
    // given.
    const bool isOnOtherServer = IsOnOtherServer(own);
    if (options.isMoved || (!isOnOtherServer && std::filesystem::equivalent(given, own, error))) {
        return true;
    }
    ThrowIfOutOfMemory(error);
    if ((isOnOtherServer || !IsDirectory(own)) && HasMostOf(known, given)) {
        return true;
    }
    console.Say(
        Quoted(options.file) + " is the project of " + Quoted(own) + ", and " + Quoted(options.directory) +
        " is another directory. Nothing was changed; give that directory, or --moved if it is this one "
        "now");
    return false;
}

/// Whether the update may be saved: a directory that has lost most of its files is more likely to be
/// incomplete than meant. Otherwise says so.
bool IsRemovalMeant(const ProjectUpdate& update, const UpdateOptions& options, Console& console) {
    const std::size_t removed = update.report.removed.files;
    if (options.isForced || !AreMost(removed, update.filesBefore)) {
        return true;
    }
    console.Say("--remove would remove " + std::to_string(removed) + " of the " +
                FormatCount(update.filesBefore, "file", "files") + " that " + Quoted(options.file) +
                " has from its directory, and their identifiers and keys would be lost. Nothing was changed; "
                "look whether " +
                Quoted(options.directory) + " is complete, and give --force if it is");
    return false;
}

int UpdateProjectFile(const UpdateOptions& options, Console& console) {
    return ChangeDatabase(options.file, console, [&] {
        const path name = PathFromUtf8(options.file);
        const path directory = PathFromUtf8(options.directory);
        ProjectFile file = [&] {
            const Phase phase(console, "reading " + Quoted(options.file));
            return ProjectFile::Open(name, !options.isDryRun, console);
        }();
        CAEProject& project = file.Project();
        const KnownFiles known = KnownFilesOf(project);
        if (IsDirectory(directory) && !IsDirectoryOf(project, known, options, console)) {
            return kFailure;
        }
        DirectoryReading reading = ReadDirectory(directory, name, console, &known, options.selection);
        if (reading.project == nullptr) {
            console.Say(reading.refusal.empty()
                            ? "cannot read " + Quoted(options.directory) + ": " + reading.error.message() +
                                  ". Nothing was changed; give the directory of the project"
                            : reading.refusal + ". Nothing was changed");
            return kFailure;
        }
        const bool isJson = options.format == ReportFormat::Json;
        ProjectUpdate update = [&] {
            const Phase phase(console, "updating");
            return UpdateProject(project, *reading.project, options.isRemoving, isJson || console.IsVerbose(),
                                 {reading.described.named, reading.exclusion});
        }();
        if (!IsRemovalMeant(update, options, console)) {
            return kFailure;
        }
        if (!options.isDryRun && update.report.isChanged) {
            const Phase phase(console, "writing " + Quoted(options.file));
            file.SaveWithout(std::move(update.removedFiles), console);
        }
        const int status = ReportDone(options.isDryRun, console, [&] {
            const auto finish = [&] {
                return Finish({{}, options.isStrict},
                              {nullptr, reading.unreadableCount, reading.described.problems}, console);
            };
            if (!isJson) {
                update.report.Say(Quoted(options.file), options.isRemoving, console);
                SayDryRun(options.isDryRun, console);
                return finish();
            }
            // The report comes last: where status 3 says that it is missing, it is.
            const int finished = finish();
            const int written = WriteReport(ToJson(update.report, reading.unreadableCount, options.isDryRun),
                                            options.isDryRun, console);
            return written == kSuccess ? finished : written;
        });
        KeepUntilExit(file.TakeProject());
        KeepUntilExit(std::move(reading.project));
        return status;
    });
}

}  // namespace

void AddUpdateCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<UpdateOptions>();
    const Command command =
        AddCommand(program, "update", "Read a directory of studies again into its project file");
    command.AddOption("DIR", options->directory, "The directory of the project").Required().Type("");
    command.AddOption("PROJECT.kvp", options->file, "The project file").Required().Type("");
    command.AddFlag("--remove", options->isRemoving,
                    "Remove what came from the directory and is not there any more");
    command.AddFlag("--force", options->isForced,
                    "With --remove: remove even most of the files that the project has from the directory");
    command.AddFlag("--moved", options->isMoved,
                    "DIR is the directory of the project now, although it was another one before.\n"
                    "Needed only if the old one is still there, or most of its files are not in DIR");
    command.AddFlag("--strict", options->isStrict,
                    "End with status 1 if an entry of the directory cannot be read, or has a name\n"
                    "that a document cannot carry, or if a korvane.toml has an entry that cannot be used.\n"
                    "The project file is updated without that entry");
    AddSelection(command, options->selection);
    AddDryRun(command, options->isDryRun);
    AddReportFormat(command, options->format);
    AddExamples(
        command,
        "  korvane-json update projects/bracket bracket.kvp --dry-run\n"
        "  korvane-json update projects/bracket bracket.kvp\n"
        "  korvane-json update projects/bracket bracket.kvp --remove\n",
        "What is still there keeps its identifier, its key and its metadata, apart from the entries that\n"
        "come from the directory (Description, Files, Size, Solver, Studies, of iterations also Nodes,\n"
        "Elements, Materials, Steps and Units, and those of korvane.toml). Files are recognised by their\n"
        "path in the directory, objects by their kind and their path. What is new gets new\n"
        "identifiers. What is missing is listed and stays, unless --remove is given; a study, part or file\n"
        "with another path is missing and new. Objects that did not come from the directory, as those of\n"
        "import, stay as they are, and so does what cannot be read now.");
    command.Call([options, &console, &status] { status = UpdateProjectFile(*options, console); });
}

}  // namespace host

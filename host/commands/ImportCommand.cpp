#include <memory>

#include "Commands.h"
#include "DatabaseCommand.h"
#include "Done.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "ProjectInput.h"
#include "ReportJson.h"
#include "StrictChange.h"
#include "host/document/DocumentFile.h"
#include "host/document/DocumentImport.h"
#include "host/document/ReportText.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Phase.h"
#include "host/system/Text.h"

using ReportEntry = korvane::exchange::Entry;
using korvane::exchange::IsLeftOut;
using korvane::exchange::Reason;

namespace host {
namespace {

struct ImportOptions {
    std::string document;
    std::string file;
    std::optional<int> object;
    bool isUpdate = false;
    bool removes = false;
    bool isSame = false;
    bool isStrict = false;
    bool isDryRun = false;
    ReportFormat format = ReportFormat::Text;
};

korvane::exchange::ImportOptions LibraryOptions(const ImportOptions& options) {
    using korvane::exchange::Match;
    return {.match = options.isUpdate ? Match::kByKey : Match::kNever,
            .remove = options.removes,
            .sameRoot = options.isSame};
}

/// Why nothing of the document fitted.
std::string WhyNothingFits(const ImportReport& report) {
    std::string useless = report.hasRoot ? "nothing below its root can be used" : "its root cannot be read";
    for (const ReportEntry& entry : report.entries) {
        const bool isBelow = entry.pointer.starts_with("/children") || entry.pointer.starts_with("/files");
        if (IsLeftOut(entry.reason) && !report.hasRoot) {
            return entry.sentence;
        }
        if (IsLeftOut(entry.reason) && isBelow) {
            return useless + ", the first at '" + Printable(std::string_view(entry.pointer)) +
                   "': " + entry.sentence;
        }
    }
    return useless;
}

/// Whether anything of the document fits the project file. If not, a message says why.
bool Fits(const ImportReport& report, const ImportOptions& options, const std::string& name,
          Console& console) {
    if (report.HasFitted()) {
        return true;
    }
    const std::string why = WhyNothingFits(report) + ". Nothing was changed";
    if (report.Count(Reason::kOtherRoot) != 0) {
        console.Say("cannot update " + name + " with " + InputName(options.document) + ": " + why +
                    "; if the document is the right one all the same, use --same");
    } else {
        console.Say("nothing of " + InputName(options.document) + " fits " + name + ": " + why);
    }
    return false;
}

/// What there is to say of a document and a project file before one is imported into the other.
struct Remarks {
    /// The "type" of the root that the project would get, if it is not a known one.
    std::string unknownType;
    /// Keys of the document that the project has, if everything is added anew.
    std::size_t knownKeys = 0;
};

bool IsTypeAllowed(const Remarks& remarks, const ImportOptions& options, Console& console) {
    if (!options.isStrict || remarks.unknownType.empty()) {
        return true;
    }
    console.Say("the \"type\" of the root of " + InputName(options.document) +
                " is not known, which --strict " + "does not allow: " + Excerpt(remarks.unknownType) +
                ". Nothing was changed; without --strict it becomes the type of the project");
    return false;
}

void SayRemarks(const Remarks& remarks, const ImportOptions& options, const std::string& name,
                Console& console) {
    if (!remarks.unknownType.empty()) {
        console.Note(name + ": the project gets the type of the document's root, which is not known: " +
                     Excerpt(remarks.unknownType));
    }
    if (remarks.knownKeys != 0) {
        console.Note(name + ": " + FormatCount(remarks.knownKeys, "key", "keys") + " of " +
                     InputName(options.document) + (remarks.knownKeys == 1 ? " was" : " were") +
                     " in the project already; 'korvane-json import --update' brings what is there in line "
                     "instead of adding it again");
    }
}

int ImportIntoProjectFile(const ImportOptions& options, Console& console) {
    return ChangeDatabase(options.file, console, [&] {
        const std::optional<JSONNode> document = ReadJson(options.document, console);
        if (!document || !IsImportable(*document, options.document, console)) {
            return kFailure;
        }
        const std::filesystem::path file = PathFromUtf8(options.file);
        std::error_code error;
        std::optional<ProjectFile> old;
        std::unique_ptr<CAEProject> made;
        if (std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
            const Phase phase(console, "reading " + Quoted(options.file));
            old.emplace(ProjectFile::Open(file, !options.isDryRun, console));
        } else {
            made = MakeProjectFor(*document, ToOuString(file.stem()), DirectoryOfFile(file));
        }
        CAEProject& project = old ? old->Project() : *made;
        const std::string name = Quoted(options.file);
        CAEObject* const target = options.object ? project.getCAEObject(*options.object) : &project;
        if (target == nullptr) {
            console.Say("there is no object " + std::to_string(*options.object) + " in " + name +
                        ". Nothing was changed; 'korvane-json tree' lists the objects");
            return kFailure;
        }
        const Remarks remarks = {UnknownProjectType(*document, *target),
                                 old && !options.isUpdate ? CountKnownKeys(*document, project) : 0};
        const ImportReport report = [&] {
            const Phase phase(console, "importing");
            return ImportDocument(*document, *target, LibraryOptions(options), console);
        }();
        // What --strict does not allow is named with its number.
        if ((report.hasRoot && !IsAllowed(report, {options.document, options.isStrict}, console)) ||
            !Fits(report, options, name, console) || !IsTypeAllowed(remarks, options, console)) {
            return kFailure;
        }
        if (!options.isDryRun && old) {
            if (!options.isUpdate || report.HasChanged()) {
                const Phase phase(console, "writing " + Quoted(options.file));
                old->Save(console);
            }
        } else if (!old && !options.isDryRun) {
            const Phase phase(console, "writing " + Quoted(options.file));
            CreateProjectFile(file, project, console);
        } else if (!old) {
            RefuseNewName(file);
        }
        const int status = ReportDone(options.isDryRun, console, [&] {
            const auto sayRemarks = [&] { SayRemarks(remarks, options, name, console); };
            if (options.format == ReportFormat::Json) {
                sayRemarks();
                return WriteReport(korvane::exchange::ToJson(report), options.isDryRun, console);
            }
            (options.isUpdate ? SayUpdate : SayImport)(report, name, console);
            sayRemarks();
            SayDryRun(options.isDryRun, console);
            return kSuccess;
        });
        KeepUntilExit(old ? old->TakeProject() : std::move(made));
        KeepUntilExit(*document);
        return status;
    });
}

}  // namespace

void AddImportCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<ImportOptions>();
    const Command command =
        AddCommand(program, "import", "Rebuild the objects of a document in a project file");
    command.AddOption("DOCUMENT.json", options->document, "The document; - is the standard input")
        .Required()
        .Type("");
    command
        .AddOption("PROJECT.kvp", options->file,
                   "The project file; created if there is none. The files of the document are\n"
                   "expected in its directory then")
        .Required()
        .Type("");
    AddObjectOption(command, options->object,
                    "Import onto the object with this identifier instead of the project;\n"
                    "'korvane-json tree PROJECT.kvp' lists the identifiers. A document of\n"
                    "another kind of object becomes a new object below it: --object 12");
    const Option update =
        command.AddFlag("--update", options->isUpdate,
                        "Bring in line what is there already instead of adding everything again:\n"
                        "objects with the same key, else with the same kind and name in the same\n"
                        "place. What the document lacks stays");
    command
        .AddFlag("--remove", options->removes,
                 "With --update: remove objects that the document lacks, with everything below\n"
                 "them. Metadata entries and files stay")
        .Needs(update);
    command
        .AddFlag("--same", options->isSame,
                 "With --update: the document is of this project, although it has another name and\n"
                 "not its key, or nothing in it is known here")
        .Needs(update);
    AddStrictChange(command, options->isStrict);
    AddDryRun(command, options->isDryRun);
    AddReportFormat(command, options->format);
    AddExamples(command,
                "  korvane-json import bracket.json rebuilt.kvp\n"
                "  korvane-json import --update --dry-run bracket.json rebuilt.kvp\n"
                "  korvane-json fetch PRJ-1-3f9a20 --db server.db | korvane-json import - rebuilt.kvp\n",
                "An update needs the document of the same project: its root has the key of the project, or\n"
                "its name, or no name. With --remove something below the root must be known here as well,\n"
                "unless the root has the key. The document of a single object, such as a study, brings that\n"
                "object in line, wherever it is in the project, if it has its key.");
    command.Call([options, &console, &status] { status = ImportIntoProjectFile(*options, console); });
}

}  // namespace host

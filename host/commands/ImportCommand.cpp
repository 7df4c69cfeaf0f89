#include <CLI/CLI.hpp>
#include <memory>

#include "Commands.h"
#include "DatabaseCommand.h"
#include "Done.h"
#include "ExitStatus.h"
#include "KeepUntilExit.h"
#include "Options.h"
#include "ProjectInput.h"
#include "host/document/DocumentFile.h"
#include "host/document/DocumentImport.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct ImportOptions {
    std::string document;
    std::string file;
    std::optional<int> object;
    bool isDryRun = false;
};

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
        ImportReport report;
        ImportDocument(*document, *target, report, console);
        if (!options.isDryRun && old) {
            old->Save(console);
        } else if (!old && !options.isDryRun) {
            CreateProjectFile(file, project, console);
        } else if (!old) {
            RefuseNewName(file);
        }
        const int status = ReportDone(options.isDryRun, console, [&] {
            report.Say(name, console);
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
    CLI::App& command =
        *program.add_subcommand("import", "Rebuild the objects of a document in a project file");
    command.add_option("DOCUMENT.json", options->document, "The document; - is the standard input")
        ->required()
        ->type_name("");
    command
        .add_option("PROJECT.kvp", options->file,
                    "The project file; created if there is none. The files of the document are\n"
                    "expected in its directory then")
        ->required()
        ->type_name("");
    AddObjectOption(command, options->object,
                    "Import onto the object with this identifier instead of the project;\n"
                    "'korvane-json tree PROJECT.kvp' lists the identifiers. A document of\n"
                    "another kind of object becomes a new object below it: --object 12");
    AddDryRun(command, options->isDryRun);
    AddExamples(command,
                "  korvane-json import bracket.json rebuilt.kvp\n"
                "  korvane-json fetch PRJ-1-3f9a20 --db server.db | korvane-json import - rebuilt.kvp\n");
    command.callback([options, &console, &status] { status = ImportIntoProjectFile(*options, console); });
}

}  // namespace host

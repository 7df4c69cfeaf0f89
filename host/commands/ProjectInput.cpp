#include "ProjectInput.h"

#include "JsonFile.h"
#include "ProjectCommand.h"
#include "host/document/DocumentImport.h"
#include "host/projectfile/ProjectFile.h"
#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::string_view kExtension = ".KVP";

}  // namespace

InputKind KindOfInput(const std::string& name) {
    if (name == "-") {
        return InputKind::Document;
    }
    const std::filesystem::path file = PathFromUtf8(name);
    Entry entry;
    if (InspectTarget(file, entry) || entry.type == EntryType::Directory) {
        return InputKind::Directory;
    }
    std::error_code ignored;
    return IsDatabaseFile(file, ignored) || ToUpperAscii(name).ends_with(kExtension) ? InputKind::ProjectFile
                                                                                     : InputKind::Document;
}

std::unique_ptr<CAEProject> OpenProjectFile(const std::string& name, Console& console) {
    try {
        return ReadProjectFile(PathFromUtf8(name), console);
    } catch (const DatabaseError& error) {
        console.Say(Quoted(name) + " " + error.what());
        return nullptr;
    }
}

OpenedDocument OpenDocument(const std::string& name, Console& console) {
    OpenedDocument opened;
    const std::optional<JSONNode> document = ReadJson(name, console);
    if (!document || !IsImportable(*document, name, console)) {
        return opened;
    }
    const std::filesystem::path file = PathFromUtf8(name);
    opened.project = MakeProjectFor(*document, ToOuString(file.stem()), DirectoryOfFile(file));
    ImportReport report;
    opened.root = ImportDocument(*document, *opened.project, report, console);
    report.notes.SayWithoutNames(InputName(name), console);
    return opened;
}

}  // namespace host

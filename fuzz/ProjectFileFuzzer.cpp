// Reads any bytes as a project file: it is refused, or the project is whole, and the file it is written to
// says the same. The first byte tells whether the others are the file or what stands in its tables.

#include <EmbeddedModel.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "Expect.h"
#include "FuzzedFiles.h"
#include "Trip.h"
#include "host/document/TreePrinter.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectTables.h"
#include "support/ModelBuilders.h"

namespace {

std::string TextOf(CAEProject& project) {
    return std::string(ExportDocument(project).write().c_str());
}

/// What was read can be walked, printed, and written and read again.
void ExpectWhole(CAEProject& project) {
    const std::string before = TextOf(project);
    Expect(!host::PrintTree(project, {}).empty(), "a project is printed");
    const std::filesystem::path copy = PlaceInMemory("copy.kvp");
    RemoveDatabase(copy);
    host::CreateProjectFile(copy, project, Silent());
    const std::unique_ptr<CAEProject> read = host::ReadProjectFile(copy, Silent());
    Expect(TextOf(*read) == before, "a project that is written reads back");
    RemoveDatabase(copy);
}

void ReadAsFile(std::string_view bytes) {
    const std::filesystem::path file = PlaceInMemory("project.kvp");
    RemoveDatabase(file);
    WriteBytes(file, bytes);
    try {
        const std::unique_ptr<CAEProject> project = host::ReadProjectFile(file, Silent());
        ExpectWhole(*project);
    } catch (const host::DatabaseError& refusal) {
        Expect(refusal.what()[0] != '\0', "a refusal has a reason");
    }
    RemoveDatabase(file);
}

constexpr TableColumns kTables[] = {
    {"object",
     {"id", "above", "place", "is_project_file", "kind", "name", "database_key", "link_database_key",
      "created_date", "created_by"}},
    {"project", {"object", "display_name", "additional_type", "directory", "program_reference"}},
    {"file",
     {"object", "path", "path_at_first", "location_type", "type", "format", "is_in_global_frame",
      "is_downloaded"}},
    {"attached_file",
     {"object", "position", "file", "is_cad_file", "is_graphic_file", "is_mesh", "is_active_mesh",
      "is_fe_representation", "is_custom"}},
    {"metadata", {"object", "position", "name", "value", "type", "unit"}},
    {"view_item", {"object", "shown"}},
    {"place", {"object", "directory_from_here"}},
    {"numbering", {"next_id"}},
};

/// A project with something in every table.
std::unique_ptr<CAEProject> MakeExample() {
    std::unique_ptr<CAEProject> project = MakeProject();
    AddTargets(*project);
    CAEObject& part = *project->getCAEObject(2);
    SetMetadata(part, L"Mass", L"1.5", L"kg", L"double");
    for (const _tagFileType type : {CAE_FILE_CAD, CAE_FILE_MESH, CAE_FILE_DECK}) {
        const CAEFile* const file =
            korvane::CreateFile(*project, L"/studies/file.dat", type, CAE_FORMAT_ASCII);
        AttachFile(part, file->getID(), type);
    }
    return project;
}

/// The tables of a project, changed in a few places.
void ReadAsRows(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    const std::unique_ptr<CAEProject> example = MakeExample();
    host::Database database;
    host::CreateProjectTables(database);
    const std::filesystem::path file = PlaceInMemory("project.kvp");
    host::WriteProjectTables(database, {*example, file}, Silent());
    for (int change = 0; change < 8 && bytes.remaining_bytes() > 0; ++change) {
        try {
            database.Run(ChangeOfRow(bytes, kTables).c_str());
        } catch (const host::DatabaseError&) {
            // SQLite itself refuses some rows: a text is not an identifier, and a column is not NULL.
        }
    }
    try {
        const std::unique_ptr<CAEProject> project = host::ReadProjectTables(database, file, Silent());
        ExpectWhole(*project);
    } catch (const host::DatabaseError& refusal) {
        Expect(refusal.what()[0] != '\0', "a refusal has a reason");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // "S" is what a SQLite file begins with.
    if (size > 0 && data[0] == 'S') {
        ReadAsFile({reinterpret_cast<const char*>(data), size});
    } else if (size > 0) {
        ReadAsRows(data + 1, size - 1);
    }
    return 0;
}

// Reads any bytes as a project file: it is refused, or the project is whole, and the file it is written to
// says the same. The first byte tells whether the others are the file or what stands in its tables.

#include <EmbeddedModel.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "Expect.h"
#include "Trip.h"
#include "host/document/TreePrinter.h"
#include "host/projectfile/ProjectFile.h"
#include "host/projectfile/ProjectTables.h"
#include "support/ModelBuilders.h"

namespace {

host::Console& Silent() {
    static host::Console console([](std::string_view) {}, false, &host::Console::Clock::now);
    return console;
}

/// A name in memory, so that nothing waits for a disk.
std::filesystem::path FileName(const char* ending) {
    const std::filesystem::path folder = std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp";
    return folder / ("fuzz-project-file-" + std::to_string(::getpid()) + ending);
}

void Remove(const std::filesystem::path& file) {
    std::error_code ignored;
    for (const char* const ending : {"", "-journal", "-wal", "-shm"}) {
        std::filesystem::remove(file.string() + ending, ignored);
    }
}

std::string TextOf(CAEProject& project) {
    return std::string(ExportDocument(project).write().c_str());
}

/// What was read can be walked, printed, and written and read again.
void ExpectWhole(CAEProject& project) {
    const std::string before = TextOf(project);
    Expect(!host::PrintTree(project, {}).empty(), "a project is printed");
    const std::filesystem::path copy = FileName("-copy.kvp");
    Remove(copy);
    host::CreateProjectFile(copy, project, Silent());
    const std::unique_ptr<CAEProject> read = host::ReadProjectFile(copy, Silent());
    Expect(TextOf(*read) == before, "a project that is written reads back");
    Remove(copy);
}

void ReadAsFile(const std::uint8_t* data, std::size_t size) {
    const std::filesystem::path file = FileName(".kvp");
    Remove(file);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    try {
        const std::unique_ptr<CAEProject> project = host::ReadProjectFile(file, Silent());
        ExpectWhole(*project);
    } catch (const host::DatabaseError& refusal) {
        Expect(refusal.what()[0] != '\0', "a refusal has a reason");
    }
    Remove(file);
}

/// The columns of the tables; the first ones say which row it is.
struct Table {
    const char* name;
    std::array<const char*, 10> columns;
};
constexpr Table kTables[] = {
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

/// A value of a column: mostly a small number, since identifiers, kinds and flags are such.
std::string Value(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 7)) {
        case 0:
            return "NULL";
        case 1:
            return std::to_string(bytes.ConsumeIntegral<std::int64_t>());
        case 2: {
            constexpr const char* kDigits = "0123456789ABCDEF";
            std::string text = "CAST(X'";
            for (const char byte : bytes.ConsumeRandomLengthString(12)) {
                text += kDigits[static_cast<unsigned char>(byte) >> 4U];
                text += kDigits[static_cast<unsigned char>(byte) & 15U];
            }
            return text + "' AS TEXT)";
        }
        default:
            return std::to_string(bytes.ConsumeIntegralInRange(-1, 12));
    }
}

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

/// Changes one row, or adds one, as the bytes say.
std::string Change(FuzzedDataProvider& bytes) {
    const Table& table = bytes.PickValueInArray(kTables);
    const auto end = std::ranges::find(table.columns, nullptr);
    const auto count = static_cast<std::size_t>(end - table.columns.begin());
    const int kind = bytes.ConsumeIntegralInRange(0, 9);
    const std::string row = " WHERE " + std::string(table.columns[0]) + " = " + Value(bytes);
    if (kind == 0) {
        return "DELETE FROM " + std::string(table.name) + row;
    }
    if (kind <= 3) {
        std::string columns;
        std::string values;
        for (std::size_t column = 0; column < count; ++column) {
            columns += (column > 0 ? "," : "") + std::string(table.columns[column]);
            values += (column > 0 ? "," : "") + Value(bytes);
        }
        return "INSERT OR REPLACE INTO " + std::string(table.name) + " (" + columns + ") VALUES (" + values +
               ")";
    }
    const auto column = bytes.ConsumeIntegralInRange<std::size_t>(0, count - 1);
    return "UPDATE OR IGNORE " + std::string(table.name) + " SET " + table.columns[column] + " = " +
           Value(bytes) + row;
}

/// The tables of a project, changed in a few places.
void ReadAsRows(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    const std::unique_ptr<CAEProject> example = MakeExample();
    host::Database database;
    host::CreateProjectTables(database);
    const std::filesystem::path file = FileName(".kvp");
    host::WriteProjectTables(database, {*example, file}, Silent());
    for (int change = 0; change < 8 && bytes.remaining_bytes() > 0; ++change) {
        try {
            database.Run(Change(bytes).c_str());
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
        ReadAsFile(data, size);
    } else if (size > 0) {
        ReadAsRows(data + 1, size - 1);
    }
    return 0;
}

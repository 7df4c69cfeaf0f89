#include "MeshSyntax.h"

#include "host/system/FileSystem.h"
#include "host/system/Text.h"

namespace host {

std::optional<ModelSyntax> MeshSyntaxOf(const std::filesystem::path& file) {
    Entry entry;
    const std::error_code error = InspectTarget(file, entry);
    ThrowIfOutOfMemory(error);
    if (error || entry.type != EntryType::File) {
        return std::nullopt;
    }
    const OuString extension = ToOuString(file.extension());
    // What other meshes begin with, is in no name: many programs write files that end in .msh.
    FileSample sample;
    const std::error_code unread = ReadSample(file, 512, 0, sample);
    ThrowIfOutOfMemory(unread);
    if (!unread && Trim(sample.head).starts_with("$MeshFormat")) {
        return ModelSyntax::Gmsh;
    }
    // Nothing that every such file begins with would tell it from other files.
    if (ToUpperAscii(extension.GetAnsiBuffer()) == ".STL") {
        return ModelSyntax::Stl;
    }
    return std::nullopt;
}

}  // namespace host

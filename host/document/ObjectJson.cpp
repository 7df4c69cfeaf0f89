#include "ObjectJson.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <map>

#include "FileFacts.h"
#include "ObjectLists.h"
#include "ObjectTexts.h"
#include "format/Kinds.h"

namespace host {
namespace {

using korvane::exchange::ToUtf8;

void WriteText(std::string_view name, const OuString& text, JsonText& json) {
    if (!text.IsEmpty()) {
        json.Text(name, ToUtf8(text));
    }
}

void WriteMetadata(const CAEObject& object, JsonText& json) {
    const std::vector<korvane::MetadataValues> entries = korvane::GetMetadata(object);
    if (entries.empty()) {
        return;
    }
    json.OpenObject("metadata");
    for (const korvane::MetadataValues& entry : entries) {
        json.OpenObject(ToUtf8(entry.name));
        json.Text("value", ToUtf8(entry.value));
        WriteText("unit", UnitOf(entry), json);
        json.End();
    }
    json.End();
}

/// The members that a file has wherever it stands.
void WriteFileFacts(const CAEFile& file, JsonText& json) {
    json.Text("type", CAEGetFileTypeName(file.getFileType()));
    json.Text("format", format::NameOfFileFormat(static_cast<format::FileFormat>(file.getFileFormat())));
    WriteText("fullPath", PathOf(file), json);
    const FileOnDisk found = LookUpFile(file);
    if (found.presence == FilePresence::There) {
        json.Number("size", found.size);
    }
    json.Flag("missing", found.presence == FilePresence::Missing);
}

void WriteFiles(const WalkedObject& walked, FilesShown shown, JsonText& json) {
    std::vector<CAEFile*> files = AttachedFilesOf(walked.object);
    const std::map<int, FileRole> roles = RolesOfFiles(walked.object);
    std::erase_if(files, [&](const CAEFile* file) { return !IsShown(shown, roles.at(file->getID())); });
    if (files.empty()) {
        return;
    }
    json.OpenArray("files");
    for (const CAEFile* const file : files) {
        json.OpenObject();
        json.Number("id", static_cast<std::uint64_t>(file->getID()));
        json.Text("name", walked.way.PlaceOf(*file));
        json.Text("role", NameOfRole(roles.at(file->getID())));
        WriteText("key", file->getDBKey(), json);
        WriteFileFacts(*file, json);
        json.End();
    }
    json.End();
}

}  // namespace

void WriteObject(const WalkedObject& walked, FilesShown files, JsonText& json) {
    const CAEObject& object = walked.object;
    json.OpenObject();
    json.Text("kind", CAEObject::getTypeName(object.getType()));
    json.Text("name", ToUtf8(NameOf(object)));
    json.Text("path", walked.Path());
    json.Number("depth", walked.depth);
    json.Number("id", static_cast<std::uint64_t>(object.getID()));
    if (walked.above != nullptr) {
        json.Number("parent", static_cast<std::uint64_t>(walked.above->getID()));
    }
    WriteText("key", object.getDBKey(), json);
    WriteText("created", DateOf(object), json);
    WriteText("creator", CreatorOf(object), json);
    if (const auto* const file = dynamic_cast<const CAEFile*>(&object)) {
        WriteFileFacts(*file, json);
    } else if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
        if (const int shown = korvane::GetReferencedObject(*item); shown > 0) {
            json.Number("shows", static_cast<std::uint64_t>(shown));
        }
    }
    WriteMetadata(object, json);
    WriteFiles(walked, files, json);
    json.End();
}

std::string ObjectListJson(const std::vector<std::string>& objects) {
    JsonText json;
    json.OpenObject();
    json.Number("count", objects.size());
    json.OpenArray("objects");
    for (const std::string& object : objects) {
        json.Element(object);
    }
    json.End();
    json.End();
    return json.Take() + '\n';
}

}  // namespace host

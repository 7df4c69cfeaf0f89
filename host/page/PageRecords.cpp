#include "PageRecords.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <array>
#include <charconv>
#include <map>
#include <string>
#include <string_view>

#include "format/Kinds.h"
#include "host/document/FileFacts.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"
#include "host/query/Quantity.h"

namespace host {
namespace {

using korvane::exchange::ToUtf8;

/// The name, the value and the unit as they are; behind them the number with its unit, and the same number in
/// other units.
void AddEntry(PageText& text, PageNumbers& numbers, const korvane::MetadataValues& entry) {
    text.Add("[");
    text.AddJson(ToUtf8(entry.name));
    text.Add(",");
    text.AddJson(ToUtf8(entry.value));
    text.Add(",");
    text.AddJson(ToUtf8(UnitOf(entry)));
    for (const auto& [unit, number] : numbers.Of(entry)) {
        text.Add(",");
        text.AddJson(unit);
        text.Add("," + FormatNumber(number));
    }
    text.Add("]");
}

/// What every object has, files among them.
void AddHeader(PageText& text, PageNumbers& numbers, const CAEObject& object) {
    text.AddName("id", true);
    text.AddNumber(object.getID());
    text.AddMember("name", ToUtf8(NameOf(object)));
    text.AddMember("key", ToUtf8(object.getDBKey()));
    text.AddMember("created", ToUtf8(DateOf(object)));
    text.AddMember("creator", ToUtf8(CreatorOf(object)));
    bool isFirst = true;
    for (const korvane::MetadataValues& entry : korvane::GetMetadata(object)) {
        if (isFirst) {
            text.AddName("metadata");
        }
        text.Add(isFirst ? "[" : ",");
        isFirst = false;
        AddEntry(text, numbers, entry);
    }
    text.Add(isFirst ? "" : "]");
}

/// The shortest decimal number that is read as this one.
std::string TextOf(float number) {
    std::array<char, 32> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), end};
}

void AddModel(PageText& text, const PageModel& model) {
    const auto addCount = [&text](std::string_view name, std::uint64_t count) {
        text.AddName(name);
        text.AddNumber(static_cast<std::int64_t>(count));
    };
    const auto addCorner = [&text](std::string_view name, const std::array<float, 3>& corner) {
        text.AddName(name);
        text.Add("[" + TextOf(corner[0]) + "," + TextOf(corner[1]) + "," + TextOf(corner[2]) + "]");
    };
    text.Add("{");
    text.AddName("embedded", true);
    text.Add(model.bytes.empty() ? "false" : "true");
    if (model.nodes) {
        addCount("nodes", *model.nodes);
    }
    if (model.elements) {
        addCount("elements", *model.elements);
    }
    text.AddMember("gap", model.gap);
    addCount("points", model.points);
    addCount("triangles", model.triangles);
    addCount("lines", model.lines);
    addCorner("low", model.low);
    addCorner("high", model.high);
    text.Add("}");
}

void AddAttachedFiles(PageText& text, const PageContent& content, CAEObject& object) {
    const std::map<int, FileRole> roles = RolesOfFiles(object);
    bool isFirst = true;
    for (const CAEFile* const file : AttachedFilesOf(object)) {
        if (isFirst) {
            text.AddName("files");
        }
        text.Add(isFirst ? "[[" : ",[");
        isFirst = false;
        text.AddNumber(content.fileOfIdentifier.at(file->getID()));
        text.Add(",");
        text.AddJson(NameOfRole(roles.at(file->getID())));
        text.Add("]");
    }
    text.Add(isFirst ? "" : "]");
}

}  // namespace

void AddFileRecord(PageText& text, PageNumbers& numbers, const PageFile& shown) {
    const CAEFile& file = *shown.file;
    AddHeader(text, numbers, file);
    text.AddMember("type", CAEGetFileTypeName(file.getFileType()));
    text.AddMember("format", format::NameOfFileFormat(static_cast<format::FileFormat>(file.getFileFormat())));
    text.AddMember("place", shown.place);
    text.AddMember("location", ToUtf8(file.m_locationType));
    if (shown.isOutside) {
        text.AddName("outside");
        text.Add("true");
    }
    if (shown.size) {
        text.AddName("size");
        text.AddNumber(static_cast<std::int64_t>(*shown.size));
    }
    text.AddMember("picture", shown.pictureType);
    if (shown.isEmbedded) {
        text.AddName("embedded");
        text.Add("true");
    }
    if (shown.model) {
        text.AddName("model");
        AddModel(text, *shown.model);
    }
}

void AddObjectRecord(PageText& text, PageNumbers& numbers, const PageContent& content,
                     const PageObject& shown) {
    CAEObject& object = *shown.object;
    if (shown.file >= 0) {
        // The rest is said with the files.
        text.AddName("id", true);
        text.AddNumber(object.getID());
        text.AddName("file");
        text.AddNumber(shown.file);
    } else {
        AddHeader(text, numbers, object);
    }
    text.AddMember("kind", CAEObject::getTypeName(object.getType()));
    text.AddName("parent");
    text.AddNumber(shown.parent);
    if (const auto* const project = dynamic_cast<const CAEProject*>(&object)) {
        text.AddMember("type", ToUtf8(project->getAdditionalType()));
    } else if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
        text.AddName("shows");
        text.AddNumber(korvane::GetReferencedObject(*item));
    }
    AddAttachedFiles(text, content, object);
}

}  // namespace host

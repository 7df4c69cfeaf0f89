#include "PageWriter.h"

#include <CAEFunctions.h>
#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <string_view>

#include "Base64.h"
#include "PageSources.h"
#include "PageText.h"
#include "format/Kinds.h"
#include "host/directory/RelativePath.h"
#include "host/document/FileFacts.h"
#include "host/document/ObjectLists.h"
#include "host/document/ObjectTexts.h"
#include "host/system/FileSystem.h"
#include "host/system/InputFile.h"
#include "host/system/Text.h"

namespace host {
namespace {

using korvane::exchange::ToUtf8;

/// A browser reads a block in one go, and must not stop for long.
constexpr std::size_t kObjectsInBlock = 500;
constexpr std::string_view kBlockEnd = "</script>\n";

/// What every object has, files among them.
void AddHeader(PageText& text, const CAEObject& object) {
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
        text.Add(isFirst ? "[[" : ",[");
        isFirst = false;
        text.AddJson(ToUtf8(entry.name));
        text.Add(",");
        text.AddJson(ToUtf8(entry.value));
        text.Add(",");
        text.AddJson(ToUtf8(entry.unit.IsEmpty() ? entry.type : entry.unit));
        text.Add("]");
    }
    text.Add(isFirst ? "" : "]");
}

bool HasSurface(const PageFile& file) {
    return file.model && !file.model->bytes.empty();
}

/// The shortest decimal number that is read as this one.
std::string TextOf(float number) {
    std::array<char, 32> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), end};
}

class Writer {
public:
    Writer(const Page& page, const WritePiece& put) : page_(page), text_(put) {}

    /// Fills in the frame: `{{name}}` stands for a part of the page.
    void Write() {
        std::string_view rest = page::kFrame;
        for (std::size_t begin = 0; (begin = rest.find("{{")) != std::string_view::npos;) {
            const std::size_t end = rest.find("}}", begin);
            text_.Add(rest.substr(0, begin));
            AddPart(rest.substr(begin + 2, end - begin - 2));
            rest.remove_prefix(end + 2);
        }
        text_.Add(rest);
        text_.Finish();
    }

private:
    void AddPart(std::string_view name) {
        if (name == "title") {
            text_.AddHtml(page_.title);
        } else if (name == "policy") {
            AddPolicy();
        } else if (name == "style") {
            text_.Add(page::kStyle);
        } else if (name == "script") {
            text_.Add(page::kScript);
        } else if (name == "data") {
            AddData();
        } else if (name == "view" && HasView()) {
            text_.Add("<script>");
            text_.Add(page::kView);
            text_.Add(kBlockEnd);
        }
    }

    /// Whether the page has models, and the program was built with what shows them.
    bool HasView() const {
        return !page::kView.empty() && std::ranges::any_of(page_.content.files, [](const PageFile& file) {
            return HasSurface(file);
        });
    }

    void AddPolicy() {
        text_.Add("default-src 'none'; script-src '");
        text_.Add(page::kScriptHash);
        if (HasView()) {
            text_.Add("' '");
            text_.Add(page::kViewHash);
        }
        text_.Add("'; style-src '");
        text_.Add(page::kStyleHash);
        text_.Add("'; img-src data:; base-uri 'none'; form-action 'none'");
    }

    void BeginBlock(std::string_view kind) {
        text_.Add("<script type=\"application/json\" class=\"");
        text_.Add(kind);
        text_.Add("\">");
    }

    void AddData() {
        BeginBlock("head");
        text_.Add("{");
        text_.AddName("title", true);
        text_.AddJson(page_.title);
        text_.AddName("objects");
        text_.AddNumber(static_cast<std::int64_t>(page_.content.objects.size()));
        text_.AddName("pictureLimit");
        text_.AddNumber(static_cast<std::int64_t>(page_.pictureLimit));
        text_.AddName("modelLimit");
        text_.AddNumber(static_cast<std::int64_t>(page_.modelLimit));
        text_.Add("}");
        text_.Add(kBlockEnd);
        AddBlocks("files", page_.content.files.size(), [this](std::size_t index) { AddFile(index); });
        AddBlocks("objects", page_.content.objects.size(), [this](std::size_t index) { AddObject(index); });
        for (std::size_t index = 0; index < page_.content.files.size(); ++index) {
            if (page_.content.files[index].isEmbedded) {
                AddPicture(index);
            }
            if (HasSurface(page_.content.files[index])) {
                AddSurface(index, page_.content.files[index].model->bytes);
            }
        }
    }

    template <typename AddElement>
    void AddBlocks(std::string_view kind, std::size_t count, const AddElement& addElement) {
        for (std::size_t index = 0; index < count; ++index) {
            if (index % kObjectsInBlock == 0) {
                BeginBlock(kind);
            }
            text_.Add(index % kObjectsInBlock == 0 ? "[{" : ",{");
            addElement(index);
            text_.Add("}");
            if (index % kObjectsInBlock == kObjectsInBlock - 1 || index + 1 == count) {
                text_.Add("]");
                text_.Add(kBlockEnd);
            }
        }
    }

    void AddFile(std::size_t index) {
        const PageFile& shown = page_.content.files[index];
        const CAEFile& file = *shown.file;
        AddHeader(text_, file);
        text_.AddMember("type", CAEGetFileTypeName(file.getFileType()));
        text_.AddMember("format",
                        format::NameOfFileFormat(static_cast<format::FileFormat>(file.getFileFormat())));
        text_.AddMember("place", shown.place);
        text_.AddMember("location", ToUtf8(file.m_locationType));
        if (shown.size) {
            text_.AddName("size");
            text_.AddNumber(static_cast<std::int64_t>(*shown.size));
        }
        text_.AddMember("picture", shown.pictureType);
        if (shown.isEmbedded) {
            text_.AddName("embedded");
            text_.Add("true");
        }
        if (shown.model) {
            text_.AddName("model");
            AddModel(*shown.model);
        }
    }

    void AddModel(const PageModel& model) {
        const auto addCount = [this](std::string_view name, std::uint64_t count) {
            text_.AddName(name);
            text_.AddNumber(static_cast<std::int64_t>(count));
        };
        const auto addCorner = [this](std::string_view name, const std::array<float, 3>& corner) {
            text_.AddName(name);
            text_.Add("[" + TextOf(corner[0]) + "," + TextOf(corner[1]) + "," + TextOf(corner[2]) + "]");
        };
        text_.Add("{");
        text_.AddName("embedded", true);
        text_.Add(model.bytes.empty() ? "false" : "true");
        if (model.nodes) {
            addCount("nodes", *model.nodes);
        }
        if (model.elements) {
            addCount("elements", *model.elements);
        }
        text_.AddMember("gap", model.gap);
        addCount("points", model.points);
        addCount("triangles", model.triangles);
        addCount("lines", model.lines);
        addCorner("low", model.low);
        addCorner("high", model.high);
        text_.Add("}");
    }

    void AddObject(std::size_t index) {
        const PageObject& shown = page_.content.objects[index];
        CAEObject& object = *shown.object;
        if (shown.file >= 0) {
            // The rest is said with the files.
            text_.AddName("id", true);
            text_.AddNumber(object.getID());
            text_.AddName("file");
            text_.AddNumber(shown.file);
        } else {
            AddHeader(text_, object);
        }
        text_.AddMember("kind", CAEObject::getTypeName(object.getType()));
        text_.AddName("parent");
        text_.AddNumber(shown.parent);
        if (const auto* const project = dynamic_cast<const CAEProject*>(&object)) {
            text_.AddMember("type", ToUtf8(project->getAdditionalType()));
            text_.AddMember("directory", ToUtf8(DirectoryOf(*project)));
        } else if (const auto* const item = dynamic_cast<const CAEViewItem*>(&object)) {
            text_.AddName("shows");
            text_.AddNumber(korvane::GetReferencedObject(*item));
        }
        AddAttachedFiles(object);
        if (page_.progress) {
            page_.progress(index, page_.content.objects.size());
        }
    }

    void AddAttachedFiles(CAEObject& object) {
        const std::map<int, FileRole> roles = RolesOfFiles(object);
        bool isFirst = true;
        for (const CAEFile* const file : AttachedFilesOf(object)) {
            if (isFirst) {
                text_.AddName("files");
            }
            text_.Add(isFirst ? "[[" : ",[");
            isFirst = false;
            text_.AddNumber(page_.content.fileOfIdentifier.at(file->getID()));
            text_.Add(",");
            text_.AddJson(NameOfRole(roles.at(file->getID())));
            text_.Add("]");
        }
        text_.Add(isFirst ? "" : "]");
    }

    /// The block is empty if the picture cannot be read, or has grown, since it was looked at.
    void AddPicture(std::size_t index) {
        const PageFile& shown = page_.content.files[index];
        text_.Add("<script type=\"text/plain\" id=\"picture-");
        text_.AddNumber(static_cast<std::int64_t>(index));
        text_.Add("\">");
        std::string bytes;
        const std::error_code error =
            ReadInputFile(ToPath(PathOf(*shown.file)), bytes, {shown.size.value_or(0), 0});
        ThrowIfOutOfMemory(error);
        if (!error) {
            AddBase64(bytes);
        }
        text_.Add(kBlockEnd);
    }

    void AddSurface(std::size_t index, std::string_view bytes) {
        text_.Add("<script type=\"text/plain\" id=\"model-");
        text_.AddNumber(static_cast<std::int64_t>(index));
        text_.Add("\">");
        AddBase64(bytes);
        text_.Add(kBlockEnd);
    }

    void AddBase64(std::string_view bytes) {
        constexpr std::size_t kPiece = kBase64Unit * 16384;
        for (std::size_t place = 0; place < bytes.size(); place += kPiece) {
            text_.Add(Base64(bytes.substr(place, kPiece)));
        }
    }

    const Page& page_;
    PageText text_;
};

}  // namespace

std::error_code WritePage(const Page& page, const WritePiece& put) {
    try {
        Writer(page, put).Write();
    } catch (const PageText::Ended& end) {
        return end.error;
    }
    return {};
}

bool IsPage(std::string_view beginning) {
    // As web/page.html has it, before anything of a project.
    return beginning.find("<meta name=\"generator\" content=\"korvane-json\">") != std::string_view::npos;
}

}  // namespace host

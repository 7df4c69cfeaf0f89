#include "PageWriter.h"

#include <algorithm>

#include "Base64.h"
#include "PageRecords.h"
#include "PageSources.h"
#include "PageText.h"
#include "host/document/ObjectTexts.h"
#include "host/system/FileSystem.h"
#include "host/system/InputFile.h"
#include "host/system/Text.h"

namespace host {
namespace {

/// A browser reads a block in one go, and must not stop for long.
constexpr std::size_t kRecordsInBlock = 500;
constexpr std::string_view kBlockEnd = "</script>\n";

bool HasSurface(const PageFile& file) {
    return file.model && !file.model->bytes.empty();
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
        return !page::kView.empty() && std::ranges::any_of(page_.sides, [](const PageSide& side) {
            return std::ranges::any_of(side.content.files, HasSurface);
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

    void BeginBlock(std::string_view kind, std::size_t side) {
        text_.Add("<script type=\"application/json\" class=\"");
        text_.Add(kind);
        text_.Add("\" data-side=\"");
        text_.AddNumber(static_cast<std::int64_t>(side));
        text_.Add("\">");
    }

    void AddData() {
        AddHead();
        for (std::size_t side = 0; side < page_.sides.size(); ++side) {
            AddSide(side);
        }
        if (page_.comparison) {
            const PageComparison& comparison = *page_.comparison;
            AddBlocks("pairs", 0, comparison.pairs.size(), [&](std::size_t index) {
                const auto [first, second] = comparison.pairs[index];
                text_.Add("[" + std::to_string(first) + "," + std::to_string(second) + "]");
            });
            AddBlocks("changes", 0, comparison.changes.size(), [&](std::size_t index) {
                const PageChange& change = comparison.changes[index];
                text_.Add("[");
                text_.AddJson(std::string_view(&change.mark, 1));
                text_.Add("," + std::to_string(change.identifier) + ",");
                text_.AddJson(change.text);
                text_.Add("]");
            });
        }
    }

    void AddHead() {
        BeginBlock("head", 0);
        text_.Add("{");
        text_.AddName("title", true);
        text_.AddJson(page_.title);
        text_.AddName("pictureLimit");
        text_.AddNumber(static_cast<std::int64_t>(page_.pictureLimit));
        text_.AddName("modelLimit");
        text_.AddNumber(static_cast<std::int64_t>(page_.modelLimit));
        text_.AddMember("comparison", page_.comparison ? page_.comparison->summary : "");
        text_.AddName("sides");
        std::string_view before = "[";
        for (const PageSide& side : page_.sides) {
            text_.Add(before);
            text_.AddJson(side.name);
            before = ",";
        }
        text_.Add("]}");
        text_.Add(kBlockEnd);
    }

    void AddSide(std::size_t side) {
        const PageContent& content = page_.sides[side].content;
        PageNumbers numbers(content);
        AddBlocks("files", side, content.files.size(), [&](std::size_t index) {
            text_.Add("{");
            AddFileRecord(text_, numbers, content.files[index]);
            text_.Add("}");
        });
        AddBlocks("objects", side, content.objects.size(), [&](std::size_t index) {
            text_.Add("{");
            AddObjectRecord(text_, numbers, content, content.objects[index]);
            text_.Add("}");
            if (page_.progress) {
                page_.progress(index, content.objects.size());
            }
        });
        for (std::size_t index = 0; index < content.files.size(); ++index) {
            const PageFile& file = content.files[index];
            if (file.isEmbedded) {
                BeginBytes("picture", side, index);
                AddPicture(file);
                text_.Add(kBlockEnd);
            }
            if (HasSurface(file)) {
                BeginBytes("model", side, index);
                AddBase64(file.model->bytes);
                text_.Add(kBlockEnd);
            }
        }
    }

    template <typename AddRecord>
    void AddBlocks(std::string_view kind, std::size_t side, std::size_t count, const AddRecord& addRecord) {
        for (std::size_t index = 0; index < count; ++index) {
            const bool isFirst = index % kRecordsInBlock == 0;
            if (isFirst) {
                BeginBlock(kind, side);
            }
            text_.Add(isFirst ? "[" : ",");
            addRecord(index);
            if (index % kRecordsInBlock == kRecordsInBlock - 1 || index + 1 == count) {
                text_.Add("]");
                text_.Add(kBlockEnd);
            }
        }
    }

    void BeginBytes(std::string_view kind, std::size_t side, std::size_t index) {
        text_.Add("<script type=\"text/plain\" id=\"");
        text_.Add(kind);
        text_.Add("-" + std::to_string(side) + "-" + std::to_string(index) + "\">");
    }

    /// Nothing if the picture cannot be read, or has grown, since it was looked at.
    void AddPicture(const PageFile& shown) {
        std::string bytes;
        const std::error_code error = ReadInputFile(shown.resolved, bytes, {shown.size.value_or(0), 0});
        ThrowIfOutOfMemory(error);
        AddBase64(error ? std::string_view() : bytes);
    }

    void AddBase64(std::string_view bytes) {
        constexpr std::size_t kBytesAtOnce = kBase64Unit * 16384;
        for (std::size_t place = 0; place < bytes.size(); place += kBytesAtOnce) {
            text_.Add(Base64(bytes.substr(place, kBytesAtOnce)));
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

}  // namespace host

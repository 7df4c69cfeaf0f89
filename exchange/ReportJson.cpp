// The suite's headers first: the public headers include OuString's only under its usual name.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/Compare.h>
#include <korvaneexchange/ImportDocument.h>
// clang-format on

#include <array>
#include <cstdio>
#include <string_view>

#include "Utf8.h"

namespace korvane::exchange {
namespace {

/// Writes the members of one JSON object. Texts are UTF-8; a byte that is none is written as U+FFFD.
class ObjectWriter {
public:
    explicit ObjectWriter(std::string& out) : out_(out) { out_ += '{'; }

    void Number(std::string_view name, std::size_t value) { Name(name) += std::to_string(value); }
    void Number(std::string_view name, int value) { Name(name) += std::to_string(value); }
    void Flag(std::string_view name, bool value) { Name(name) += value ? "true" : "false"; }
    void Text(std::string_view name, std::string_view value) { Quote(value, Name(name)); }
    /// The name, behind which the caller appends the value.
    std::string& Name(std::string_view name) {
        if (!isFirst_) {
            out_ += ',';
        }
        isFirst_ = false;
        Quote(name, out_);
        out_ += ':';
        return out_;
    }
    void End() { out_ += '}'; }

private:
    static void Quote(std::string_view text, std::string& out);

    std::string& out_;
    bool isFirst_ = true;
};

void ObjectWriter::Quote(std::string_view text, std::string& out) {
    out += '"';
    std::size_t length = 1;
    for (std::size_t place = 0; place < text.size(); place += length) {
        char32_t character = 0;
        if (!DecodeUtf8(text, place, character, length)) {
            out += "\xEF\xBF\xBD";
        } else if (character == '"' || character == '\\') {
            out += '\\';
            out += static_cast<char>(character);
        } else if (character < 0x20) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(character));
            out += escape.data();
        } else {
            out += text.substr(place, length);
        }
    }
    out += '"';
}

void WriteEntries(const Report& report, ObjectWriter& out) {
    out.Flag("stopped", report.isStopped);
    {
        ObjectWriter counts(out.Name("counts"));
        for (std::size_t index = 0; index < kReasonCount; ++index) {
            if (report.counts[index] != 0) {
                counts.Number(NameOf(static_cast<Reason>(index)), report.counts[index]);
            }
        }
        counts.End();
    }
    std::string& text = out.Name("entries");
    text += '[';
    bool isFirst = true;
    for (const Entry& entry : report.entries) {
        text += isFirst ? "" : ",";
        isFirst = false;
        ObjectWriter one(text);
        one.Text("reason", NameOf(entry.reason));
        one.Text("pointer", entry.pointer);
        if (entry.identifier != 0) {
            one.Number("id", entry.identifier);
        }
        one.Text("subject", entry.subject);
        one.Text("sentence", entry.sentence);
        one.End();
    }
    text += ']';
    out.Number("unlisted", report.unlisted);
}

}  // namespace

std::string ToJson(const ImportReport& report) {
    std::string text;
    ObjectWriter out(text);
    out.Text("report", "import");
    out.Number("root", report.root);
    out.Number("membersTaken", report.membersTaken);
    out.Number("objectsAdded", report.objectsAdded);
    out.Number("objectsMatched", report.objectsMatched);
    out.Number("objectsMoved", report.objectsMoved);
    out.Number("objectsRemoved", report.objectsRemoved);
    out.Number("filesAdded", report.filesAdded);
    out.Number("filesMatched", report.filesMatched);
    out.Number("filesAttached", report.filesAttached);
    out.Number("filesAsChildren", report.filesAsChildren);
    out.Number("keys", report.keys);
    out.Number("viewItems", report.viewItems);
    out.Number("viewItemsLinked", report.viewItemsLinked);
    WriteEntries(report, out);
    out.End();
    return text;
}

std::string ToJson(const AnswerReport& report) {
    std::string text;
    ObjectWriter out(text);
    out.Text("report", "answer");
    out.Flag("fitted", report.hasFitted);
    if (!report.hasFitted) {
        out.Text("whyUseless", report.whyUseless);
    }
    out.Number("keysSet", report.keysSet);
    out.Number("keysKept", report.keysKept);
    out.Flag("nameTaken", report.hasName);
    WriteEntries(report, out);
    out.End();
    return text;
}

std::string ToJson(const CompareReport& report) {
    std::string text;
    ObjectWriter out(text);
    out.Text("report", "compare");
    out.Flag("same", report.IsSame());
    out.Number("objects", report.objects);
    out.Number("files", report.files);
    WriteEntries(report, out);
    out.End();
    return text;
}

}  // namespace korvane::exchange

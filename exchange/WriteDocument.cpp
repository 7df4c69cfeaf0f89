// The suite's headers first: public headers include them only under their usual names.
// clang-format off
#include "objectjson/ObjectModel.h"
#include <korvaneexchange/WriteDocument.h>
// clang-format on

#include <vector>

#include "format/MemberNames.h"
#include "objectjson/DocumentText.h"
#include "objectjson/TextWriter.h"
#if !defined(KORVANEJSON_TEXT_WITHOUT_NODES)
#include "objectjson/NodeWriter.h"
#endif

namespace korvane::exchange {
namespace {

/// A callback that draws something is not to slow the writing down.
constexpr std::size_t kObjectsPerCall = 256;

::ExportMode ModeOfConverters(ExportMode mode) {
    switch (mode) {
        case ExportMode::kProject:
            return ::ExportMode::kProject;
        case ExportMode::kStudy:
            return ::ExportMode::kStudy;
        case ExportMode::kEverything:
            break;
    }
    return ::ExportMode::kEverything;
}

/// Hands pages over, and counts their bytes.
class Pages final : public ::DocumentSink {
public:
    Pages(const exchange::DocumentSink& sink, WriteReport& report) : sink_(sink), report_(report) {}

    void Write(const char* text, std::size_t length) override {
        sink_(std::string_view(text, length));
        report_.bytes += length;
    }

private:
    const exchange::DocumentSink& sink_;
    WriteReport& report_;
};

/// Counts what goes through to another writer, and asks now and then whether to go on.
template <class Writer>
class CountedWriter final : public DocumentWriter {
public:
    CountedWriter(Writer& out, const ProgressCallback& progress, WriteReport& report)
        : out_(out), progress_(progress), report_(report) {
        Count(report_.objects);
    }

    using DocumentWriter::Text;
    void Text(format::MemberName name, const char* value) override { out_.Text(name, value); }
    void OpenObject(format::MemberName name) override {
        isFiles_.push_back(false);
        out_.OpenObject(name);
    }
    void OpenArray(format::MemberName name) override {
        isFiles_.push_back(name == format::member::kFiles);
        out_.OpenArray(name);
    }
    void OpenObject(const char* name) override {
        isFiles_.push_back(false);
        out_.OpenObject(name);
    }
    void OpenElement() override {
        Count(isFiles_.back() ? report_.files : report_.objects);
        isFiles_.push_back(false);
        out_.OpenElement();
    }
    void End() override {
        isFiles_.pop_back();
        out_.End();
    }

private:
    void Count(std::size_t& kind) {
        const std::size_t before = report_.objects + report_.files;
        if (progress_ && before % kObjectsPerCall == 0 &&
            !progress_({.objects = before, .bytes = report_.bytes})) {
            throw Stopped();
        }
        ++kind;
    }

    Writer& out_;
    const ProgressCallback& progress_;
    WriteReport& report_;
    /// Of everything that is open, whether it is a "files" array.
    std::vector<bool> isFiles_;
};

}  // namespace

WriteReport WriteDocument(CAEObject& object, const WriteOptions& options, const DocumentSink& sink) {
    WriteReport report;
    Pages pages(sink, report);
    const ::ExportMode mode = ModeOfConverters(options.mode);
    const bool isIndented = options.layout == Layout::kIndented;
#if defined(KORVANEJSON_TEXT_WITHOUT_NODES)
    TextWriter text(pages, isIndented ? libjson::text_layout::formatted : libjson::text_layout::compact);
    CountedWriter out(text, options.progress, report);
    WriteRootMembers(&object, mode, out);
    text.Finish();
#else
    JSONNode document(JSON_NODE);
    NodeWriter nodes(document);
    CountedWriter out(nodes, options.progress, report);
    WriteRootMembers(&object, mode, out);
    const json_string text = isIndented ? document.write_formatted() : document.write();
    pages.Write(text.data(), text.size());
#endif
    return report;
}

}  // namespace korvane::exchange

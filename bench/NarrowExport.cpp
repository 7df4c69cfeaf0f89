// Text without nodes is not exported, and has been written in two ways: revisions are compared with each
// other.

#include "NarrowExport.h"

#include <stdexcept>

#if __has_include("objectjson/DocumentText.h")
#include "objectjson/DocumentText.h"

namespace {

class Sink final : public DocumentSink {
public:
    explicit Sink(PageTaker& taker) : taker_(taker) {}
    void Write(const char* text, std::size_t length) override { taker_.Take(text, length); }

private:
    PageTaker& taker_;
};

}  // namespace

bool CanWriteNarrow() {
    return true;
}

void WriteNarrow(CAEProject& project, PageTaker& taker) {
    Sink sink(taker);
    WriteDocument(&project, ExportModeOfText(OuString()), sink);
}

#elif __has_include("objectjson/TextWriter.h")
#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/ExportMode.h"
#include "objectjson/Sections.h"
#include "objectjson/TextWriter.h"

namespace {

class Sink final : public libjson::text_sink {
public:
    explicit Sink(PageTaker& taker) : taker_(taker) {}
    void write(const char* text, std::size_t length) override { taker_.Take(text, length); }

private:
    PageTaker& taker_;
};

}  // namespace

bool CanWriteNarrow() {
    return true;
}

void WriteNarrow(CAEProject& project, PageTaker& taker) {
    Sink sink(taker);
    TextWriter out(sink);
    WriteObject(project, ExportModeOfText(OuString()), out);
    out.Text(format::member::kSubType, format::kSubTypeValue);
    out.Finish();
}

#else

bool CanWriteNarrow() {
    return false;
}

void WriteNarrow(CAEProject&, PageTaker&) {
    throw std::logic_error("these libraries cannot write text without nodes");
}

#endif

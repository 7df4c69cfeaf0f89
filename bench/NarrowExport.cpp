// Text without nodes is not exported, and older revisions that are compared with this one do not have it.

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

#else

bool CanWriteNarrow() {
    return false;
}

void WriteNarrow(CAEProject&, PageTaker&) {
    throw std::logic_error("these libraries cannot write text without nodes");
}

#endif

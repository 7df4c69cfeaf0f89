#pragma once

#if __has_include(<text_writer.h>)
/// Set where the JSON library can write text without nodes. An installed one may not, and decides itself what
/// its text looks like.
#define KORVANEJSON_TEXT_WITHOUT_NODES 1

#include <text_writer.h>

#include "DocumentSink.h"
#include "DocumentWriter.h"

/// Writes a document as text, compact unless told otherwise, into a sink, a page at a time, in memory that
/// does not grow with it. What the sink throws reaches the caller.
class TextWriter final : public DocumentWriter {
public:
    /// Opens the document's root. The sink must live until Finish.
    explicit TextWriter(DocumentSink& sink, libjson::text_layout layout = libjson::text_layout::compact)
        : pages_(sink), writer_(pages_, layout) {
        writer_.open_object();
    }

    using DocumentWriter::Text;
    void Text(format::MemberName name, const char* value) override;
    void OpenObject(format::MemberName name) override;
    void OpenArray(format::MemberName name) override;
    void OpenObject(const char* name) override;
    void OpenElement() override { writer_.open_object(); }
    void End() override { writer_.end(); }

    /// Ends the root, and hands over what the sink has not got yet.
    void Finish();

private:
    /// Hands the writer's page to the sink.
    class Pages final : public libjson::text_sink {
    public:
        explicit Pages(DocumentSink& sink) : sink_(sink) {}
        void write(const char* text, std::size_t length) override { sink_.Write(text, length); }

    private:
        DocumentSink& sink_;
    };

    Pages pages_;
    libjson::text_writer writer_;
};

#endif

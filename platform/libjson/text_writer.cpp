#include "text_writer.h"

#include <array>

#include "TextEmitter.h"

namespace libjson {

/// One page, which the sink gets again and again.
class text_writer::sink_pages final : public detail::TextPages {
public:
    explicit sink_pages(text_sink& sink) : sink_(sink) {}

    char* Next() override { return page_.data(); }
    void Take(std::size_t length) override { sink_.write(page_.data(), length); }

private:
    text_sink& sink_;
    std::array<char, kPageBytes> page_{};
};

text_writer::text_writer(text_sink& sink, text_layout layout)
    : pages_(std::make_unique<sink_pages>(sink)),
      emitter_(std::make_unique<detail::TextEmitter>(*pages_, layout == text_layout::formatted)) {}

text_writer::~text_writer() = default;

void text_writer::open_object() {
    emitter_->BeginElement();
    emitter_->Open(false);
}

void text_writer::open_object(plain_name name) {
    emitter_->BeginMember(name.text);
    emitter_->Open(false);
}

void text_writer::open_object(std::string_view name) {
    emitter_->BeginElement();
    emitter_->PutName(name);
    emitter_->Open(false);
}

void text_writer::open_array() {
    emitter_->BeginElement();
    emitter_->Open(true);
}

void text_writer::open_array(plain_name name) {
    emitter_->BeginMember(name.text);
    emitter_->Open(true);
}

void text_writer::open_array(std::string_view name) {
    emitter_->BeginElement();
    emitter_->PutName(name);
    emitter_->Open(true);
}

void text_writer::end() {
    emitter_->Close();
}

void text_writer::text(plain_name name, std::string_view value) {
    emitter_->BeginMember(name.text);
    emitter_->PutString(value);
}

void text_writer::text(std::string_view name, std::string_view value) {
    emitter_->BeginElement();
    emitter_->PutName(name);
    emitter_->PutString(value);
}

void text_writer::text(std::string_view value) {
    emitter_->BeginElement();
    emitter_->PutString(value);
}

void text_writer::finish() {
    emitter_->Finish();
}

}  // namespace libjson

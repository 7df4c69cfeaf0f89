#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "libjson.h"

namespace libjson {

namespace detail {
class TextEmitter;
}  // namespace detail

/// Takes the text of a document, a page at a time. What it throws ends the writing and reaches the caller.
class text_sink {
public:
    virtual void write(const char* text, std::size_t length) = 0;

protected:
    ~text_sink() = default;
};

enum class text_layout { compact, formatted };

/// A name that needs no escape: printable ASCII without quotes, backslashes and slashes. It is written as it
/// is.
struct plain_name {
    std::string_view text;
};

/// Writes the text of a document into a sink, from calls in the order of the text, without any node. What it
/// writes is what JSONNode::write or write_formatted returns for a node with these members, in the text units
/// that are set when the writer is made.
///
/// The first call opens the outermost array or object. Calls with a name belong into objects, those without
/// one into arrays; that is not tested, nor is whether a name occurs twice. The sink gets full pages of 16
/// KiB while the text is written, and the rest from `finish`. After anything was thrown, the writer can only
/// be destroyed. Memory does not grow with the text, but by a bit for each level that is open.
class LIBJSON_API text_writer {
public:
    /// The sink must live until the last call. Throws std::bad_alloc.
    explicit text_writer(text_sink& sink, text_layout layout = text_layout::compact);
    ~text_writer();
    text_writer(const text_writer&) = delete;
    text_writer& operator=(const text_writer&) = delete;

    void open_object();
    void open_object(plain_name name);
    void open_object(std::string_view name);
    void open_array();
    void open_array(plain_name name);
    void open_array(std::string_view name);
    /// Closes what was opened last.
    void end();

    /// A text as a member of an object or an element of an array. It may contain any bytes, NUL among them.
    void text(plain_name name, std::string_view value);
    void text(std::string_view name, std::string_view value);
    void text(std::string_view value);

    /// Hands over what the sink has not got yet. Call it once, after the outermost end.
    void finish();

private:
    class sink_pages;

    std::unique_ptr<sink_pages> pages_;
    std::unique_ptr<detail::TextEmitter> emitter_;
};

}  // namespace libjson

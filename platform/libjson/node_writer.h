#pragma once

#include <memory>
#include <string_view>

#include "libjson.h"

namespace libjson {

/// Makes the nodes of a document from calls in the order of its text: what push_back makes of them, with less
/// work, and with no more memory than the nodes need.
///
/// Calls with a name belong into objects, those without one into arrays; that is not tested, nor is whether a
/// name occurs twice. Whatever is opened becomes part of the root when it ends, and is given up if it never
/// does. After anything was thrown, the writer can only be destroyed; the root has what had become part of
/// it. A writer belongs to one thread.
class LIBJSON_API node_writer {
public:
    /// Members are added to the end of the root, an array or object, which must live longer than the writer
    /// and keep its place. Others who share it keep it as it was.
    explicit node_writer(JSONNode& root);
    ~node_writer();
    node_writer(const node_writer&) = delete;
    node_writer& operator=(const node_writer&) = delete;

    void open_object();
    void open_object(std::string_view name);
    void open_array(std::string_view name);
    /// Closes what was opened last.
    void end();

    /// A text as a member of an object. It may contain any bytes, NUL among them.
    void text(std::string_view name, std::string_view value);

private:
    struct nodes;

    std::unique_ptr<nodes> nodes_;
};

}  // namespace libjson

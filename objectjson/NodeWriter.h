#pragma once

#include <libjson.h>

#include <string_view>
#include <utility>
#include <vector>

#include "DocumentWriter.h"

#if __has_include(<node_writer.h>)
#include <node_writer.h>

using NodeMaker = libjson::node_writer;
#else
/// The same by the means of every libjson.
class NodeMaker {
public:
    explicit NodeMaker(JSONNode& root) : root_(root) {}

    void open_object() { open_.emplace_back(JSON_NODE); }
    void open_object(std::string_view name) { Open(JSON_NODE, name); }
    void open_array(std::string_view name) { Open(JSON_ARRAY, name); }
    void end();
    void text(std::string_view name, std::string_view value);

private:
    void Open(char type, std::string_view name);
    JSONNode& Innermost() { return open_.empty() ? root_ : open_.back(); }

    JSONNode& root_;
    std::vector<JSONNode> open_;
};
#endif

/// Writes members to the end of a node. Whoever shares the node keeps it as it was: it is made the holder's
/// own before something is added.
class NodeWriter final : public DocumentWriter {
public:
    /// The node must be an object node and live longer than the writer.
    explicit NodeWriter(JSONNode& root) : nodes_(root) {}

    using DocumentWriter::Text;
    void Text(format::MemberName name, const char* value) override;
    void OpenObject(format::MemberName name) override { nodes_.open_object(name.View()); }
    void OpenArray(format::MemberName name) override { nodes_.open_array(name.View()); }
    void OpenObject(const char* name) override { nodes_.open_object(name == nullptr ? "" : name); }
    void OpenElement() override { nodes_.open_object(); }
    void End() override { nodes_.end(); }

private:
    NodeMaker nodes_;
};

/// The one section that `write` writes, as a node with the section's name.
template <typename Write>
JSONNode SectionNode(const Write& write) {
    JSONNode holder(JSON_NODE);
    NodeWriter writer(holder);
    write(writer);
    return std::as_const(holder).at(0);
}

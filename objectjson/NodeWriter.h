#pragma once

#include <libjson.h>

#include <utility>
#include <vector>

#include "DocumentWriter.h"

/// Writes members to the end of a node. Whoever shares the node keeps it as it was: it is made the holder's
/// own before something is added.
class NodeWriter final : public DocumentWriter {
public:
    /// The node must be an object node and live longer than the writer.
    explicit NodeWriter(JSONNode& root) : root_(root) {}

    using DocumentWriter::Text;
    void Text(format::MemberName name, const char* value) override;
    void OpenObject(format::MemberName name) override { OpenObject(name.c_str()); }
    void OpenArray(format::MemberName name) override;
    void OpenObject(const char* name) override;
    void OpenElement() override;
    void End() override;

private:
    JSONNode& Innermost() { return open_.empty() ? root_ : open_.back(); }

    JSONNode& root_;
    std::vector<JSONNode> open_;
};

/// The one section that `write` writes, as a node with the section's name.
template <typename Write>
JSONNode SectionNode(const Write& write) {
    JSONNode holder(JSON_NODE);
    NodeWriter writer(holder);
    write(writer);
    return std::as_const(holder).at(0);
}

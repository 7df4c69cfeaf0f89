#include "node_writer.h"

#include "Node.h"
#include "TreeBuilder.h"

namespace libjson {

struct node_writer::nodes {
    explicit nodes(JSONNode& node) : root(node) {}

    void Open(char type, std::string_view name) {
        builder.MemberName(name);
        builder.Open(type);
    }

    /// Makes what has ended a member of the root, unless something around it is still open.
    void AppendFinished() {
        if (builder.IsFinished()) {
            detail::HeldNode held(builder.Take(), cells);
            if (detail::IsContainer(root)) {
                detail::AppendChild(root, held.Get(), cells);
                held.PassOn();
            }
        }
    }

    JSONNode& root;
    detail::Cells cells;
    detail::TreeBuilder builder{cells};
};

node_writer::node_writer(JSONNode& root) : nodes_(std::make_unique<nodes>(root)) {}

node_writer::~node_writer() = default;

void node_writer::open_object() {
    nodes_->Open(JSON_NODE, {});
}

void node_writer::open_object(std::string_view name) {
    nodes_->Open(JSON_NODE, name);
}

void node_writer::open_array(std::string_view name) {
    nodes_->Open(JSON_ARRAY, name);
}

void node_writer::end() {
    nodes_->builder.Close();
    nodes_->AppendFinished();
}

void node_writer::text(std::string_view name, std::string_view value) {
    nodes_->builder.MemberName(name);
    nodes_->builder.Value(JSON_STRING, value);
    nodes_->AppendFinished();
}

}  // namespace libjson

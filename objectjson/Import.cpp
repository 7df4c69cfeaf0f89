#include <cstddef>
#include <deque>
#include <optional>
#include <utility>

#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "Sections.h"

/// The import of an object node with everything under it: members in document order, a child's whole subtree
/// before its next sibling is created. The way back to the root is kept on the heap, so that no depth of
/// nesting exhausts the stack.
class ImportWalk {
public:
    /// Applies every member of the converter's node to its object.
    static void ImportMembers(CAEObjectJson& converter);
    /// Creates and imports the elements of the array as children of the converter's object.
    static void ImportChildren(CAEObjectJson& converter, const JSONNode& children);

private:
    /// A converter whose node is being read, the member that comes next, and the children that are being
    /// read.
    struct OpenNode {
        explicit OpenNode(CAEObjectJson& root) : converter(root) {}
        OpenNode(const JSONNode& element, CAEObject& child)
            : own(std::in_place, element, &child), converter(*own) {}
        OpenNode(const OpenNode&) = delete;
        OpenNode& operator=(const OpenNode&) = delete;

        /// The converter of a child; the root's belongs to the caller.
        std::optional<CAEObjectJson> own;
        CAEObjectJson& converter;

        bool hasMembersLeft = false;
        json_index_t nextMember = 0;
        JSONNode children = JSONNode(JSON_ARRAY);
        json_index_t nextChild = 0;
    };

    void Run();
    static void BeginMembers(OpenNode& node);
    static void ImportNextMember(OpenNode& node);
    static void BeginChildren(OpenNode& node, const JSONNode& children);
    void EnterChild(const OpenNode& parent, const JSONNode& element);
    /// Completes the innermost node, a child's, and leaves it.
    void LeaveChild();

    std::deque<OpenNode> open_;
};

void ImportWalk::ImportMembers(CAEObjectJson& converter) {
    ImportWalk walk;
    BeginMembers(walk.open_.emplace_back(converter));
    walk.Run();
}

void ImportWalk::ImportChildren(CAEObjectJson& converter, const JSONNode& children) {
    ImportWalk walk;
    BeginChildren(walk.open_.emplace_back(converter), children);
    walk.Run();
}

void ImportWalk::Run() {
    for (;;) {
        OpenNode& node = open_.back();
        if (node.nextChild < node.children.size()) {
            EnterChild(node, std::as_const(node.children).at(node.nextChild++));
        } else if (node.hasMembersLeft) {
            ImportNextMember(node);
        } else if (open_.size() > 1) {
            LeaveChild();
        } else {
            return;
        }
    }
}

void ImportWalk::BeginMembers(OpenNode& node) {
    const JSONNode& members = node.converter.node_;
    node.hasMembersLeft = members.type() == JSON_NODE && !members.empty();
}

void ImportWalk::ImportNextMember(OpenNode& node) {
    const JSONNode& members = node.converter.node_;
    const JSONNode& member = members.at(node.nextMember++);
    node.hasMembersLeft = node.nextMember < members.size();
    const json_string name = member.name();
    const ObjectNodeKey key = ClassifyObjectNodeKey({name.data(), name.size()});
    if (key == ObjectNodeKey::kChildren) {
        BeginChildren(node, member);
    } else {
        node.converter.ImportMember(key, member);
    }
}

void ImportWalk::BeginChildren(OpenNode& node, const JSONNode& children) {
    node.children = IsContainer(children) ? children : JSONNode(JSON_ARRAY);
    node.nextChild = 0;
}

void ImportWalk::EnterChild(const OpenNode& parent, const JSONNode& element) {
    CAEObject* const above = parent.converter.object_;
    CAEProject* const project = parent.converter.project_;
    CAEObject* const child =
        above == nullptr || project == nullptr ? nullptr : CreateChild(*above, *project, element);
    if (child == nullptr) {
        return;
    }
    OpenNode& entered = open_.emplace_back(element, *child);
    if (entered.converter.PrepareImport()) {
        BeginMembers(entered);
    }
}

void ImportWalk::LeaveChild() {
    CAEObject* const child = open_.back().converter.object_;
    if (KindOf(*child) == format::Kind::kViewItem) {
        open_[open_.size() - 2].converter.ResolveViewItemReference(child);
    }
    open_.pop_back();
}

void CAEObjectJson::Import() {
    if (PrepareImport()) {
        ImportMembers();
    }
}

bool CAEObjectJson::PrepareImport() {
    if (IsEmpty(ReadTypeField(node_)) || object_ == nullptr) {
        return false;
    }
    project_ = object_->getProject();
    return project_ != nullptr;
}

void CAEObjectJson::ImportMembers() {
    if (object_ != nullptr) {
        ImportWalk::ImportMembers(*this);
    }
}

void CAEObjectJson::ImportMember(ObjectNodeKey key, const JSONNode& member) {
    switch (key) {
        case ObjectNodeKey::kMetaData:
            ImportMetadata(member);
            break;
        case ObjectNodeKey::kFiles:
            ImportFiles(member);
            break;
        default:
            ReadHeaderMember(*object_, key, member);
            break;
    }
}

void CAEObjectJson::ImportChildren(JSONNode children) {
    ImportWalk::ImportChildren(*this, children);
}

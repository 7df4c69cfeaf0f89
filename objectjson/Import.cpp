#include <optional>
#include <vector>

#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "RepeatedTexts.h"
#include "Sections.h"
#include "format/MemberNames.h"

namespace {

/// The import of an object node with everything under it: members in document order, a child's whole subtree
/// before its next sibling is created. The way back to the root is kept on the heap, so that no depth of
/// nesting exhausts the stack; the nodes are held by whoever holds the root.
class ImportWalk {
public:
    explicit ImportWalk(RepeatedTexts& texts) : texts_(texts) {}

    /// Applies every member of the node to the object.
    void ImportMembers(CAEObject& object, CAEProject* project, const JSONNode& node);
    /// Creates and imports the elements of the array as children of the object.
    void ImportChildren(CAEObject& object, CAEProject* project, const JSONNode& children);

private:
    /// An object whose members are being read, and the children that are being read.
    struct OpenObject {
        CAEObject* object;
        CAEProject* project;
        ChildWalk members;
        ChildWalk children;
    };

    /// Applies members until there is a child to be read; false behind the last member.
    bool ImportMembersBeforeChild(OpenObject& open);
    /// Everything from the children of the open object on.
    void ImportFromChildrenOf(const OpenObject& root);
    void EnterChild(const OpenObject& parent, const JSONNode& element);
    /// Completes the innermost object, a child, and leaves it.
    void LeaveChild();

    RepeatedTexts& texts_;
    std::vector<OpenObject> open_;
};

ChildWalk MembersOf(const JSONNode& node) {
    return node.type() == JSON_NODE ? ChildWalk(node) : ChildWalk();
}

void ImportWalk::ImportMembers(CAEObject& object, CAEProject* project, const JSONNode& node) {
    OpenObject root{&object, project, MembersOf(node), {}};
    if (ImportMembersBeforeChild(root)) {
        ImportFromChildrenOf(root);
    }
}

void ImportWalk::ImportChildren(CAEObject& object, CAEProject* project, const JSONNode& children) {
    ImportFromChildrenOf({&object, project, {}, ChildWalk(children)});
}

void ImportWalk::ImportFromChildrenOf(const OpenObject& root) {
    open_.push_back(root);
    for (;;) {
        OpenObject& innermost = open_.back();
        if (const JSONNode* const element = innermost.children.Next()) {
            EnterChild(innermost, *element);
        } else if (!ImportMembersBeforeChild(innermost)) {
            if (open_.size() == 1) {
                return;
            }
            LeaveChild();
        }
    }
}

bool ImportWalk::ImportMembersBeforeChild(OpenObject& open) {
    while (const JSONNode* const member = open.members.Next()) {
        const NodeText name = NodeName(*member);
        switch (const ObjectNodeKey key = ClassifyObjectNodeKey(name)) {
            case ObjectNodeKey::kMetaData:
                ReadMetadata(*open.object, open.project, *member, texts_);
                break;
            case ObjectNodeKey::kChildren:
                open.children = ChildWalk(*member);
                if (open.children.HasNext()) {
                    return true;
                }
                break;
            case ObjectNodeKey::kFiles:
                if (open.project != nullptr) {
                    ReadFiles(*open.object, *open.project, *member, texts_);
                }
                break;
            default:
                ReadHeaderMember(*open.object, key, *member, texts_);
                break;
        }
    }
    return false;
}

void ImportWalk::EnterChild(const OpenObject& parent, const JSONNode& element) {
    if (parent.project == nullptr) {
        return;
    }
    CAEObject* const child = CreateChild(*parent.object, *parent.project, element);
    if (child == nullptr) {
        return;
    }
    StartImport(*child, element);
    CAEProject* const project = child->getProject();
    open_.push_back({child, project, project == nullptr ? ChildWalk() : MembersOf(element), {}});
}

void ImportWalk::LeaveChild() {
    CAEObject& child = *open_.back().object;
    open_.pop_back();
    if (KindOf(child) == format::Kind::kViewItem) {
        ResolveReference(child, open_.back().project);
    }
}

}  // namespace

CAEProject* StartImport(CAEObject& object, const JSONNode& node) {
    if (KindOf(object) == format::Kind::kProject) {
        if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
            project->setAdditionalType(WideMember(node, format::member::kType));
        }
    }
    return object.getProject();
}

void ReadMembers(CAEObject& object, CAEProject* project, const JSONNode& node, RepeatedTexts& texts) {
    ImportWalk(texts).ImportMembers(object, project, node);
}

void CAEObjectJson::Import() {
    if (IsEmpty(ReadTypeField(node_)) || object_ == nullptr) {
        return;
    }
    project_ = object_->getProject();
    if (project_ != nullptr) {
        ImportMembers();
    }
}

void CAEObjectJson::ImportMembers() {
    if (object_ != nullptr) {
        RepeatedTexts texts;
        ReadMembers(*object_, project_, node_, texts);
    }
}

void CAEObjectJson::ImportChildren(JSONNode children) {
    if (object_ != nullptr) {
        RepeatedTexts texts;
        ImportWalk(texts).ImportChildren(*object_, project_, children);
    }
}

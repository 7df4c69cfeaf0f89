#include <optional>
#include <vector>

#include "CAEObjectJson.h"
#include "NodeReading.h"
#include "RepeatedTexts.h"
#include "Sections.h"
#include "format/MemberNames.h"

using format::Kind;

namespace {

/// The import of an object node with everything under it: members in document order, a child's whole subtree
/// before its next sibling is created. The way back to the root is kept on the heap, so that no depth of
/// nesting exhausts the stack; the nodes are held by whoever holds the root.
class ImportWalk {
public:
    explicit ImportWalk(RepeatedTexts& texts) : texts_(texts) {}

    /// Applies every member of the node to the target.
    void ImportMembers(const ImportTarget& target, const JSONNode& node);
    /// Creates and imports the elements of the array as children of the target.
    void ImportChildren(const ImportTarget& target, const JSONNode& children);
    /// Creates and imports one element as a child of the target.
    void ImportChild(const ImportTarget& target, const JSONNode& element);

private:
    /// An object whose members are being read, and the children that are being read.
    struct OpenObject {
        ImportTarget target;
        ChildWalk members;
        ChildWalk children;
    };

    /// Applies members until there is a child to be read; false behind the last member.
    bool ImportMembersBeforeChild(OpenObject& open);
    /// Everything that is open, down to the root.
    void ImportOpen();
    void EnterChild(const ImportTarget& parent, const JSONNode& element);
    /// Completes the innermost object, a child, and leaves it.
    void LeaveChild();

    RepeatedTexts& texts_;
    std::vector<OpenObject> open_;
};

ChildWalk MembersOf(const JSONNode& node) {
    return node.type() == JSON_NODE ? ChildWalk(node) : ChildWalk();
}

/// Where an element of "children" lands: in a new object, unless there is a policy that says otherwise.
std::optional<ImportTarget> LandChild(const ImportTarget& parent, const JSONNode& element) {
    if (parent.policy != nullptr) {
        return parent.policy->EnterChild(parent, element);
    }
    CAEObject* const child = CreateChild(*parent.object, *parent.project, element);
    return child == nullptr ? std::nullopt : std::optional(ImportTarget{child});
}

void ImportWalk::ImportMembers(const ImportTarget& target, const JSONNode& node) {
    OpenObject root{target, MembersOf(node), {}};
    if (ImportMembersBeforeChild(root)) {
        open_.push_back(root);
        ImportOpen();
    }
}

void ImportWalk::ImportChildren(const ImportTarget& target, const JSONNode& children) {
    open_.push_back({target, {}, ChildWalk(children)});
    ImportOpen();
}

void ImportWalk::ImportChild(const ImportTarget& target, const JSONNode& element) {
    open_.push_back({target, {}, {}});
    EnterChild(target, element);
    ImportOpen();
}

void ImportWalk::ImportOpen() {
    for (;;) {
        OpenObject& innermost = open_.back();
        if (const JSONNode* const element = innermost.children.Next()) {
            const ImportTarget parent = innermost.target;
            EnterChild(parent, *element);
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
        if (open.target.policy != nullptr) {
            open.target.policy->EnterMember(open.target, *member);
        }
        const NodeText name = NodeName(*member);
        switch (const ObjectNodeKey key = ClassifyObjectNodeKey(name)) {
            case ObjectNodeKey::kMetaData:
                ReadMetadata(open.target, *member, texts_);
                break;
            case ObjectNodeKey::kChildren:
                open.children = ChildWalk(*member);
                if (open.children.HasNext()) {
                    return true;
                }
                break;
            case ObjectNodeKey::kFiles:
                if (open.target.project != nullptr) {
                    ReadFiles(open.target, *member, texts_);
                }
                break;
            default:
                ReadHeaderMember(open.target, key, *member, texts_);
                break;
        }
    }
    return false;
}

void ImportWalk::EnterChild(const ImportTarget& parent, const JSONNode& element) {
    std::optional<ImportTarget> child = parent.project == nullptr ? std::nullopt : LandChild(parent, element);
    if (!child) {
        return;
    }
    StartImport(*child, element);
    if (child->object != nullptr) {
        child->project = child->object->getProject();
    }
    open_.push_back({*child, child->project == nullptr ? ChildWalk() : MembersOf(element), {}});
}

void ImportWalk::LeaveChild() {
    const ImportTarget child = open_.back().target;
    open_.pop_back();
    ImportPolicy* const policy = child.policy;
    if (child.Kind() == Kind::kViewItem && (policy == nullptr || policy->ResolvesReference(child))) {
        const bool isFound = ResolveReference(*child.object, open_.back().target.project);
        if (policy != nullptr) {
            policy->LeaveReference(child, isFound);
        }
    }
    if (policy != nullptr) {
        policy->LeaveChild(child);
    }
}

}  // namespace

CAEProject* StartImport(const ImportTarget& target, const JSONNode& node) {
    if (target.Kind() == Kind::kProject) {
        const OuString type = WideMember(node, format::member::kType);
        target.SetMember(format::member::kType, type, [&](CAEObject& object) {
            if (auto* const project = dynamic_cast<CAEProject*>(&object)) {
                project->setAdditionalType(type);
            }
        });
    }
    return target.object == nullptr ? target.project : target.object->getProject();
}

void ReadMembers(const ImportTarget& target, const JSONNode& node, RepeatedTexts& texts) {
    ImportWalk(texts).ImportMembers(target, node);
}

void ReadChild(const ImportTarget& parent, const JSONNode& element, RepeatedTexts& texts) {
    ImportWalk(texts).ImportChild(parent, element);
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
        ReadMembers({object_, project_}, node_, texts);
    }
}

void CAEObjectJson::ImportChildren(JSONNode children) {
    if (object_ != nullptr) {
        RepeatedTexts texts;
        ImportWalk(texts).ImportChildren({object_, project_}, children);
    }
}

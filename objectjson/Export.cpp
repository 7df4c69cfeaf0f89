#include <deque>
#include <variant>

#include "CAEObjectJson.h"
#include "NodeWriter.h"
#include "Sections.h"
#include "format/MemberNames.h"

namespace member = format::member;

namespace {

/// The export of everything below one object: depth first, in the order in which the object model is asked
/// when every child's and every file's own export is called in turn. The way back to the root is kept on the
/// heap, so that no depth of nesting exhausts the stack.
class ExportWalk {
public:
    ExportWalk(ExportMode mode, DocumentWriter& out) : mode_(mode), out_(out) {}

    void WriteObject(CAEObject& root);
    void WriteChildren(CAEObject& root);
    void WriteFiles(CAEObject& root);

private:
    /// An object whose node is open, and the section of it that is being written.
    struct OpenNode {
        explicit OpenNode(CAEObject& subject, CAEFile* fileOfRecord = nullptr)
            : object(subject), file(fileOfRecord) {}

        CAEObject& object;
        /// Set where the node is a file record.
        CAEFile* file;
        std::variant<std::monostate, ExportedChildren, ExportedFiles> section = {};
    };

    /// Writes what stands before the nesting sections and opens the first of them.
    void Enter(CAEObject& object, CAEFile* file);
    void OpenChildren(OpenNode& node);
    void OpenFiles(OpenNode& node);
    /// Writes the rest of the innermost node's open section, or enters the next element of it.
    bool EnterNext(OpenNode& node);
    void Run(bool isSectionOnly);

    ExportMode mode_;
    DocumentWriter& out_;
    std::deque<OpenNode> open_;
};

void ExportWalk::WriteObject(CAEObject& root) {
    Enter(root, nullptr);
    Run(false);
}

void ExportWalk::WriteChildren(CAEObject& root) {
    OpenChildren(open_.emplace_back(root));
    Run(true);
}

void ExportWalk::WriteFiles(CAEObject& root) {
    OpenFiles(open_.emplace_back(root));
    Run(true);
}

void ExportWalk::Enter(CAEObject& object, CAEFile* file) {
    WriteHeader(object, out_);
    WriteMetadata(object, out_);
    OpenChildren(open_.emplace_back(object, file));
}

void ExportWalk::OpenChildren(OpenNode& node) {
    out_.OpenArray(member::kChildren);
    node.section.emplace<ExportedChildren>(node.object, mode_);
}

void ExportWalk::OpenFiles(OpenNode& node) {
    out_.OpenArray(member::kFiles);
    node.section.emplace<ExportedFiles>(node.object);
}

bool ExportWalk::EnterNext(OpenNode& node) {
    CAEObject* element = nullptr;
    CAEFile* file = nullptr;
    if (auto* const children = std::get_if<ExportedChildren>(&node.section)) {
        // An object node for every kind: a file among the children is not a file record.
        element = children->Next();
    } else {
        file = std::get<ExportedFiles>(node.section).Next();
        element = file;
    }
    if (element == nullptr) {
        return false;
    }
    out_.OpenElement();
    Enter(*element, file);
    return true;
}

void ExportWalk::Run(bool isSectionOnly) {
    for (;;) {
        OpenNode& node = open_.back();
        if (EnterNext(node)) {
            continue;
        }
        out_.End();
        const bool isRoot = open_.size() == 1;
        if (!(isRoot && isSectionOnly) && std::holds_alternative<ExportedChildren>(node.section)) {
            OpenFiles(node);
            continue;
        }
        if (isRoot) {
            return;
        }
        if (node.file != nullptr) {
            WriteFileMembers(*node.file, out_);
        }
        out_.End();
        open_.pop_back();
    }
}

}  // namespace

void WriteObject(CAEObject& object, ExportMode mode, DocumentWriter& out) {
    ExportWalk(mode, out).WriteObject(object);
}

void CAEObjectJson::Export() {
    if (object_ != nullptr) {
        NodeWriter out(node_);
        WriteObject(*object_, ExportModeOfText(ModuleExportMode()), out);
    }
}

JSONNode CAEObjectJson::ExportChildren() {
    return SectionNode([this](NodeWriter& out) {
        if (object_ != nullptr) {
            ExportWalk(ExportModeOfText(ModuleExportMode()), out).WriteChildren(*object_);
        } else {
            out.OpenArray(member::kChildren);
            out.End();
        }
    });
}

JSONNode CAEObjectJson::ExportFiles() {
    return SectionNode([this](NodeWriter& out) {
        if (object_ != nullptr) {
            ExportWalk(ExportModeOfText(ModuleExportMode()), out).WriteFiles(*object_);
        } else {
            out.OpenArray(member::kFiles);
            out.End();
        }
    });
}

#include "ServerDocument.h"

#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "format/Kinds.h"
#include "format/MemberNames.h"
#include "host/document/DocumentNode.h"
#include "host/system/DatabaseError.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;
using korvane::exchange::NodeVisit;
using korvane::exchange::SectionOrder;
using korvane::exchange::WalkNodes;

namespace host {
namespace {

constexpr std::string_view kNoObject = "not stored, because it is not an object";

StoredNode MakeStored(const JSONNode& node, NodePlace place) {
    StoredNode stored;
    stored.node = node;
    stored.place = place;
    if (const JSONNode* const id = FindMember(node, member::kId)) {
        stored.identifier = ValueText(*id);
    }
    stored.type = place == NodePlace::FileRecord ? std::string(format::TypeOfKind(Kind::kFile))
                                                 : MemberText(node, member::kType);
    stored.givenKey = MemberText(node, member::kDatabaseKey);
    return stored;
}

}  // namespace

bool StoredNode::IsFile() const {
    return format::KindOfType(type) == Kind::kFile;
}

bool StoredNode::IsViewItem() const {
    return format::KindOfType(type) == Kind::kViewItem;
}

bool StoredNode::IsMasterAssembly() const {
    const Kind kind = format::KindOfType(type);
    return kind == Kind::kSubAssembly || kind == Kind::kIterationModel;
}

JSONNode NamedArray(format::MemberName name) {
    JSONNode array(JSON_ARRAY);
    array.set_name(name.c_str());
    return array;
}

std::vector<StoredNode> ListNodes(const JSONNode& document, Notes& notes) {
    std::vector<StoredNode> nodes;
    std::unordered_map<std::string, std::size_t> files;
    // The state of a node is its index in the list.
    using Visit = NodeVisit<const JSONNode, std::size_t>;
    const auto enter = [&](const Visit& visit) {
        if (visit.node.type() != JSON_NODE) {
            if (visit.above != nullptr) {
                notes.Add(kNoObject, [&] { return "in " + Describe(nodes[*visit.above].node); });
            }
            return false;
        }
        visit.own = nodes.size();
        StoredNode& stored = nodes.emplace_back(MakeStored(visit.node, visit.place));
        // Within one document an identifier is one object, and a file can be attached to several objects.
        stored.first = stored.IsFile() && stored.identifier
                           ? files.emplace(*stored.identifier, visit.own).first->second
                           : visit.own;
        if (visit.above != nullptr) {
            StoredNode& above = nodes[*visit.above];
            std::vector<std::size_t>& list =
                visit.place == NodePlace::FileRecord ? above.files : above.children;
            stored.above = *visit.above;
            stored.position = static_cast<std::int64_t>(list.size());
            list.push_back(visit.own);
        }
        return true;
    };
    WalkNodes<std::size_t>(document, SectionOrder::ChildrenFirst, enter, [](const Visit&) {});
    return nodes;
}

std::string KeptMembers(const StoredNode& stored, bool isRoot) {
    JSONNode kept(JSON_NODE);
    bool hasChildren = false;
    bool hasFiles = false;
    for (const JSONNode& value : std::as_const(stored.node)) {
        const std::string name = NameOfMember(value);
        const bool isChildren = name == member::kChildren && IsContainer(value);
        const bool isFiles = name == member::kFiles && IsContainer(value);
        if (isChildren || isFiles) {
            if (!std::exchange(isChildren ? hasChildren : hasFiles, true)) {
                kept.push_back(NamedArray(isChildren ? member::kChildren : member::kFiles));
            }
        } else if (!isRoot || name != member::kSubType) {
            kept.push_back(value);
        }
    }
    const auto text = kept.write();
    return {text.c_str(), text.size()};
}

JSONNode ParseKeptMembers(const std::string& keptMembers) {
    try {
        JSONNode kept = libjson::parse(json_string(keptMembers.data(), keptMembers.size()));
        if (kept.type() == JSON_NODE) {
            return kept;
        }
    } catch (const std::invalid_argument& error) {
        RefuseDamaged(std::string("the members of a node cannot be read: ") + error.what());
    }
    RefuseDamaged("the members of a node cannot be read: they are not an object");
}

void AddMissingMembers(JSONNode& node, const std::string& keptMembers) {
    std::unordered_set<std::string> names;
    for (const JSONNode& value : std::as_const(node)) {
        names.insert(NameOfMember(value));
    }
    const JSONNode kept = ParseKeptMembers(keptMembers);
    for (const JSONNode& value : kept) {
        if (!names.contains(NameOfMember(value))) {
            node.push_back(value);
        }
    }
}

JSONNode MakeAnswer(const std::vector<StoredNode>& nodes) {
    std::vector<JSONNode> answers(nodes.size(), JSONNode(JSON_NODE));
    // The nodes in a node come after it in the list, so they are finished first from the end.
    for (std::size_t index = nodes.size(); index-- > 0;) {
        const StoredNode& stored = nodes[index];
        JSONNode answer(JSON_NODE);
        if (stored.identifier) {
            answer.push_back(JSONNode(member::kId.c_str(), stored.identifier->c_str()));
        }
        answer.push_back(JSONNode(member::kDatabaseKey.c_str(), stored.key.c_str()));
        const auto putSection = [&](format::MemberName name, const std::vector<std::size_t>& elements) {
            if (elements.empty()) {
                return;
            }
            JSONNode array = NamedArray(name);
            for (const std::size_t element : elements) {
                array.push_back(std::exchange(answers[element], JSONNode(JSON_NODE)));
            }
            answer.push_back(array);
        };
        putSection(member::kChildren, stored.children);
        putSection(member::kFiles, stored.files);
        answers[index] = answer;
    }
    return answers.front();
}

}  // namespace host

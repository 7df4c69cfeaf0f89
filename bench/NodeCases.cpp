// The document as a tree: ours beside RapidJSON's, each made from the object model and freed.

#include <korvanejson/JsonSerializer.h>

#include <optional>
#include <utility>

#include "Case.h"
#include "HandExport.h"
#include "RapidJson.h"

namespace {

using Value = rapidjson::Value;

/// Names of members that are the format's need no copy; everything else is copied.
class DocumentTarget {
public:
    explicit DocumentTarget(rapidjson::Document& document) : document_(document) {}

    void OpenObject() { open_.push_back({Value(), Value(rapidjson::kObjectType)}); }
    void OpenObject(std::string_view name) {
        open_.push_back({Value(name.data(), RapidLength(name), allocator()), Value(rapidjson::kObjectType)});
    }
    void OpenArray(std::string_view name) { open_.push_back({Name(name), Value(rapidjson::kArrayType)}); }
    void Text(std::string_view name, const char* value) {
        Value text(value, RapidLength(value), allocator());
        open_.back().value.AddMember(Name(name), text, allocator());
    }
    void EndArray() { End(); }
    void EndObject() { End(); }

private:
    struct OpenValue {
        Value name;
        Value value;
    };

    static Value Name(std::string_view name) {
        return Value(rapidjson::StringRef(name.data(), RapidLength(name)));
    }
    rapidjson::Document::AllocatorType& allocator() { return document_.GetAllocator(); }

    void End() {
        OpenValue ended = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) {
            static_cast<Value&>(document_) = ended.value;
        } else if (Value& above = open_.back().value; above.IsArray()) {
            above.PushBack(ended.value, allocator());
        } else {
            above.AddMember(ended.name, ended.value, allocator());
        }
    }

    rapidjson::Document& document_;
    std::vector<OpenValue> open_;
};

class Node : public Case {
public:
    explicit Node(Subject& subject) : subject_(subject) {}

    void Run() override {
        const JSONNode document = JsonSerializer(&subject_.Project()).GetJson();
        members_ = document.size();
    }
    std::string Result() override {
        const JSONNode document = JsonSerializer(&subject_.Project()).GetJson();
        return document.size() == members_ ? document.write() : std::string();
    }

private:
    Subject& subject_;
    json_index_t members_ = 0;
};

class RapidDocument : public Case {
public:
    explicit RapidDocument(Subject& subject) : subject_(subject) {}

    void Run() override {
        rapidjson::Document document;
        Fill(document);
        members_ = document.MemberCount();
    }
    std::string Result() override {
        rapidjson::Document document;
        Fill(document);
        return document.MemberCount() == members_ ? RapidText(document) : std::string();
    }

private:
    void Fill(rapidjson::Document& document) {
        DocumentTarget target(document);
        HandExport(subject_.Project(), target).Write();
    }

    Subject& subject_;
    rapidjson::SizeType members_ = 0;
};

/// A copy of the whole tree, for those who change one and keep the other, and its freeing.
class NodeCopy : public Case {
public:
    explicit NodeCopy(Subject& subject) : document_(JsonSerializer(&subject.Project()).GetJson()) {}

    void Run() override { copy_ = document_.duplicate(); }
    std::string Result() override { return copy_.write(); }
    void Clear() override { copy_ = JSONNode(); }

private:
    JSONNode document_;
    JSONNode copy_;
};

class RapidCopy : public Case {
public:
    explicit RapidCopy(Subject& subject) {
        DocumentTarget target(document_);
        HandExport(subject.Project(), target).Write();
    }

    void Run() override { copy_.emplace().CopyFrom(document_, copy_->GetAllocator()); }
    std::string Result() override { return RapidText(*copy_); }
    void Clear() override { copy_.reset(); }

private:
    rapidjson::Document document_;
    std::optional<rapidjson::Document> copy_;
};

}  // namespace

std::vector<NamedCase> NodeCases() {
    return {
        {"node", kSameDocument, MakeCase<Node>},
        {"node-rapidjson", kSameDocument, MakeCase<RapidDocument>},
        {"copy", kSameDocument, MakeCase<NodeCopy>},
        {"copy-rapidjson", kSameDocument, MakeCase<RapidCopy>},
    };
}

// The server's answer to a store request: ours beside a key set on every object from a list of identifiers
// and keys.

#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include <cstdlib>
#include <utility>

#include "Case.h"

namespace {

std::string KeyFor(const json_string& id) {
    return "KEY-" + std::string(id.c_str());
}

JSONNode Answer(const JSONNode& document) {
    const json_string id = document.find("id")->as_string();
    JSONNode node(JSON_NODE);
    node.push_back(JSONNode("id", id));
    node.push_back(JSONNode("dbkey", KeyFor(id).c_str()));
    for (const char* const section : {"children", "files"}) {
        JSONNode array(JSON_ARRAY);
        array.set_name(section);
        for (const JSONNode& element : document.at(section)) {
            array.push_back(Answer(element));
        }
        node.push_back(array);
    }
    return node;
}

/// The project has other keys before and after.
class OntoProject : public Case {
public:
    explicit OntoProject(Subject& subject) : subject_(subject) {}

    std::string Result() override { return DocumentText(Project()); }
    void Clear() override { ResetKeys(Project()); }

protected:
    CAEProject& Project() { return subject_.Project(); }
    JSONNode Document() { return JsonSerializer(&Project()).GetJson(); }

private:
    Subject& subject_;
};

class ApplyAnswer : public OntoProject {
public:
    explicit ApplyAnswer(Subject& subject) : OntoProject(subject), answer_(Answer(Document())) {}

    void Run() override { caerest::json::ApplyJsonResponseOnObject(answer_, &Project()); }

private:
    JSONNode answer_;
};

class SetKeys : public OntoProject {
public:
    explicit SetKeys(Subject& subject) : OntoProject(subject) { Note(Document()); }

    void Run() override {
        for (const auto& [id, key] : keys_) {
            Project().getCAEObject(id)->setDBKey(OuString(key.c_str(), 0));
        }
    }

private:
    void Note(const JSONNode& document) {
        const json_string id = document.find("id")->as_string();
        keys_.emplace_back(std::atoi(id.c_str()), KeyFor(id));
        for (const char* const section : {"children", "files"}) {
            for (const JSONNode& element : document.at(section)) {
                Note(element);
            }
        }
    }

    std::vector<std::pair<int, std::string>> keys_;
};

}  // namespace

std::vector<NamedCase> AnswerCases() {
    return {
        {"answer", kSameAnswer, MakeCase<ApplyAnswer>},
        {"answer-by-hand", kSameAnswer, MakeCase<SetKeys>},
    };
}

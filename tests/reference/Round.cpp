#include "Round.h"

#include <EmbeddedOddAnswers.h>
#include <EmbeddedRecording.h>

#include <algorithm>
#include <functional>
#include <list>
#include <map>
#include <new>
#include <stdexcept>

#include "RandomDocuments.h"
#include "RandomTexts.h"

namespace {

using Kind = Action::Kind;
using Objects = std::vector<CAEObject*>;

CAEObject* At(const Objects& objects, int index) {
    return index < 0 || objects.empty() ? nullptr : objects[static_cast<std::size_t>(index) % objects.size()];
}

/// The object of a class that comes next at or behind the place.
template <typename Class>
Class* NextOf(const Objects& objects, int index) {
    for (std::size_t i = 0; index >= 0 && i < objects.size(); ++i) {
        if (auto* const found = dynamic_cast<Class*>(At(objects, index + static_cast<int>(i)))) {
            return found;
        }
    }
    return nullptr;
}

int CountVersions(const CAEObject& object) {
    OuArray majors;
    OuArray minors;
    object.getAvailableVersions(majors, minors);
    return majors.GetSize();
}

CAEObject* NextWithVersions(const Objects& objects, int index) {
    for (std::size_t i = 0; index >= 0 && i < objects.size(); ++i) {
        CAEObject* const found = At(objects, index + static_cast<int>(i));
        if (CountVersions(*found) > 0) {
            return found;
        }
    }
    return nullptr;
}

CAEObject* VersionOf(CAEObject* object, int index) {
    OuArray majors;
    OuArray minors;
    if (object != nullptr && index >= 0) {
        object->getAvailableVersions(majors, minors);
    }
    if (index >= majors.GetSize() || index < 0) {
        return object;
    }
    const CAEObject* version = nullptr;
    object->getPointerToVersion(static_cast<int>(reinterpret_cast<std::intptr_t>(majors.GetAt(index))),
                                static_cast<int>(reinterpret_cast<std::intptr_t>(minors.GetAt(index))),
                                version);
    return const_cast<CAEObject*>(version);
}

std::string Shown(const OuString& text) {
    return ShowNode(JSONNode(json_string(), text.GetAnsiBuffer()));
}

/// What an action is done to.
struct Subject {
    CAEObject* object = nullptr;
    CAEObject* otherObject = nullptr;
    CAEFile* file = nullptr;
    CAEObject* viewItem = nullptr;
};

/// What comes next and is of use: what has roles for files, what has versions, or just anything.
CAEObject* NextOfUse(const Objects& objects, const Action& action) {
    CAEObject* found = nullptr;
    switch (action.preference) {
        case Action::Preference::kPart:
            found = NextOf<CAEPart>(objects, action.object);
            break;
        case Action::Preference::kSubAssembly:
            found = NextOf<CAESubAssembly>(objects, action.object);
            break;
        case Action::Preference::kRunAssembly:
            found = NextOf<CAERunAssembly>(objects, action.object);
            break;
        case Action::Preference::kVersions:
            found = NextWithVersions(objects, action.object);
            break;
        default:
            break;
    }
    return found != nullptr ? found : At(objects, action.object);
}

Subject SubjectOf(const Action& action, const Objects& objects) {
    Subject subject;
    subject.object = VersionOf(NextOfUse(objects, action), action.version);
    subject.otherObject = At(objects, action.otherObject);
    subject.file = NextOf<CAEFile>(objects, action.object);
    subject.viewItem = NextOf<CAEViewItem>(objects, action.otherObject);
    if (subject.viewItem == nullptr || action.version >= 0) {
        subject.viewItem = subject.otherObject;
    }
    return subject;
}

std::string FlattenInto(Reading& reading, const Action& action) {
    std::map<std::string, std::string> keys;
    Random random(action.choice);
    for (int count = random.Below(4); count > 0; --count) {
        keys[std::to_string(random.Below(40))] = "before";
    }
    reading.Flatten(action.node, keys);
    std::string shown;
    for (const auto& [identifier, key] : keys) {
        shown += ShowNode(JSONNode(json_string(identifier.c_str()), json_string(key.data(), key.size())));
    }
    return shown;
}

std::string SmallThings(Reading& reading, const Action& action, const Subject& subject) {
    Random random(action.choice);
    std::string shown = reading.IsChildExported(subject.object) ? "exported\n" : "not exported\n";
    shown += Shown(reading.TypeName(random.Between(-2, 50)));
    shown += std::to_string(reading.KindOfTypeName(RandomTypeName(random))) + "\n";
    shown += Shown(reading.FormatName(subject.file));
    const OuString name = RandomWide(random);
    shown += ShowNode(reading.StringNode(name, RandomWide(random)));
    shown += Shown(reading.TypeField(action.node));
    shown += Shown(reading.NodeText(action.node));
    return shown;
}

std::string Sections(Reading& reading, const Subject& subject) {
    return ShowNode(reading.Metadata(subject.object)) + ShowNode(reading.Children(subject.object)) +
           ShowNode(reading.Files(subject.object));
}

/// Does the action and shows what it returns.
std::string Do(const Action& action, const Subject& subject, Reading& reading) {
    JSONNode node = action.node;
    switch (action.kind) {
        case Kind::kDocument:
            return ShowNode(reading.Document(subject.object, action.mode));
        case Kind::kDocumentText:
            return Shown(reading.DocumentText(subject.object, action.mode));
        case Kind::kImport:
            reading.Import(node, subject.object);
            return "";
        case Kind::kImportOfExport:
            node = reading.Document(subject.object, action.mode);
            reading.Import(node, subject.otherObject);
            return ShowNode(node);
        case Kind::kApplyAnswer:
            reading.ApplyAnswer(node, subject.object);
            return "";
        case Kind::kFlatten:
            return FlattenInto(reading, action);
        case Kind::kObjectNodeOver:
            return ShowNode(reading.ObjectNodeOver(node, subject.object));
        case Kind::kFileRecord:
            return ShowNode(reading.FileRecord(subject.file));
        case Kind::kSections:
            return Sections(reading, subject);
        case Kind::kVersions:
            return ShowNode(reading.Versions(node, subject.object));
        case Kind::kFullVersions:
            return ShowNode(reading.FullVersions(node, subject.object));
        case Kind::kImportMembers:
            reading.ImportMembers(node, subject.object);
            return "";
        case Kind::kImportMetadata:
            reading.ImportMetadata(node, subject.object);
            return "";
        case Kind::kImportChildren:
            reading.ImportChildren(node, subject.object);
            return "";
        case Kind::kImportFiles:
            reading.ImportFiles(node, subject.object);
            return "";
        case Kind::kImportVersions:
            reading.ImportVersions(node, subject.object);
            return "";
        case Kind::kImportLooseMetadata:
            reading.ImportLooseMetadata(node, subject.object);
            return "";
        case Kind::kImportFileRecord:
            reading.ImportFileRecord(node, subject.file);
            return "";
        case Kind::kResolveReference:
            reading.ResolveReference(subject.object, subject.viewItem);
            return "";
        case Kind::kSmallThings:
            return SmallThings(reading, action, subject);
    }
    return "";
}

/// An odd answer before it is given.
struct Planned {
    std::string call;
    korvane::Answer answer;
    korvane::OddAnswer::Times times = korvane::OddAnswer::kOnce;
};

Planned Plan(const Oddity& oddity, const Objects& asked, const Objects& answers) {
    Planned planned;
    planned.call = oddity.operation;
    constexpr const char* kAskObjects[] = {"CAEObject::getType", "CAEObject::getParent",
                                           "CAEObject::getProject", "CAEObject::getChildrenList"};
    if (oddity.asked >= 0 && std::ranges::find(kAskObjects, planned.call) != std::end(kAskObjects)) {
        planned.call += "(#" + std::to_string(At(asked, oddity.asked)->getID()) + ")";
    }
    planned.answer.status = oddity.status;
    planned.answer.identifier = oddity.identifier;
    planned.answer.type = static_cast<_tagCAEObjectType>(oddity.type);
    planned.answer.object = At(answers, oddity.answer);
    planned.answer.text = oddity.text;
    for (const int child : oddity.children) {
        planned.answer.children.push_back(At(answers, child));
    }
    planned.times = oddity.always ? korvane::OddAnswer::kAlways : korvane::OddAnswer::kOnce;
    return planned;
}

bool ImportsVersions(const Round& round) {
    return std::ranges::any_of(round.actions,
                               [](const Action& action) { return action.kind == Kind::kImportVersions; });
}

std::vector<Planned> PlanOddAnswers(const Round& round, bool throws, const RandomModel& model) {
    std::vector<Planned> plans;
    if (throws) {
        plans.push_back({"", {.throws = true, .after = round.throwsAfter}});
    }
    const Objects objects = model.Objects();
    const Objects projects = {model.Roots()[0], model.Roots()[1]};
    // Taking a version over destroys what lay under the object, and nobody may answer with that.
    const Objects lasting = ImportsVersions(round) ? model.Roots() : objects;
    for (const Oddity& oddity : round.oddities) {
        const bool isVersion = oddity.operation == "CAEObject::getPointerToVersion";
        plans.push_back(Plan(oddity, objects, isVersion ? projects : lasting));
    }
    return plans;
}

std::string Attempt(const std::function<std::string()>& work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return "throws std::bad_alloc";
    } catch (const std::out_of_range&) {
        return "throws std::out_of_range";
    } catch (const std::exception& exception) {
        return std::string("throws ") + exception.what();
    }
}

void AppendLines(const std::string& text, std::vector<std::string>& lines) {
    std::size_t start = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    if (start < text.size()) {
        lines.push_back(text.substr(start));
    }
}

}  // namespace

std::vector<std::string> Run(const Round& round, Reading& reading) {
    libjson::set_text_units(round.units);
    const RandomModel model(round.steps);
    // The module's mode outlives a round; every round begins with the empty one.
    reading.Document(nullptr, OuString());
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < round.actions.size(); ++i) {
        const Action& action = round.actions[i];
        const std::string before = ShowNode(action.node);
        const Subject subject = SubjectOf(action, model.Objects());
        const bool throws = round.throwingAction == static_cast<int>(i);
        const std::vector<Planned> plans = PlanOddAnswers(round, throws, model);
        // From here on the model answers oddly, and only the reading may ask it.
        std::list<korvane::OddAnswer> oddAnswers;
        for (const Planned& plan : plans) {
            oddAnswers.emplace_back(plan.call.c_str(), plan.answer, plan.times);
        }
        korvane::StartRecording();
        const std::string result = Attempt([&] { return Do(action, subject, reading); });
        const std::vector<std::string> notes = korvane::TakeRecording();
        oddAnswers.clear();
        lines.push_back("action " + std::to_string(i) + " asks");
        lines.insert(lines.end(), notes.begin(), notes.end());
        lines.push_back("action " + std::to_string(i) + " gives");
        AppendLines(result, lines);
        if (ShowNode(action.node) != before) {
            lines.push_back("and has changed the caller's node");
        }
    }
    const std::vector<std::string> state = StateOf(model);
    lines.insert(lines.end(), state.begin(), state.end());
    return lines;
}

#include "RoundParts.h"

#include <algorithm>

#include "platform/korvane/Ask.h"

namespace {

using Objects = std::vector<CAEObject*>;

CAEObject* At(const Objects& objects, int index) {
    return index < 0 || objects.empty() ? nullptr : objects[static_cast<std::size_t>(index) % objects.size()];
}

/// The object that comes next, at or behind the place, and is as asked for; null if there is none.
template <typename Condition>
CAEObject* Next(const Objects& objects, int index, const Condition& isWanted) {
    for (std::size_t i = 0; index >= 0 && i < objects.size(); ++i) {
        CAEObject* const object = At(objects, index + static_cast<int>(i));
        if (isWanted(*object)) {
            return object;
        }
    }
    return nullptr;
}

template <typename Class>
bool IsA(CAEObject& object) {
    return dynamic_cast<Class*>(&object) != nullptr;
}

bool HasVersions(CAEObject& object) {
    return !VersionsOf(object).empty();
}

/// What comes next and is of use: what has roles for files, what has versions, or just anything.
CAEObject* NextOfUse(const Objects& objects, const Action& action) {
    using Condition = bool (*)(CAEObject&);
    constexpr Condition kConditions[] = {[](CAEObject&) { return true; }, IsA<CAEPart>, IsA<CAESubAssembly>,
                                         IsA<CAERunAssembly>, HasVersions};
    CAEObject* const found =
        Next(objects, action.object, kConditions[static_cast<std::size_t>(action.preference)]);
    return found != nullptr ? found : At(objects, action.object);
}

CAEObject* VersionAt(CAEObject* object, int index) {
    const Numbers versions = object != nullptr && index >= 0 ? VersionsOf(*object) : Numbers();
    if (index < 0 || static_cast<std::size_t>(index) >= versions.size()) {
        return object;
    }
    const auto& [major, minor] = versions[static_cast<std::size_t>(index)];
    return VersionOf(*object, major, minor);
}

PlannedAnswer Plan(const Oddity& oddity, const Objects& asked, const Objects& answers) {
    PlannedAnswer planned;
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
    return std::ranges::any_of(
        round.actions, [](const Action& action) { return action.kind == Action::Kind::kImportVersions; });
}

}  // namespace

Subject FindSubject(const Action& action, const RandomModel& model) {
    const Objects objects = model.Objects();
    Subject subject;
    subject.object = VersionAt(NextOfUse(objects, action), action.version);
    subject.otherObject = At(objects, action.otherObject);
    subject.file = dynamic_cast<CAEFile*>(Next(objects, action.object, IsA<CAEFile>));
    subject.viewItem = Next(objects, action.otherObject, IsA<CAEViewItem>);
    if (subject.viewItem == nullptr || action.version >= 0) {
        subject.viewItem = subject.otherObject;
    }
    return subject;
}

std::vector<PlannedAnswer> PlanAnswers(const Round& round, bool throws, const RandomModel& model) {
    std::vector<PlannedAnswer> plans;
    if (throws) {
        plans.push_back({"", {.throws = true, .after = round.throwsAfter}});
    }
    const Objects objects = model.Objects();
    const Objects projects = {model.Roots()[0], model.Roots()[1]};
    // Taking a version over destroys what was below the object, and no answer may contain that.
    const Objects lasting = ImportsVersions(round) ? model.Roots() : objects;
    for (const Oddity& oddity : round.oddities) {
        const bool isVersion = oddity.operation == "CAEObject::getPointerToVersion";
        plans.push_back(Plan(oddity, objects, isVersion ? projects : lasting));
    }
    return plans;
}

#include "Round.h"

#include <EmbeddedRecording.h>

#include <functional>
#include <list>
#include <map>
#include <new>
#include <stdexcept>

#include "RandomTexts.h"
#include "RoundParts.h"
#include "Show.h"

namespace {

using Kind = Action::Kind;

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
    shown += ShowText(reading.TypeName(random.Between(-2, 50))) + "\n";
    shown += std::to_string(reading.KindOfTypeName(RandomTypeName(random))) + "\n";
    shown += ShowText(reading.FormatName(subject.file)) + "\n";
    const OuString name = RandomWide(random);
    shown += ShowNode(reading.StringNode(name, RandomWide(random)));
    shown += ShowText(reading.TypeField(action.node)) + "\n";
    shown += ShowText(reading.ObjectNodeText(action.node));
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
            return ShowText(reading.DocumentText(subject.object, action.mode));
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
        const Subject subject = FindSubject(action, model);
        const bool throws = round.throwingAction == static_cast<int>(i);
        const std::vector<PlannedAnswer> plans = PlanAnswers(round, throws, model);
        // From here on the model answers oddly, and only the reading may ask it.
        std::list<korvane::OddAnswer> oddAnswers;
        for (const PlannedAnswer& plan : plans) {
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
            lines.emplace_back("and has changed the caller's node");
        }
    }
    const std::vector<std::string> state = StateOf(model);
    lines.insert(lines.end(), state.begin(), state.end());
    return lines;
}

#include <cstddef>

#include "Round.h"
#include "Show.h"

namespace {

constexpr const char* kNamesOfKinds[] = {"document",
                                         "document text",
                                         "import",
                                         "import of an export",
                                         "answer",
                                         "flattening",
                                         "object node over a node",
                                         "file record",
                                         "sections",
                                         "versions",
                                         "versions with \"versions\"",
                                         "import of members",
                                         "import of metadata",
                                         "import of children",
                                         "import of files",
                                         "import of versions",
                                         "import of metadata without a project",
                                         "import of a file record",
                                         "view item reference",
                                         "small things"};

constexpr const char* kNamesOfPreferences[] = {"itself", "or the next part", "or the next sub-assembly",
                                               "or the next run assembly", "or the next with versions"};

std::string Describe(const Action& action) {
    return std::string(kNamesOfKinds[static_cast<std::size_t>(action.kind)]) + " of object " +
           std::to_string(action.object) + " " +
           kNamesOfPreferences[static_cast<std::size_t>(action.preference)] + ", version " +
           std::to_string(action.version) + ", other object " + std::to_string(action.otherObject) +
           ", mode \"" + action.mode.GetAnsiBuffer() + "\"\n" + ShowNode(action.node);
}

std::string Describe(const Oddity& oddity) {
    std::string text = oddity.operation + " of object " + std::to_string(oddity.asked) +
                       (oddity.always ? " always" : " once") + " answers with the status " +
                       std::to_string(oddity.status) + ", the kind " + std::to_string(oddity.type) +
                       ", object " + std::to_string(oddity.answer) + ", the children";
    for (const int child : oddity.children) {
        text += " " + std::to_string(child);
    }
    return text + ", the identifier " + (oddity.identifier ? std::to_string(*oddity.identifier) : "none") +
           ", the text " + (oddity.text != nullptr ? oddity.text : "null") + "\n";
}

}  // namespace

std::string Describe(const Round& round) {
    std::string text =
        round.units == libjson::text_units::utf8 ? "text units: UTF-8\n" : "text units: bytes\n";
    for (std::size_t i = 0; i < round.actions.size(); ++i) {
        text += "action " + std::to_string(i) + ": " + Describe(round.actions[i]);
    }
    if (round.throwingAction >= 0) {
        text += "In action " + std::to_string(round.throwingAction) + " the object model throws after " +
                std::to_string(round.throwsAfter) + " operations.\n";
    }
    for (const Oddity& oddity : round.oddities) {
        text += Describe(oddity);
    }
    text += "The model, from " + std::to_string(round.steps.size()) + " steps:\n";
    for (const std::string& line : StateOf(RandomModel(round.steps))) {
        text += "  " + line + "\n";
    }
    return text;
}

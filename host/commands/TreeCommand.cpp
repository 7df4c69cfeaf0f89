#include <charconv>
#include <memory>

#include "Commands.h"
#include "ExitStatus.h"
#include "ObjectInput.h"
#include "Output.h"
#include "host/document/ObjectJson.h"
#include "host/document/StudyList.h"
#include "host/document/TreePrinter.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr const char* kAll = "all";
constexpr const char* kWithRoles = "roles";
constexpr const char* kNone = "none";

struct TreeOptions {
    InputOptions from;
    ReportFormat format = ReportFormat::Text;
    std::string files = kAll;
    std::optional<std::size_t> depth;
    bool areStudiesListed = false;
};

TreeContent ContentOf(const TreeOptions& options) {
    return {.depth = options.depth,
            .files = options.files == kNone        ? FilesShown::None
                     : options.files == kWithRoles ? FilesShown::WithRoles
                                                   : FilesShown::All};
}

std::string JsonOf(CAEObject& root, const TreeOptions& options) {
    const TreeContent content = ContentOf(options);
    std::vector<std::string> objects;
    WalkObjects(root, [&](const WalkedObject& walked) {
        // Attached files are members of their objects here.
        const bool isHiddenFile = walked.object.getType() == CAE_FILE && content.files != FilesShown::All;
        const bool isShown = !walked.isAttached && !isHiddenFile &&
                             (!content.depth || walked.depth <= *content.depth) &&
                             (!options.areStudiesListed || walked.object.getType() == CAE_MODEL);
        if (isShown) {
            JsonText json;
            WriteObject(walked, content.files, json);
            objects.push_back(json.Take());
        }
    });
    return ObjectListJson(objects);
}

std::string TextOf(CAEObject& root, const TreeOptions& options) {
    if (options.format == ReportFormat::Json) {
        return JsonOf(root, options);
    }
    return options.areStudiesListed
               ? ListStudies(root)
               : PrintTree(root, {IsOutputUtf8(), IsOutputColoured()}, ContentOf(options));
}

/// What is wrong with a number of levels; empty if nothing is.
std::string CheckDepth(const std::string& text) {
    std::size_t depth = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, depth);
    return error == std::errc() && rest == end ? "" : Quoted(text) + " is not a number of levels, like 2";
}

}  // namespace

void AddTreeCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<TreeOptions>();
    const Command command =
        AddCommand(program, "tree", "Print the objects of a project: kinds, names, files and metadata");
    AddObjectInput(command, options->from);
    const Option depth =
        command
            .AddOption("--depth", options->depth,
                       "Show only so many levels below the project; files are a level below their\n"
                       "object: --depth 2")
            .Type("LEVELS")
            .Check(CheckDepth);
    // A list of studies has no levels.
    command
        .AddFlag("--studies", options->areStudiesListed,
                 "Show a line for each study instead: solvers, iterations, files, size and\n"
                 "description")
        .Excludes(depth);
    AddChoice(command, "--files", options->files, {kAll, kWithRoles, kNone}, "WHICH",
              "all (the default) shows all files, roles those that are the CAD file, a mesh,\n"
              "the graphic file or the deck of their object, none none: --files roles");
    AddFormat(command, options->format,
              "text (the default) is for people, json for programs, as\n"
              "docs/objects.schema.json describes: --format json");
    AddExamples(command,
                "  korvane-json tree projects/bracket\n"
                "  korvane-json tree --studies projects/bracket\n"
                "  korvane-json tree --depth 3 --files none bracket.kvp\n"
                "  korvane-json tree --strict projects/bracket > bracket.txt\n");
    command.Call([options, &console, &status] {
        status = WithObjects(options->from, std::nullopt, console, [&](CAEObject& root) {
            return WriteToStandardOutput(TextOf(root, *options), console);
        });
    });
}

}  // namespace host

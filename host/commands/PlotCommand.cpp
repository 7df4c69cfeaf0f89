#include <korvaneexchange/Text.h>

#include <algorithm>
#include <memory>

#include "Commands.h"
#include "ExitStatus.h"
#include "ObjectInput.h"
#include "Output.h"
#include "host/document/DocumentFile.h"
#include "host/document/ObjectTexts.h"
#include "host/plot/PlotData.h"
#include "host/query/FieldNames.h"
#include "host/query/TextMatch.h"
#include "host/system/NearestWord.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct PlotOptions {
    InputOptions from;
    std::vector<std::string> conditions;
    std::string x;
    std::string y;
    std::string by;
    std::string kind;
    std::optional<std::string> title;
    std::string output = kStandardStream;
};

bool IsAmong(const std::vector<std::string>& names, const std::string& wanted) {
    const std::string folded = FoldCase(wanted);
    return std::ranges::any_of(names, [&](const std::string& name) { return FoldCase(name) == folded; });
}

/// Says why there are no points.
void SayNothingToPlot(const std::vector<std::string>& names, const PlotRequest& request, const PlotData& data,
                      const std::string& input, Console& console) {
    const bool isMissing = data.withX == 0 || data.withY == 0;
    if (!isMissing) {
        console.Say("cannot plot " + input + ": no object has numbers for both " + Quoted(request.x.name) +
                    " (" + FormatCount(data.withX, "object", "objects") + ") and " + Quoted(request.y.name) +
                    " (" + FormatCount(data.withY, "object", "objects") +
                    "), itself or from an object above it, in units that can be compared");
        return;
    }
    const Field& field = data.withX == 0 ? request.x : request.y;
    const std::string nearest = IsAmong(names, field.name) ? "" : DidYouMean(NearestWord(field.name, names));
    console.Say("cannot plot " + input + ": no object" +
                (request.conditions.empty() ? "" : " that meets the conditions") + " has a number " +
                Quoted(field.name) +
                (names.empty() ? "; there are no metadata entries with numbers"
                               : (nearest.empty() ? "." : nearest) + " Metadata entries with numbers are " +
                                     ListNames(names)));
}

/// A project of which a user asks the size has an entry of that name more often than files that are compared.
void PreferEntry(const std::vector<std::string>& names, Field& field) {
    if (IsAmong(names, field.name)) {
        field = EntryNamed(field.name);
    }
}

bool PlotObjects(CAEObject& root, PlotRequest request, const PlotOptions& options, Console& console) {
    CAEProject* const project = root.getProject();
    if (project != nullptr && !IsReplaceableIn(*project, options.output, console)) {
        return false;
    }
    const std::vector<std::string> names = NamesOfNumbers(root);
    PreferEntry(names, request.x);
    PreferEntry(names, request.y);
    request.title = options.title ? *options.title : korvane::exchange::ToUtf8(NameOf(root));
    const PlotData data = ReadPlotData(root, request);
    const std::string input = InputName(options.from.input);
    data.notes.Say(input, console);
    if (data.plot.points.empty()) {
        SayNothingToPlot(names, request, data, input, console);
        return false;
    }
    if (request.by) {
        SayUnknownNames(root, {*request.by}, input, console);
    }
    return WriteOutput(options.output, DrawPlot(data.plot, PlotPlace::File), console);
}

int DrawObjects(const PlotOptions& options, Console& console) {
    std::vector<std::string> texts = options.conditions;
    if (!options.kind.empty()) {
        texts.push_back("kind=" + options.kind);
    }
    std::variant<std::vector<Condition>, std::string> conditions = ParseConditions(texts);
    if (const auto* const complaint = std::get_if<std::string>(&conditions)) {
        console.Say(*complaint + ". See 'korvane-json plot --help'");
        return kBadUsage;
    }
    PlotRequest request{FieldOf(options.x), FieldOf(options.y), std::nullopt,
                        std::get<std::vector<Condition>>(std::move(conditions)), ""};
    if (!options.by.empty()) {
        request.by = FieldOf(options.by);
    }
    if (!IsReplaceable(options.output, {options.from.input}, console)) {
        return kFailure;
    }
    return WithObjects(options.from, options.output, console, [&](CAEObject& root) {
        return PlotObjects(root, std::move(request), options, console);
    });
}

constexpr const char* kPlotNotes =
    "A point is an object that has a number for x or y, and for the other one itself or from the\n"
    "nearest object above it that has one; the same holds for --by. An axis has the unit that most of\n"
    "its numbers can be converted to; the others are named and left out. When the pointer rests on a\n"
    "point, the object's path and values are shown.";

}  // namespace

void AddPlotCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<PlotOptions>();
    const Command command =
        AddCommand(program, "plot", "Draw two numbers of the objects as points, as an SVG picture");
    AddObjectInput(command, options->from);
    command
        .AddOption("CONDITION", options->conditions,
                   "Conditions that objects must meet, as for find: kind=Iteration 'Mass>2 kg'")
        .Type("");
    command.AddOption("--x", options->x, "The metadata entry along the horizontal axis: --x Mass")
        .Type("NAME")
        .Required();
    command
        .AddOption("--y", options->y,
                   "The metadata entry along the vertical axis: --y 'Largest Displacement'")
        .Type("NAME")
        .Required();
    command
        .AddOption("--by", options->by,
                   "Draw objects with different values of this in different colours and shapes,\n"
                   "with a legend: --by Solver")
        .Type("NAME");
    command.AddOption("--kind", options->kind, "Only objects of this kind: --kind Study").Type("KIND");
    command.AddOption("--title", options->title, "The title instead of the project's name: --title Brackets")
        .Type("TEXT");
    command
        .AddOption("-o,--output", options->output,
                   "The file to write to. - is the standard output (the default): -o plot.svg")
        .Type("FILE");
    AddExamples(
        command,
        "  korvane-json plot projects/bracket --x Files --y Size --kind Study -o sizes.svg\n"
        "  korvane-json plot bracket.kvp --x Mass --y 'Largest Displacement' --by Solver -o mass.svg\n",
        kPlotNotes);
    command.Call([options, &console, &status] { status = DrawObjects(*options, console); });
}

}  // namespace host

#include <algorithm>
#include <memory>
#include <numeric>

#include "Commands.h"
#include "ExitStatus.h"
#include "ObjectInput.h"
#include "Output.h"
#include "host/document/DocumentFile.h"
#include "host/document/ObjectJson.h"
#include "host/query/Condition.h"
#include "host/query/FieldNames.h"
#include "host/query/ObjectTable.h"
#include "host/query/SortKey.h"

namespace host {
namespace {

constexpr const char* kLines = "lines";
constexpr const char* kCsv = "csv";
constexpr const char* kJson = "json";

struct FindOptions {
    InputOptions from;
    std::vector<std::string> conditions;
    std::string format = kLines;
    std::vector<std::string> shown;
    std::string sorted;
    bool isCounted = false;
};

/// What was found, in one of the three forms.
struct Found {
    std::vector<ObjectTable::Row> rows;
    std::vector<std::string> json;
    std::vector<SortKey> keys;
    std::size_t count = 0;
};

class Search {
public:
    Search(const FindOptions& options, std::vector<Condition> conditions)
        : options_(options), conditions_(std::move(conditions)), table_(FieldsOf(options.shown)) {}

    /// Prints what meets the conditions. Returns whether that could be written.
    bool Run(CAEObject& root, Console& console);

private:
    static std::vector<Field> FieldsOf(const std::vector<std::string>& names);
    void Visit(const WalkedObject& walked);
    void Sort();
    std::string Text() const;
    void SayWhatIsOdd(CAEObject& root, Console& console) const;

    const FindOptions& options_;
    std::vector<Condition> conditions_;
    ObjectTable table_;
    Units units_;
    Notes notes_;
    Found found_;
};

std::vector<Field> Search::FieldsOf(const std::vector<std::string>& names) {
    std::vector<Field> fields;
    std::ranges::transform(names, std::back_inserter(fields), FieldOf);
    return fields;
}

void Search::Visit(const WalkedObject& walked) {
    const bool isFound = std::ranges::all_of(
        conditions_, [&](const Condition& condition) { return condition.IsMet(walked, units_, notes_); });
    if (!isFound) {
        return;
    }
    ++found_.count;
    if (options_.isCounted) {
        return;
    }
    if (options_.format == kJson) {
        JsonText json;
        WriteObject(walked, FilesShown::All, json);
        found_.json.push_back(json.Take());
    } else {
        found_.rows.push_back(options_.format == kCsv ? table_.RowForPrograms(walked)
                                                      : table_.RowForPeople(walked));
    }
    if (!options_.sorted.empty()) {
        found_.keys.emplace_back(FieldOf(options_.sorted), walked);
    }
}

void Search::Sort() {
    std::vector<std::string> given;
    for (const SortKey& key : found_.keys) {
        if (const std::optional<std::string> unit = key.Unit()) {
            given.push_back(*unit);
        }
    }
    const std::string common = CommonUnit(given, units_);
    std::ranges::for_each(found_.keys, [&](SortKey& key) { key.ConvertTo(common, units_); });
    std::vector<std::size_t> order(found_.keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(
        order, [&](std::size_t left, std::size_t right) { return found_.keys[left] < found_.keys[right]; });
    const auto arrange = [&](auto& values) {
        std::remove_reference_t<decltype(values)> sorted;
        for (const std::size_t index : values.empty() ? std::vector<std::size_t>() : order) {
            sorted.push_back(std::move(values[index]));
        }
        values = std::move(sorted);
    };
    arrange(found_.rows);
    arrange(found_.json);
}

std::string Search::Text() const {
    if (options_.isCounted) {
        const std::string count = std::to_string(found_.count);
        return options_.format == kJson ? "{\"count\":" + count + "}\n" : count + '\n';
    }
    if (options_.format == kJson) {
        return ObjectListJson(found_.json);
    }
    return options_.format == kCsv ? table_.Csv(found_.rows) : ObjectTable::Lines(found_.rows);
}

void Search::SayWhatIsOdd(CAEObject& root, Console& console) const {
    std::vector<Field> fields = FieldsOf(options_.shown);
    if (!options_.sorted.empty()) {
        fields.push_back(FieldOf(options_.sorted));
    }
    std::ranges::transform(conditions_, std::back_inserter(fields), &Condition::GetField);
    const std::string input = InputName(options_.from.input);
    SayUnknownNames(root, fields, input, console);
    notes_.Say(input, console);
    if (found_.count == 0 && options_.format == kLines && !options_.isCounted) {
        console.Note("no object of " + input + " meets the conditions");
    }
}

bool Search::Run(CAEObject& root, Console& console) {
    WalkObjects(root, [this](const WalkedObject& walked) { Visit(walked); });
    if (!options_.sorted.empty()) {
        Sort();
    }
    const std::string text = Text();
    SayWhatIsOdd(root, console);
    // The list comes last: when it is there, nothing can fail any more.
    return WriteToStandardOutput(text, console);
}

int Find(const FindOptions& options, Console& console) {
    std::variant<std::vector<Condition>, std::string> conditions = ParseConditions(options.conditions);
    if (const auto* const complaint = std::get_if<std::string>(&conditions)) {
        console.Say(*complaint + ". See 'korvane-json find --help'");
        return kBadUsage;
    }
    Search search(options, std::get<std::vector<Condition>>(std::move(conditions)));
    return WithObjects(options.from, std::nullopt, console,
                       [&](CAEObject& root) { return search.Run(root, console); });
}

constexpr const char* kFindNotes =
    "Conditions, all of which must be met:\n"
    "  NAME=VALUE    the same text; letter case does not count. != the opposite\n"
    "  NAME~PATTERN  * is any text, ? one character, [a-c] one of these. !~ the opposite\n"
    "  NAME<VALUE    also <= > >=. Numbers are compared as numbers, in the unit of the condition\n"
    "Put conditions in quotation marks: the shell has its own use for < > * and !.\n"
    "\n"
    "Names are those of metadata entries, and these words:\n"
    "  kind     Part, Study, Iteration, ... as in tree\n"
    "  name, id, key, created, creator\n"
    "  path     the names from below the root: Linear/* (** is any number of names)\n"
    "  file     the names of the object's files: file~*.frd, file!~*.step\n"
    "  has      cad, mesh, graphic, deck, result, picture, ..., file, key: has=mesh has!=cad\n"
    "           A study has the files of its iterations and parts, too\n"
    "  type, size   of a file: Picture, '1 MB'\n"
    "A metadata entry that is named like one of these words is metadata:NAME.";

}  // namespace

void AddFindCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<FindOptions>();
    const Command command = AddCommand(program, "find", "List the objects that meet conditions");
    AddObjectInput(command, options->from);
    command
        .AddOption("CONDITION", options->conditions,
                   "Conditions that objects must meet: kind=Part name~bracket* 'Mass>2 kg'.\n"
                   "Without any, all objects are listed")
        .Type("");
    AddChoice(command, "--format", options->format, {kLines, kJson, kCsv}, "FORMAT",
              "lines (the default) for people; json as docs/objects.schema.json describes,\n"
              "with everything that the objects have; csv for spreadsheets: --format csv");
    command
        .AddOption("--show", options->shown,
                   "Show this value of the objects as well; may be given again: --show Mass")
        .Type("NAME")
        .OneEachTime();
    command.AddOption("--sort", options->sorted, "Sort by this value: --sort Mass").Type("NAME");
    command.AddFlag("--count", options->isCounted, "Print only how many objects there are");
    AddExamples(command,
                "  korvane-json find projects/bracket kind=Study --show Solver\n"
                "  korvane-json find projects/bracket kind=Part has=mesh 'has!=cad'\n"
                "  korvane-json find bracket.kvp 'Mass>2 kg' 'path=**/static/*' --format csv\n",
                kFindNotes);
    command.Call([options, &console, &status] { status = Find(*options, console); });
}

}  // namespace host

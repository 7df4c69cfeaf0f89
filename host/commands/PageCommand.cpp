#include <korvaneexchange/Compare.h>

#include <charconv>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Commands.h"
#include "Complaint.h"
#include "ExitStatus.h"
#include "ObjectInput.h"
#include "Options.h"
#include "Output.h"
#include "ProjectInput.h"
#include "host/document/CompareText.h"
#include "host/document/DocumentFile.h"
#include "host/document/ObjectTexts.h"
#include "host/page/PageWriter.h"
#include "host/system/FileSystem.h"
#include "host/system/ReadableDirectories.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct PageOptions {
    InputOptions from;
    /// The project that it is compared with; empty if there is none.
    std::string other;
    Ignored ignored;
    std::string title;
    std::string pictures = "20M";
    std::string models = "20M";
    std::string output;
};

/// The number of bytes that a text like 500k or 20M means; nothing if it is not a size.
std::optional<std::uint64_t> ParseSize(std::string_view text) {
    constexpr std::string_view kUnits = "KMGT";
    std::uint64_t number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    std::string unit = ToUpperAscii(text.substr(static_cast<std::size_t>(rest - text.data())));
    if (error != std::errc()) {
        return std::nullopt;
    }
    if (unit.ends_with('B')) {
        unit.pop_back();
    }
    const std::size_t power = unit.empty() ? 0 : kUnits.find(unit) + 1;
    if (unit.size() > 1 || (power == 0 && !unit.empty())) {
        return std::nullopt;
    }
    for (std::size_t step = 0; step < power; ++step) {
        if (number > std::numeric_limits<std::uint64_t>::max() / 1000) {
            return std::nullopt;
        }
        number *= 1000;
    }
    return number;
}

korvane::exchange::CompareOptions ComparisonOf(const PageOptions& options, PageComparison& comparison,
                                               Console& console) {
    korvane::exchange::CompareOptions comparing = UsualComparison();
    comparing.ignoreDates = options.ignored.dates;
    comparing.ignoreKeys = options.ignored.keys || KindOfInput(options.from.input) == InputKind::Directory ||
                           KindOfInput(options.other) == InputKind::Directory;
    comparing.pairs = [&comparison](int first, int second) { comparison.pairs.emplace_back(first, second); };
    comparing.progress = [&console](const korvane::exchange::Progress& progress) {
        console.ShowProgress("Comparing", progress.objects, progress.total);
        return true;
    };
    return comparing;
}

PageComparison CompareSides(CAEObject& first, CAEObject& second, const PageOptions& options,
                            Console& console) {
    PageComparison comparison;
    const korvane::exchange::CompareReport report =
        korvane::exchange::Compare(first, second, ComparisonOf(options, comparison, console));
    console.ClearProgress();
    for (const korvane::exchange::Entry& entry : report.entries) {
        // The sentence begins with the subject, which the page shows as the object.
        comparison.changes.push_back(
            {MarkOf(entry.reason), entry.identifier, entry.sentence.substr(entry.subject.size() + 2)});
    }
    comparison.summary = SummaryOf(report);
    if (report.unlisted > 0) {
        comparison.summary += ", " + std::to_string(report.unlisted) + " of them not listed";
    }
    return comparison;
}

/// The directories whose files the page may show of what `name` names. Those that the user has named are
/// among them whichever side they are given for; what lies beside a project file is only that file's own.
ReadableDirectories ReadableFor(const std::string& name, const PageOptions& options) {
    ReadableDirectories readable;
    for (const std::string& input : {options.from.input, options.other}) {
        if (!input.empty() && KindOfInput(input) == InputKind::Directory) {
            readable.Add(PathFromUtf8(input));
        }
    }
    if (KindOfInput(name) != InputKind::Directory) {
        // The name can be a link. Documents have their files beside the link, project files beside what it
        // leads to.
        readable.Add(ToPath(DirectoryOfFile(PathFromUtf8(name))));
        readable.Add(FolderOf(PathFromUtf8(name)));
    }
    for (const std::string& directory : options.from.filesIn) {
        readable.Add(PathFromUtf8(directory));
    }
    return readable;
}

void SayOutside(const PageContent& content, const std::string& name, Console& console) {
    std::size_t count = 0;
    std::string example;
    for (const PageFile& file : content.files) {
        if (file.isOutside && ++count == 1) {
            example = Quoted(file.place);
        }
    }
    if (count > 0) {
        console.Note(FormatCount(count, "file", "files") + " that " + InputName(name) + " names " +
                     (count == 1 ? "is" : "are") + " outside of its directory and " +
                     (count == 1 ? "was" : "were") + " not read (" + example +
                     (count == 1 ? "" : " for one") + "); --files-in DIR reads the files below DIR");
    }
}

bool MakePage(const std::vector<CAEObject*>& roots, const PageOptions& options, Console& console) {
    Page page;
    page.title = options.title;
    page.pictureLimit = *ParseSize(options.pictures);
    page.modelLimit = *ParseSize(options.models);
    PageRooms rooms{{page.pictureLimit}, {page.modelLimit}};
    for (CAEObject* const root : roots) {
        if (CAEProject* const project = root->getProject();
            project != nullptr && !IsReplaceableIn(*project, options.output, console)) {
            return false;
        }
        const std::string name = NameOf(*root).GetAnsiBuffer();
        if (options.title.empty()) {
            page.title += (page.title.empty() ? "" : " and ") + name;
        }
        const std::string& input = page.sides.empty() ? options.from.input : options.other;
        page.sides.push_back({name, ListPageContent(*root, ReadableFor(input, options), rooms)});
        SayOutside(page.sides.back().content, input, console);
    }
    if (roots.size() == 2) {
        page.comparison = CompareSides(*roots[0], *roots[1], options, console);
    }
    const bool isSilent = options.output == kStandardStream && IsTerminal(Stream::Output);
    page.progress = [&console, isSilent](std::size_t done, std::size_t total) {
        if (!isSilent) {
            console.ShowProgress("Writing the page", done, total);
        }
    };
    const bool isWritten = WriteOutput(
        options.output, [&page](const WritePiece& put) { return WritePage(page, put); }, console);
    console.ClearProgress();
    return isWritten;
}

int RunPage(const PageOptions& options, Console& console) {
    const bool isComparison = !options.other.empty();
    std::vector<std::string> inputs = {options.from.input};
    if (isComparison) {
        inputs.push_back(options.other);
    }
    if (!IsReplaceable(options.output, inputs, console)) {
        return kFailure;
    }
    if (!isComparison) {
        return WithObjects(options.from, options.output, console,
                           [&](CAEObject& root) { return MakePage({&root}, options, console); });
    }
    const auto read = [&](const std::string& name, const auto& work) {
        const InputOptions input{name, options.from.isStrict, SelectionFor(name, options.from.selection)};
        return WithObjects(input, options.output, console,
                           std::function<bool(CAEObject & root, const Exclusion& exclusion)>(work));
    };
    int status = kFailure;
    const int firstStatus = read(options.from.input, [&](CAEObject& first, const Exclusion& ofFirst) {
        status = read(options.other, [&](CAEObject& second, const Exclusion& ofSecond) {
            KeepComparedPart(options.from.selection,
                             {options.from.input, dynamic_cast<CAEProject*>(&first), ofFirst},
                             {options.other, dynamic_cast<CAEProject*>(&second), ofSecond});
            return MakePage({&first, &second}, options, console);
        });
        return status != kFailure;
    });
    return status == kSuccess ? firstStatus : status;
}

/// What is wrong with the two names; empty if nothing is.
std::string Complaint(const PageOptions& options) {
    if (options.other == kStandardStream && options.from.input == kStandardStream) {
        return "only one of the two can be the standard input (-)";
    }
    if (options.other.empty()) {
        return options.ignored.IsEmpty() ? "" : "--ignore needs another project to compare with";
    }
    return SelectionComplaint(options.from.selection, options.from.input, options.other);
}

}  // namespace

void AddPageCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<PageOptions>();
    const Command command =
        AddCommand(program, "page", "Write a page for the browser that shows a project, in one file");
    AddObjectInput(command, options->from);
    command
        .AddOption("OTHER", options->other,
                   "Another one: the page shows both side by side, and how it differs from DIR")
        .Type("");
    AddFilesIn(command, options->from.filesIn);
    AddIgnore(command, options->ignored);
    command
        .AddOption("--title", options->title,
                   "The title of the page instead of the name of the project: --title Brackets")
        .Type("TEXT");
    const auto check = [](const std::string& text) -> std::string {
        return ParseSize(text) ? "" : Quoted(text) + " is not a size; give one like 500k, 20M or 0";
    };
    command
        .AddOption("--pictures", options->pictures,
                   "How much of the project's pictures the page may contain, 20M without this\n"
                   "option. Pictures beyond that are only named: --pictures 0")
        .Type("SIZE")
        .Check(check);
    command
        .AddOption("--meshes", options->models,
                   "The same for the meshes of solver inputs, STL files and meshes of Gmsh,\n"
                   "which can be turned in the page: --meshes 100M")
        .Type("SIZE")
        .Check(check);
    command
        .AddOption("-o,--output", options->output,
                   "The file to write to; an existing file is replaced when the new one is\n"
                   "complete. - is the standard output: -o bracket.html")
        .Type("FILE")
        .Required();
    AddExamples(command,
                "  korvane-json page projects/bracket -o bracket.html\n"
                "  korvane-json page bracket.kvp --title Brackets --pictures 5M -o bracket.html\n"
                "  korvane-json page --ignore dates bracket.kvp projects/bracket -o changes.html\n",
                "The page is one HTML file, which needs no network and no other file.");
    command.Call([options, &console, &status] {
        if (const std::string complaint = Complaint(*options); !complaint.empty()) {
            console.Say(UsageMessage(complaint, "page"));
            status = kBadUsage;
            return;
        }
        status = RunPage(*options, console);
    });
}

}  // namespace host

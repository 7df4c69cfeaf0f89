#include <CLI/CLI.hpp>
#include <charconv>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "Commands.h"
#include "ExitStatus.h"
#include "ObjectInput.h"
#include "Options.h"
#include "Output.h"
#include "host/document/ObjectTexts.h"
#include "host/page/PageWriter.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct PageOptions {
    InputOptions from;
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

bool MakePage(CAEObject& root, const PageOptions& options, Console& console) {
    if (CAEProject* const project = root.getProject();
        project != nullptr && !IsReplaceableIn(*project, options.output, console)) {
        return false;
    }
    Page page;
    page.title = options.title.empty() ? NameOf(root).GetAnsiBuffer() : options.title;
    page.pictureLimit = *ParseSize(options.pictures);
    page.modelLimit = *ParseSize(options.models);
    PageRooms rooms{{page.pictureLimit}, {page.modelLimit}};
    page.content = ListPageContent(root, rooms);
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
    if (!IsReplaceable(options.output, {options.from.input}, console)) {
        return kFailure;
    }
    return WithObjects(options.from, options.output, console,
                       [&](CAEObject& root) { return MakePage(root, options, console); });
}

}  // namespace

void AddPageCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<PageOptions>();
    CLI::App& command =
        *program.add_subcommand("page", "Write a page for the browser that shows a project, in one file");
    AddObjectInput(command, options->from);
    command
        .add_option("--title", options->title,
                    "The title of the page instead of the name of the project: --title Brackets")
        ->type_name("TEXT");
    const auto check = [](const std::string& text) -> std::string {
        return ParseSize(text) ? "" : Quoted(text) + " is not a size; give one like 500k, 20M or 0";
    };
    command
        .add_option("--pictures", options->pictures,
                    "How much of the project's pictures the page may contain, 20M without this\n"
                    "option. Pictures beyond that are only named: --pictures 0")
        ->type_name("SIZE")
        ->check(CLI::Validator(check, ""));
    command
        .add_option("--meshes", options->models,
                    "The same for the meshes of solver inputs, which can be turned in the page:\n"
                    "--meshes 100M")
        ->type_name("SIZE")
        ->check(CLI::Validator(check, ""));
    command
        .add_option("-o,--output", options->output,
                    "The file to write to; an existing file is replaced when the new one is\n"
                    "complete. - is the standard output: -o bracket.html")
        ->type_name("FILE")
        ->required();
    AddExamples(command,
                "  korvane-json page projects/bracket -o bracket.html\n"
                "  korvane-json page bracket.kvp --title Brackets --pictures 5M -o bracket.html\n",
                "The page is one HTML file, which needs no network and no other file.");
    command.callback([options, &console, &status] { status = RunPage(*options, console); });
}

}  // namespace host

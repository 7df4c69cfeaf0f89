#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Cases.h"
#include "Checks.h"
#include "Process.h"
#include "Rows.h"

namespace bench {
namespace {

std::size_t CountOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string_view::npos;
         place = text.find(part, place + part.size())) {
        ++count;
    }
    return count;
}

/// What SQLite finds in the project file.
std::size_t CountIn(const std::string& project, const std::string& query) {
    return static_cast<std::size_t>(Connection(project).Number("SELECT count(*) FROM " + query));
}

/// The objects that the project was made of, without itself and its attached files.
std::size_t MadeIn(const std::string& project) {
    return CountIn(project, "object") - CountIn(project, "attached_file") - 1;
}

/// A command that makes a text of a project file. Its floor writes the same text.
class TextCase {
public:
    TextCase(const Programs& programs, const Inputs& inputs, std::string what, const std::string& ending)
        : programs_(programs),
          project_(inputs.project),
          what_(std::move(what)),
          result_((inputs.folder / ("result-" + what_ + ending)).string()),
          first_((inputs.folder / ("first-" + what_ + ending)).string()),
          floor_((inputs.folder / ("floor-" + what_ + ending)).string()) {}

    const std::string& Result() const { return result_; }

    /// `output` is empty if the command writes the result itself.
    Case Make(const std::vector<std::string>& words, const std::string& output,
              const std::function<bool(const std::string&)>& isWhole) const {
        const std::vector<std::string> command = programs_.Command(words);
        const auto prepare = [command, output, *this] {
            if (!std::filesystem::exists(first_)) {
                output.empty() ? Run(command) : RunInto(output, command);
                std::filesystem::rename(result_, first_);
            }
            std::filesystem::remove(result_);
            std::filesystem::remove(floor_);
        };
        const auto check = [isWhole, *this] {
            const std::string text = ReadText(result_);
            Expect(text == ReadText(floor_), "the text of " + what_);
            Expect(isWhole(text), "what " + what_ + " shows");
        };
        return {what_, prepare, command, output, programs_.Floor({"text", project_, first_, floor_}), check};
    }

private:
    Programs programs_;
    std::string project_;
    std::string what_;
    std::string result_;
    std::string first_;
    std::string floor_;
};

}  // namespace

std::vector<Case> MakeOutputCases(const Programs& programs, const Inputs& inputs) {
    const std::string project = inputs.project;
    const std::string document = inputs.document;
    const TextCase exported(programs, inputs, "export", ".json");
    const TextCase found(programs, inputs, "find", ".txt");
    const TextCase tree(programs, inputs, "tree", ".txt");
    const TextCase plot(programs, inputs, "plot", ".svg");
    const TextCase page(programs, inputs, "page", ".html");
    return {
        exported.Make({"export", project, "-o", exported.Result()}, {},
                      [=](const std::string& text) { return text == ReadText(document); }),
        found.Make({"find", project, "kind=Part", "Mass>500 kg", "--show", "Mass"}, found.Result(),
                   [=](const std::string& text) {
                       return CountOf(text, "\n") ==
                              CountIn(
                                  project,
                                  "object JOIN metadata ON metadata.object = object.id WHERE kind = 0 AND "
                                  "metadata.name = 'Mass' AND CAST(value AS REAL) > 500");
                   }),
        tree.Make({"tree", project}, tree.Result(),
                  [=](const std::string& text) { return CountOf(text, " #") == CountIn(project, "object"); }),
        plot.Make({"plot", project, "--x", "Mass", "--y", "Thickness", "-o", plot.Result()}, {},
                  [=](const std::string& text) { return CountOf(text, "<circle") == MadeIn(project); }),
        // Each text of a page stands there once, and all objects have names of their own.
        page.Make({"page", project, "-o", page.Result()}, {},
                  [=](const std::string& text) {
                      return CountOf(text, "cross member ") + CountOf(text, "Träger \xE6\xA2\x81 ") ==
                             MadeIn(project);
                  }),
    };
}

}  // namespace bench

#include "ProgramCommands.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

#include "LongRun.h"
#include "Process.h"

std::ostream& operator<<(std::ostream& stream, const ProgramCommand& command) {
    return stream << command.name;
}

const std::vector<ProgramCommand>& AllCommands() {
    static const std::vector<ProgramCommand> commands = {
        {"Help", {"--help"}},
        {"HelpOfCommand", {"help", "export"}},
        {"Completion", {"completion", "zsh"}},
        {"TreeOfDirectory", {"tree", "given/studies"}},
        {"TreeOfDocument", {"tree", "given/document.json"}},
        {"Tree", {"tree", "work/p.kvp"}, FileUse::Reads, "p.kvp"},
        {"TreeStudies", {"tree", "--studies", "given/studies"}},
        {"TreeJson",
         {"tree", "--depth", "3", "--files", "roles", "--format", "json", "work/p.kvp"},
         FileUse::Reads,
         "p.kvp"},

        {"FindInDirectory", {"find", "given/studies", "kind=Study", "--sort", "Size", "--show", "Solver"}},
        {"FindWithUnit", {"find", "given/studies", "Mass<5kg"}},
        {"FindInDocument", {"find", "given/document.json", "has=deck", "--format", "csv"}},
        {"Find", {"find", "work/p.kvp", "id<100", "--format", "json"}, FileUse::Reads, "p.kvp"},

        {"PageOfDirectory", {"page", "given/studies", "-o", "out/page.html"}},
        {"PageOfDocument", {"page", "given/document.json", "-o", "out/page.html"}},
        {"Page",
         {"page", "--files-in", "given", "work/p.kvp", "-o", "out/page.html"},
         FileUse::Reads,
         "p.kvp"},
        {"PageOfTwo",
         {"page", "--files-in", "given", "given/document.json", "work/p.kvp", "-o", "out/page.html"},
         FileUse::Reads,
         "p.kvp"},
        {"PlotDirectory", {"plot", "given/studies", "--x", "Files", "--y", "Size", "-o", "out/plot.svg"}},
        {"Plot",
         {"plot", "work/p.kvp", "id<100", "--x", "id", "--y", "id", "--by", "kind"},
         FileUse::Reads,
         "p.kvp"},

        {"ExportDirectory", {"export", "given/studies", "-o", "out/new.json"}},
        {"Export", {"export", "work/p.kvp"}, FileUse::Reads, "p.kvp"},
        {"ExportToFile", {"export", "work/p.kvp", "-o", "out/document.json"}, FileUse::Reads, "p.kvp"},
        {"ExportObject",
         {"export", "work/p.kvp", "--object", "1", "--mode", "STUDY", "-o", "out/document.json"},
         FileUse::Reads,
         "p.kvp"},
        {"ExportIndented",
         {"export", "work/p.kvp", "--text", "indented", "-o", "out/document.json"},
         FileUse::Reads,
         "p.kvp"},

        {"New", {"new", "given/studies", "work/p.kvp"}, FileUse::Creates, "p.kvp"},
        {"NewEmpty", {"new", "--empty", "work/p.kvp"}, FileUse::Creates, "p.kvp"},
        {"NewForce", {"new", "--force", "given/other", "work/p.kvp"}, FileUse::Changes, "p.kvp"},
        {"NewEmptyForce", {"new", "--empty", "--force", "work/p.kvp"}, FileUse::Changes, "p.kvp"},
        {"NewFromFile", {"new", "work/p.kvp", "out/copy.kvp"}, FileUse::Reads, "p.kvp"},
        {"NewJson", {"new", "--format", "json", "given/studies", "work/p.kvp"}, FileUse::Creates, "p.kvp"},
        {"NewDryRun", {"new", "work/p.kvp", "--force", "--dry-run", "work/p.kvp"}, FileUse::Reads, "p.kvp"},

        // The directory of the project is another one in some folders.
        {"Update", {"update", "--moved", "given/other", "work/p.kvp"}, FileUse::Changes, "p.kvp"},
        {"UpdateRemove",
         {"update", "--moved", "--remove", "--force", "given/other", "work/p.kvp"},
         FileUse::Changes,
         "p.kvp"},
        {"UpdateJson",
         {"update", "--moved", "--remove", "--force", "--format", "json", "given/other", "work/p.kvp"},
         FileUse::Changes,
         "p.kvp"},
        {"UpdateDryRun",
         {"update", "--moved", "--dry-run", "given/other", "work/p.kvp"},
         FileUse::Reads,
         "p.kvp"},

        {"StoreNew",
         {"store", "given/document.json", "--db", "work/s.db", "-o", "out/answer.json"},
         FileUse::Creates,
         "s.db"},
        {"StoreEmpty",
         {"store", "given/document.json", "--db", "work/s.db", "-o", "out/answer.json"},
         FileUse::Fills,
         "s.db"},
        {"Store",
         {"store", "given/other.json", "--db", "work/s.db", "-o", "out/answer.json"},
         FileUse::Changes,
         "s.db"},
        {"StoreUnderProject",
         {"store", "given/document.json", "--db", "work/s.db", "--project", "Q", "-o", "out/answer.json"},
         FileUse::Changes,
         "s.db"},
        {"StoreAgain",
         {"store", "given/study.json", "--db", "work/s.db", "--again", "-o", "out/answer.json"},
         FileUse::Changes,
         "s.db"},
        {"StoreJson",
         {"store", "given/other.json", "--db", "work/s.db", "--format", "json", "-o", "out/answer.json"},
         FileUse::Changes,
         "s.db"},
        {"StoreDryRun",
         {"store", "given/other.json", "--db", "work/s.db", "--dry-run"},
         FileUse::Reads,
         "s.db"},

        {"Apply", {"apply", "given/answer.json", "work/p.kvp"}, FileUse::Changes, "p.kvp"},
        {"ApplyJson",
         {"apply", "--format", "json", "given/answer.json", "work/p.kvp"},
         FileUse::Changes,
         "p.kvp"},
        {"ApplyDryRun", {"apply", "given/answer.json", "work/p.kvp", "--dry-run"}, FileUse::Reads, "p.kvp"},

        {"ImportUpdate",
         {"import", "--update", "--same", "--remove", "given/other.json", "work/p.kvp"},
         FileUse::Changes,
         "p.kvp"},

        {"Fetch", {"fetch", "KEY", "--db", "work/s.db", "-o", "out/document.json"}, FileUse::Reads, "s.db"},

        {"FetchList", {"fetch", "--list", "--db", "work/s.db"}, FileUse::Reads, "s.db"},
        {"FetchListJson",
         {"fetch", "--list", "--format", "json", "--db", "work/s.db", "-o", "out/list.json"},
         FileUse::Reads,
         "s.db"},

        {"ImportNew", {"import", "given/document.json", "work/p.kvp"}, FileUse::Creates, "p.kvp"},
        {"Import", {"import", "given/other.json", "work/p.kvp"}, FileUse::Changes, "p.kvp"},
        {"ImportJson",
         {"import", "--format", "json", "given/other.json", "work/p.kvp"},
         FileUse::Changes,
         "p.kvp"},
        {"ImportDryRun", {"import", "given/other.json", "work/p.kvp", "--dry-run"}, FileUse::Reads, "p.kvp"},

        {"Compare", {"compare", "given/document.json", "work/p.kvp"}, FileUse::Reads, "p.kvp", 2},
        {"CompareJson",
         {"compare", "--format", "json", "given/document.json", "work/p.kvp"},
         FileUse::Reads,
         "p.kvp",
         2},
    };
    return commands;
}

std::set<std::string> CommandsOfHelp() {
    std::set<std::string> listed;
    std::istringstream help(RunProgram(ProgramPath("korvane-json"), {{"--help"}, {}, {}, {}, {}}).output);
    bool isInList = false;
    for (std::string line; std::getline(help, line);) {
        // The heading depends on the version of CLI11.
        isInList = line.starts_with("Commands:") || line.starts_with("Subcommands:") ||
                   (isInList && line.starts_with("  "));
        if (isInList && line.starts_with("  ") && line[2] != ' ') {
            listed.insert(line.substr(2, line.find(' ', 2) - 2));
        }
    }
    return listed;
}

std::vector<ProgramCommand> CommandsWhere(const std::function<bool(const ProgramCommand&)>& condition) {
    std::vector<ProgramCommand> found;
    std::ranges::copy_if(AllCommands(), std::back_inserter(found), condition);
    return found;
}

std::vector<ProgramCommand> OneOfEach(const std::vector<ProgramCommand>& commands) {
    std::set<std::string> names;
    std::vector<ProgramCommand> found;
    std::ranges::copy_if(commands, std::back_inserter(found), [&](const ProgramCommand& command) {
        return names.insert(command.arguments.front()).second;
    });
    return found;
}

std::vector<ProgramCommand> OneOfEachInASample(const std::vector<ProgramCommand>& commands) {
    return kIsSample ? OneOfEach(commands) : commands;
}

bool IsTriedBriefly(const ProgramCommand& command) {
    const auto isCalledAlike = [&](const ProgramCommand& other) {
        return other.arguments.front() == command.arguments.front();
    };
    return !IsLongRun() && std::ranges::find_if(AllCommands(), isCalledAlike)->name != command.name;
}

void CompleteCommandFolder(const TemporaryDirectory& folder,
                           const std::function<void(const std::vector<std::string>&)>& run) {
    run({"export", "given/p.kvp", "-o", "given/document.json"});
    run({"export", "given/p.kvp", "--mode", "STUDY", "-o", "given/study.json"});
    run({"store", "given/document.json", "--db", "given/s.db", "-o", "given/answer.json"});
    folder.MakeDirectory("work");
    folder.MakeDirectory("out");
}

void PutFileOf(const ProgramCommand& command, const TemporaryDirectory& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder / "work")) {
        std::filesystem::remove(entry.path());
    }
    const std::filesystem::path file = folder / ("work/" + command.file);
    if (command.use == FileUse::Fills) {
        folder.Write("work/" + command.file, "");
    } else if (command.HasFile()) {
        std::filesystem::copy_file(folder / ("given/" + command.file), file);
    }
}

std::vector<std::string> ArgumentsIn(const TemporaryDirectory& folder, const ProgramCommand& command) {
    std::vector<std::string> arguments = command.arguments;
    const auto key = std::ranges::find(arguments, "KEY");
    if (key != arguments.end()) {
        *key = FirstKey(ReadWholeFile(folder / "given/answer.json"));
    }
    return arguments;
}

std::string FirstKey(std::string_view text) {
    constexpr std::string_view kMember = R"("dbkey":")";
    const std::size_t member = text.find(kMember);
    if (member == std::string_view::npos) {
        throw std::runtime_error("there is no key");
    }
    const std::size_t begin = member + kMember.size();
    return std::string(text.substr(begin, text.find('"', begin) - begin));
}

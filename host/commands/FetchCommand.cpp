#include <libjson.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "Commands.h"
#include "Complaint.h"
#include "ExitStatus.h"
#include "Options.h"
#include "Output.h"
#include "format/MemberNames.h"
#include "host/server/Server.h"
#include "host/system/Phase.h"
#include "host/system/Terminal.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct FetchOptions {
    std::string key;
    bool isList = false;
    std::string database;
    ReportFormat format = ReportFormat::Text;
    std::string output = kStandardStream;
};

/// Lines with columns: key, name, date, and what is below the root.
std::string TextOf(const std::vector<StoredRoot>& roots) {
    struct Line {
        std::string key;
        std::string name;
        std::string date;
        std::string counts;
    };
    std::vector<Line> lines;
    std::size_t keyWidth = 0;
    std::size_t nameWidth = 0;
    std::size_t dateWidth = 0;
    for (const StoredRoot& root : roots) {
        const bool isNamedAlike = root.name == root.project;
        Line& line = lines.emplace_back(
            Line{root.key,
                 Printable(std::string_view(root.name)) +
                     (isNamedAlike ? "" : " (in " + Printable(std::string_view(root.project)) + ")"),
                 Printable(std::string_view(root.createdDate)),
                 FormatCount(root.objects, "object", "objects") + ", " +
                     FormatCount(root.files, "file", "files")});
        keyWidth = std::max(keyWidth, DisplayWidth(line.key));
        nameWidth = std::max(nameWidth, DisplayWidth(line.name));
        dateWidth = std::max(dateWidth, DisplayWidth(line.date));
    }
    std::string text;
    const auto put = [&text](const std::string& cell, std::size_t width) {
        text += cell + std::string(width - DisplayWidth(cell) + 2, ' ');
    };
    for (const Line& line : lines) {
        put(line.key, keyWidth);
        put(line.name, nameWidth);
        put(line.date, dateWidth);
        text += line.counts + '\n';
    }
    return text;
}

std::string JsonOf(const std::vector<StoredRoot>& roots) {
    JSONNode list(JSON_ARRAY);
    list.set_name("projects");
    for (const StoredRoot& root : roots) {
        JSONNode one(JSON_NODE);
        one.push_back(JSONNode("key", root.key.c_str()));
        one.push_back(JSONNode("name", root.name.c_str()));
        one.push_back(JSONNode("project", root.project.c_str()));
        one.push_back(JSONNode("type", root.type.c_str()));
        one.push_back(JSONNode(format::member::kCreatedDate.c_str(), root.createdDate.c_str()));
        one.push_back(JSONNode("objects", static_cast<unsigned long long>(root.objects)));
        one.push_back(JSONNode("files", static_cast<unsigned long long>(root.files)));
        list.push_back(one);
    }
    JSONNode document(JSON_NODE);
    document.push_back(list);
    return CompactText(document);
}

bool WriteList(Server& server, const FetchOptions& options, Console& console) {
    const std::vector<StoredRoot> roots = server.List();
    const bool isJson = options.format == ReportFormat::Json;
    return WriteOutput(options.output, isJson ? JsonOf(roots) : TextOf(roots), console);
}

bool WriteDocument(Server& server, const FetchOptions& options, Console& console) {
    const std::optional<FetchedRoot> root = server.Find(options.key);
    if (!root) {
        console.Say("there is no object with the key " + Quoted(options.key) + " in " +
                    Quoted(options.database) +
                    "; the answer from 'korvane-json store' lists the keys, and --list those of projects");
        return false;
    }
    const Phase phase(console, "writing the document");
    const auto writeLine = [&](const WritePiece& write) {
        const std::error_code error = server.Fetch(*root, write, console);
        return error ? error : write("\n");
    };
    return WriteOutput(options.output, writeLine, console);
}

int FetchToOutput(const FetchOptions& options, Console& console) {
    if (!IsReplaceable(options.output, {options.database}, console)) {
        return kFailure;
    }
    try {
        Server server = Server::OpenForFetching(PathFromUtf8(options.database));
        const auto write = options.isList ? WriteList : WriteDocument;
        return write(server, options, console) ? kSuccess : kFailure;
    } catch (const DatabaseError& error) {
        console.Say(Quoted(options.database) + " " + error.what());
        return kFailure;
    }
}

/// What is wrong with the options; empty if nothing is.
std::string OptionsComplaint(const FetchOptions& options) {
    if (options.key.empty() != options.isList) {
        return options.isList ? "give either a key or --list" : "give the key of an object, or --list";
    }
    return options.format == ReportFormat::Json && !options.isList
               ? "--format is for --list: a document is always JSON"
               : "";
}

}  // namespace

void AddFetchCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<FetchOptions>();
    const Command command =
        AddCommand(program, "fetch",
                   "Act as a data-management server: write a stored object as a document, or list them");
    command
        .AddOption("KEY", options->key,
                   "The database key of the object, from the answer of 'korvane-json store'; omit it\n"
                   "with --list")
        .Type("");
    command.AddFlag("--list", options->isList,
                    "List what the database holds instead: projects, and objects that were stored\n"
                    "alone, with key, name, date, and how many objects and files they have");
    command.AddOption("--db", options->database, "The server's database: --db server.db")
        .Required()
        .Type("FILE");
    AddFormat(command, options->format,
              "With --list: text (the default) is for people, json for scripts:\n"
              "--format json");
    command
        .AddOption("-o,--output", options->output,
                   "The file for the document or the list; - is the standard output (the default):\n"
                   "-o bracket.json")
        .Type("FILE");
    AddExamples(command,
                "  korvane-json fetch PRJ-1-3f9a20 --db server.db -o bracket.json\n"
                "  korvane-json fetch --list --db server.db\n");
    command.Call([options, &console, &status] {
        if (const std::string complaint = OptionsComplaint(*options); !complaint.empty()) {
            console.Say(UsageMessage(complaint, "fetch"));
            status = kBadUsage;
            return;
        }
        status = FetchToOutput(*options, console);
    });
}

}  // namespace host

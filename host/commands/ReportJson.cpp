#include "ReportJson.h"

#include <libjson.h>

#include "ExitStatus.h"
#include "Output.h"

namespace host {
namespace {

/// An object with the members that every report has.
JSONNode Begin(const char* report, bool isDryRun) {
    JSONNode json(JSON_NODE);
    json.push_back(JSONNode("report", report));
    json.push_back(JSONNode("dryRun", isDryRun));
    return json;
}

void AddCount(JSONNode& json, const char* name, std::size_t count) {
    json.push_back(JSONNode(name, static_cast<unsigned long long>(count)));
}

void AddCounts(JSONNode& json, const char* name, const UpdateReport::Count& count) {
    JSONNode counts(JSON_NODE);
    counts.set_name(name);
    AddCount(counts, "objects", count.objects);
    AddCount(counts, "files", count.files);
    json.push_back(counts);
}

JSONNode NamedList(const char* name) {
    JSONNode list(JSON_ARRAY);
    list.set_name(name);
    return list;
}

void AddValues(JSONNode& entry, const ValueChanges& values) {
    if (values.empty()) {
        return;
    }
    JSONNode list = NamedList("values");
    for (const ValueChange& value : values) {
        JSONNode node(JSON_NODE);
        node.push_back(JSONNode("value", std::string(WordOf(value.value)).c_str()));
        const auto add = [&](const char* name, const std::string& text) {
            node.push_back(JSONNode(name, text.c_str()));
        };
        if (!value.name.empty()) {
            add("name", value.name);
        }
        if (value.from) {
            add("from", *value.from);
        }
        if (value.to) {
            add("to", *value.to);
        }
        if (!value.unit.empty()) {
            add("unit", value.unit);
        }
        list.push_back(node);
    }
    entry.push_back(list);
}

std::string TextOf(const JSONNode& json) {
    const auto text = json.write();
    return {text.c_str(), text.size()};
}

}  // namespace

std::string ToJson(const NewReport& report, bool isDryRun) {
    JSONNode json = Begin("new", isDryRun);
    AddCount(json, "objects", report.counts.objects);
    AddCount(json, "files", report.counts.files);
    json.push_back(JSONNode("replaced", report.isReplacing));
    AddCount(json, "leftOut", report.leftOut);
    return TextOf(json);
}

std::string ToJson(const UpdateReport& report, std::size_t leftOut, bool isDryRun) {
    JSONNode json = Begin("update", isDryRun);
    json.push_back(JSONNode("changed", report.isChanged));
    JSONNode counts(JSON_NODE);
    counts.set_name("counts");
    AddCounts(counts, "added", report.added);
    AddCounts(counts, "changed", report.changed);
    AddCounts(counts, "removed", report.removed);
    AddCounts(counts, "missing", report.missing);
    json.push_back(counts);
    if (!report.directory.IsEmpty()) {
        json.push_back(JSONNode("directory", report.directory.GetAnsiBuffer()));
    }
    JSONNode entries = NamedList("entries");
    for (const UpdateReport::Listed& listed : report.listed) {
        JSONNode entry(JSON_NODE);
        entry.push_back(JSONNode("change", std::string(WordOf(listed.change)).c_str()));
        entry.push_back(JSONNode("kind", listed.kind.c_str()));
        entry.push_back(JSONNode("id", listed.identifier));
        entry.push_back(JSONNode("path", listed.path.c_str()));
        AddValues(entry, listed.values);
        entries.push_back(entry);
    }
    json.push_back(entries);
    AddCount(json, "leftOut", leftOut);
    return TextOf(json);
}

std::string ToJson(const StoreReport& report, bool isDryRun) {
    JSONNode json = Begin("store", isDryRun);
    AddCount(json, "objects", report.objects);
    AddCount(json, "files", report.files);
    AddCount(json, "newKeys", report.newKeys);
    AddCount(json, "detached", report.detached);
    json.push_back(JSONNode("carriedOver", report.isCarriedOver));
    JSONNode notes = NamedList("notes");
    report.notes.Visit(
        [&](const std::string& kind, std::size_t count, const std::vector<std::string>& first) {
            JSONNode note(JSON_NODE);
            note.push_back(JSONNode("text", kind.c_str()));
            AddCount(note, "count", count);
            JSONNode examples = NamedList("examples");
            for (const std::string& example : first) {
                examples.push_back(JSONNode("", example.c_str()));
            }
            note.push_back(examples);
            notes.push_back(note);
        });
    json.push_back(notes);
    return TextOf(json);
}

int WriteReport(const std::string& json, bool isDryRun, Console& console) {
    if (WriteToStandardOutput(json + '\n', console)) {
        return kSuccess;
    }
    return isDryRun ? kFailure : kNotReported;
}

}  // namespace host

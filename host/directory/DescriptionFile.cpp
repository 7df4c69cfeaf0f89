#include "DescriptionFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <sstream>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include "DottedKeys.h"
#include "TomlLines.h"
#include "host/system/Text.h"

namespace host {
namespace {

constexpr std::string_view kKnownOfStudy = "name, description, metadata, iteration and part";
constexpr std::string_view kKnownOfObject = "name, description and metadata";

template <typename Number>
std::string NumberText(Number number) {
    std::array<char, 64> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

template <typename Value>
std::string StreamText(const Value& value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

/// The text of a value that is not a list or a table, and not an infinite number; nothing otherwise.
std::optional<std::string> ValueText(const toml::node& node) {
    if (const auto* const text = node.as_string()) {
        return text->get();
    }
    if (const auto* const number = node.as_integer()) {
        return NumberText(number->get());
    }
    if (const auto* const number = node.as_floating_point()) {
        return std::isfinite(number->get()) ? std::optional(NumberText(number->get())) : std::nullopt;
    }
    if (const auto* const choice = node.as_boolean()) {
        return choice->get() ? "true" : "false";
    }
    if (const auto* const date = node.as_date()) {
        return StreamText(date->get());
    }
    if (const auto* const time = node.as_time()) {
        return StreamText(time->get());
    }
    if (const auto* const moment = node.as_date_time()) {
        return StreamText(moment->get());
    }
    return std::nullopt;
}

struct Member {
    std::string key;
    TextPlace place;
    const toml::node* node;
};

/// The members of a table in the order of the file. A table that the text only implies is where its first
/// member is.
std::vector<Member> MembersOf(const toml::table& table) {
    std::vector<Member> members;
    for (const auto& [key, node] : table) {
        members.push_back({std::string(key.str()), PlaceOf(key.source().begin), &node});
    }
    std::ranges::stable_sort(members, [](const Member& left, const Member& right) {
        return std::pair(left.place.line, left.place.column) <
               std::pair(right.place.line, right.place.column);
    });
    return members;
}

class Reader {
public:
    explicit Reader(DescriptionFile& file) : file_(file) {}

    void ReadStudy(const toml::table& table);

private:
    void ReadObjects(const Member& member, std::vector<DescribedObject>& objects);
    bool ReadMember(const Member& member, DescribedObject& object);
    void ReadText(const Member& member, std::string& text);
    void ReadMetadata(const Member& member, std::vector<DescribedEntry>& metadata);
    bool ReadEntry(const Member& member, DescribedEntry& entry);
    void LeaveOut(const Member& member, const std::string& reason) {
        file_.problems.push_back({member.place, Quoted(member.key) + " is left out: " + reason});
    }

    DescriptionFile& file_;
};

void Reader::ReadStudy(const toml::table& table) {
    for (const Member& member : MembersOf(table)) {
        if (member.key == "iteration") {
            ReadObjects(member, file_.iterations);
        } else if (member.key == "part") {
            ReadObjects(member, file_.parts);
        } else if (!ReadMember(member, file_.study)) {
            LeaveOut(member, "it is not known here; known are " + std::string(kKnownOfStudy));
        }
    }
}

void Reader::ReadObjects(const Member& member, std::vector<DescribedObject>& objects) {
    const toml::table* const table = member.node->as_table();
    if (table == nullptr) {
        LeaveOut(member, "write [" + member.key + ".NAME], with the name of an object of the study");
        return;
    }
    for (const Member& named : MembersOf(*table)) {
        const toml::table* const members = named.node->as_table();
        if (members == nullptr) {
            LeaveOut(named, "write [" + member.key + ".NAME], with the name of an object of the study");
            continue;
        }
        DescribedObject object;
        object.key = named.key;
        object.place = named.place;
        for (const Member& inner : MembersOf(*members)) {
            if (!ReadMember(inner, object)) {
                LeaveOut(inner, "it is not known here; known are " + std::string(kKnownOfObject));
            }
        }
        objects.push_back(std::move(object));
    }
}

/// Returns false for a member that is not known.
bool Reader::ReadMember(const Member& member, DescribedObject& object) {
    if (member.key == "name") {
        ReadText(member, object.name);
    } else if (member.key == "description") {
        ReadText(member, object.description);
    } else if (member.key == "metadata") {
        ReadMetadata(member, object.metadata);
    } else {
        return false;
    }
    return true;
}

bool HasNul(std::string_view text) {
    return text.find('\0') != std::string_view::npos;
}

void Reader::ReadText(const Member& member, std::string& text) {
    const auto* const value = member.node->as_string();
    if (value == nullptr || Trim(value->get()).empty() || HasNul(value->get())) {
        LeaveOut(member, "give a text in quotes");
        return;
    }
    text = value->get();
}

void Reader::ReadMetadata(const Member& member, std::vector<DescribedEntry>& metadata) {
    const toml::table* const table = member.node->as_table();
    if (table == nullptr) {
        LeaveOut(member, "write [metadata], and below it lines like Mass = 2.4");
        return;
    }
    std::unordered_set<std::string> names;
    for (const Member& named : MembersOf(*table)) {
        DescribedEntry entry;
        entry.name = named.key;
        OuString key(entry.name.c_str(), 0);
        key.MakeUpper();
        const bool isTwice = !names.insert(key.GetAnsiBuffer()).second;
        if (Trim(entry.name).empty() || HasNul(entry.name)) {
            LeaveOut(named, "an entry needs a name");
        } else if (isTwice) {
            LeaveOut(named, "the metadata have it already, and letter case does not count");
        } else if (!ReadEntry(named, entry) || HasNul(entry.value) || HasNul(entry.unit)) {
            LeaveOut(
                named,
                "give a text, a number, a date, true, false, or { value = 2.4, unit = \"kg\" } with these");
        } else {
            metadata.push_back(std::move(entry));
        }
    }
}

bool Reader::ReadEntry(const Member& member, DescribedEntry& entry) {
    const toml::table* const table = member.node->as_table();
    const toml::node* value = member.node;
    if (table != nullptr) {
        const toml::node* const unit = table->get("unit");
        value = table->get("value");
        if (value == nullptr || table->size() != (unit != nullptr ? 2U : 1U) ||
            (unit != nullptr && !unit->is_string())) {
            return false;
        }
        entry.unit = unit != nullptr ? unit->as_string()->get() : std::string();
    }
    std::optional<std::string> text = ValueText(*value);
    entry.value = text.value_or("");
    return text.has_value();
}

DescriptionFile WithoutContent(const TextPlace& place, const std::string& reason) {
    DescriptionFile file;
    file.problems.push_back({place, "the file is left out" + reason});
    return file;
}

DescriptionFile ReadToml(std::string_view text) {
    constexpr const char* kNotToml = ", because it is not TOML: ";
    try {
        DescriptionFile file;
        const toml::table table = ParseLines(std::string(text), file.problems);
        Reader(file).ReadStudy(table);
        std::ranges::stable_sort(file.problems, {}, [](const DescriptionProblem& problem) {
            return std::pair(problem.place.line, problem.place.column);
        });
        return file;
    } catch (const toml::parse_error& error) {
        return WithoutContent(PlaceOf(error.source().begin), kNotToml + std::string(error.description()));
    } catch (const std::logic_error& error) {
        return WithoutContent({}, kNotToml + std::string(error.what()));
    }
}

}  // namespace

DescriptionFile ReadDescriptionFile(std::string_view text) {
    TextPlace place;
    if (text.size() > kMostOfDescriptionFile) {
        return WithoutContent(place, ": it is longer than a megabyte");
    }
    if (HasKeyWithManyDots(text, place)) {
        return WithoutContent(place, ": a name has too many dots");
    }
    return ReadToml(text);
}

}  // namespace host

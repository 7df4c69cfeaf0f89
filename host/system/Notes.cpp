#include "Notes.h"

#include <algorithm>

#include "Text.h"

namespace host {
Notes::Kind& Notes::Find(std::string_view kind) {
    const auto found = std::ranges::find(kinds_, kind, &Kind::text);
    if (found != kinds_.end()) {
        return *found;
    }
    return kinds_.emplace_back(Kind{std::string(kind), 0, {}, {}});
}

void Notes::AddName(std::string_view kind, std::string_view name) {
    AddQuoted(kind, Excerpt(name));
}

void Notes::AddQuoted(std::string_view kind, std::string_view name) {
    Kind& noted = Find(kind);
    ++noted.count;
    const auto known = noted.countOfName.find(name);
    if (known != noted.countOfName.end()) {
        ++known->second;
    } else {
        noted.countOfName.emplace(name, 1);
    }
}

std::size_t Notes::CountOf(std::string_view kind) const {
    const auto found = std::ranges::find(kinds_, kind, &Kind::text);
    return found != kinds_.end() ? found->count : 0;
}

std::vector<std::string> Notes::Named(const Kind& kind) {
    std::vector<std::string> named = kind.first;
    for (const auto& [name, count] : kind.countOfName) {
        if (named.size() < kMostNamed) {
            named.push_back(name + (count > 1 ? " " + std::to_string(count) + " times" : ""));
        }
    }
    return named;
}

void Notes::Say(const Kind& kind, const std::string& what, Console& console) {
    const std::vector<std::string> named = Named(kind);
    const std::size_t total = kind.countOfName.empty() ? kind.count : kind.countOfName.size();
    std::string line = what + ": " + kind.text + " (" + std::to_string(kind.count) + "): ";
    for (std::size_t index = 0; index < named.size(); ++index) {
        line += (index == 0 ? "" : "; ") + named[index];
    }
    if (total > named.size()) {
        line += "; and " + std::to_string(total - named.size()) + " more";
    }
    console.Note(line);
}

void Notes::Say(const std::string& what, Console& console) const {
    for (const Kind& kind : kinds_) {
        Say(kind, what, console);
    }
}

void Notes::SayWithoutNames(const std::string& what, Console& console) const {
    for (const Kind& kind : kinds_) {
        if (kind.countOfName.empty()) {
            Say(kind, what, console);
        }
    }
}

}  // namespace host

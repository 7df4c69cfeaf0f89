#pragma once

#include <korvaneexchange/PrintableText.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Console.h"

namespace host {

/// Notes about many things of a few kinds: how many of each kind there are, and the first of them.
class Notes {
public:
    /// Notes one thing of the kind. `describe` returns its description on one line; it is called only for the
    /// things that are listed.
    template <typename Describe>
    void Add(std::string_view kind, const Describe& describe) {
        Kind& noted = Find(kind);
        ++noted.count;
        if (noted.first.size() < kMostNamed) {
            noted.first.push_back(describe());
        }
    }
    /// Notes a name of the kind. Equal names are counted together.
    void AddName(std::string_view kind, std::string_view name);
    /// The same for a name as Excerpt shows it.
    void AddQuoted(std::string_view kind, std::string_view name);

    std::size_t CountOf(std::string_view kind) const;
    /// Calls `visit` for each kind with its text, how many there are, and the first of them.
    template <typename VisitKind>
    void Visit(const VisitKind& visit) const {
        for (const Kind& kind : kinds_) {
            visit(kind.text, kind.count, Named(kind));
        }
    }
    /// Says each kind on one line, in the order in which the kinds were first noted: `WHAT: KIND (3): one;
    /// two; three`.
    void Say(const std::string& what, Console& console) const;
    /// The same without the kinds of AddName.
    void SayWithoutNames(const std::string& what, Console& console) const;

private:
    static constexpr std::size_t kMostNamed = 10;

    struct Kind {
        std::string text;
        std::size_t count = 0;
        std::vector<std::string> first;
        std::map<std::string, std::size_t, std::less<>> countOfName;
    };
    Kind& Find(std::string_view kind);
    static std::vector<std::string> Named(const Kind& kind);
    static void Say(const Kind& kind, const std::string& what, Console& console);

    std::vector<Kind> kinds_;
};

using korvane::exchange::Excerpt;

}  // namespace host

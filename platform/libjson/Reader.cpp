#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "Node.h"
#include "Scanner.h"
#include "libjson.h"

namespace libjson::detail {
namespace {

/// Makes nodes of what a scanner reports.
class TreeBuilder {
public:
    explicit TreeBuilder(Cells& cells) : cells_(cells) {}

    ~TreeBuilder() {
        DropName(name_, cells_);
        for (Node* const node : finished_) {
            Drop(node, cells_);
        }
        for (const Place& place : places_) {
            Drop(place.container, cells_);
        }
    }

    TreeBuilder(const TreeBuilder&) = delete;
    TreeBuilder& operator=(const TreeBuilder&) = delete;

    void MemberName(std::string_view name) { name_ = AcquireName(name, cells_); }

    void Value(char type, std::string_view text) {
        finished_.push_back(nullptr);
        finished_.back() = MakeText(type, name_, text, cells_);
        name_ = nullptr;
    }

    void Open(char type) {
        places_.push_back({nullptr, finished_.size()});
        places_.back().container = MakeContainer(type, name_, 0, cells_);
        name_ = nullptr;
    }

    /// Moves the children that are finished by now into their container, which needs no more room than for
    /// them.
    void Close() {
        const Place place = places_.back();
        const std::size_t count = finished_.size() - place.firstChild;
        if (count > 0) {
            AdoptChildren(*place.container, finished_.data() + place.firstChild, count, cells_);
            finished_.resize(place.firstChild);
        }
        finished_.push_back(place.container);
        places_.pop_back();
    }

    /// The root.
    JSONNode Take() {
        Node* const root = finished_.back();
        finished_.clear();
        return NodeAccess::Adopt(root);
    }

private:
    struct Place {
        Container* container;
        std::size_t firstChild;
    };

    Cells& cells_;
    Name* name_ = nullptr;
    /// Nodes that wait for their container to be closed, those of the innermost one last.
    std::vector<Node*> finished_;
    std::vector<Place> places_;
};

/// Takes what a scanner reports when only the grammar matters.
struct NoTree {
    void MemberName(std::string_view) {}
    void Value(char, std::string_view) {}
    void Open(char) {}
    void Close() {}
};

template <class Sink>
Fault Scan(const json_string& text, Sink& sink) {
    return Scanner<Sink>(text, get_text_units(), sink).Scan();
}

std::string Describe(const json_string& text, const Fault& fault) {
    std::size_t line = 1;
    const char* lineStart = text.data();
    for (const char* at = text.data(); at != fault.at; ++at) {
        if (*at == '\n' || (*at == '\r' && at[1] != '\n')) {
            ++line;
            lineStart = at + 1;
        }
    }
    return "line " + std::to_string(line) + ", column " + std::to_string(fault.at - lineStart + 1) + ": " +
           fault.reason;
}

}  // namespace
}  // namespace libjson::detail

namespace libjson {

JSONNode parse(const json_string& text) {
    detail::Cells cells;
    detail::TreeBuilder builder(cells);
    const detail::Fault fault = detail::Scan(text, builder);
    if (fault.reason != nullptr) {
        throw std::invalid_argument(detail::Describe(text, fault));
    }
    return builder.Take();
}

bool is_valid(const json_string& text) {
    detail::NoTree none;
    return detail::Scan(text, none).reason == nullptr;
}

}  // namespace libjson

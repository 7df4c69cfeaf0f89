#pragma once

#include <libjson.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "ObjectModel.h"
#include "format/MemberName.h"

#if __has_include(<node_views.h>)
#include <node_views.h>

/// A name or value: a view that is valid as long as the node is not changed.
using NodeText = std::string_view;
inline NodeText NodeName(const JSONNode& node) {
    return libjson::name_view(node);
}
inline NodeText NodeValue(const JSONNode& node) {
    return libjson::text_view(node);
}
#else
/// A name or value, which an installed JSON library may give as a text of its own only.
using NodeText = json_string;
inline NodeText NodeName(const JSONNode& node) {
    return node.name();
}
inline NodeText NodeValue(const JSONNode& node) {
    return node.as_string();
}
#endif

/// What a name or value is read as: all up to its first NUL. Valid as long as the text.
inline std::string_view UpToNul(const NodeText& text) {
    const std::string_view whole = text;
    return whole.substr(0, whole.find('\0'));
}

inline bool IsContainer(const JSONNode& node) {
    const auto type = node.type();
    return type == JSON_NODE || type == JSON_ARRAY;
}

/// The children of a node that are still to be read. The node must stay as it is meanwhile.
class ChildWalk {
public:
    /// No children.
    ChildWalk() = default;
    explicit ChildWalk(const JSONNode& node) {
        if (IsContainer(node)) {
            places_.emplace(Places{node.begin(), node.end()});
        }
    }

    /// Null behind the last.
    const JSONNode* Next() {
        if (!HasNext()) {
            return nullptr;
        }
        const JSONNode& child = *places_->next;
        ++places_->next;
        return &child;
    }
    bool HasNext() const { return places_.has_value() && places_->next != places_->end; }

private:
    struct Places {
        JSONNode::const_iterator next;
        JSONNode::const_iterator end;
    };
    std::optional<Places> places_;
};

/// The first member of the name; null where there is none. Only object nodes have members: the elements of an
/// array are none, even where they carry names.
inline const JSONNode* FindMember(const JSONNode& node, format::MemberName name) {
    if (node.type() != JSON_NODE) {
        return nullptr;
    }
    const auto found = node.find(name.c_str());
    return found == node.end() ? nullptr : &*found;
}

/// The same for several names, in one way through the members.
template <std::size_t Count>
std::array<const JSONNode*, Count> FindMembers(const JSONNode& node,
                                               const std::array<format::MemberName, Count>& names) {
    std::array<const JSONNode*, Count> found{};
    if (node.type() != JSON_NODE) {
        return found;
    }
    for (const JSONNode& member : node) {
        const NodeText name = NodeName(member);
        for (std::size_t index = 0; index < Count; ++index) {
            if (found[index] == nullptr && names[index] == name) {
                found[index] = &member;
            }
        }
    }
    return found;
}

/// A value as text, widened from the ANSI code page up to its first NUL.
inline OuString WideValue(const JSONNode& value) {
    const NodeText text = NodeValue(value);
    return TextFromAnsi(UpToNul(text));
}

/// The text of the first member of the name; empty where there is none.
inline OuString WideMember(const JSONNode& node, format::MemberName name) {
    const JSONNode* const member = FindMember(node, name);
    return member == nullptr ? OuString() : WideValue(*member);
}

/// Whether the text is exactly this one, which has ASCII characters only.
bool IsText(const OuString& text, std::string_view ascii);

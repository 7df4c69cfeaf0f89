#pragma once

#include <OuString.h>
#include <libjson.h>

#include <string>

#include "objectjson/CAEObjectJson.h"

/// The compact text of a node that a converter made.
inline std::string TextOfNode(const JSONNode& node) {
    return node.write().c_str();
}

/// A section written by one of the converter's operations, with its name: {"name":section}.
inline std::string TextOfSection(const JSONNode& section) {
    JSONNode root(JSON_NODE);
    root.push_back(section);
    return TextOfNode(root);
}

/// The value of the node's first member of that name.
inline std::string MemberText(const JSONNode& node, const char* name) {
    const auto member = node.find(name);
    return member == node.end() ? "(no such member)" : std::string(member->as_string().c_str());
}

/// The object as its own converter writes it.
inline std::string Exported(CAEObject& object) {
    return TextOfNode(CAEObjectJson(&object).GetJsonNode());
}

/// Imports a document onto the object.
inline void ImportText(const std::string& text, CAEObject& object) {
    CAEObjectJson(libjson::parse(text.c_str()), &object).Import();
}

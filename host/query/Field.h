#pragma once

#include <OuString.h>

#include <string>
#include <string_view>
#include <vector>

#include "host/document/ObjectWalk.h"

namespace host {

/// What conditions, columns and axes ask of objects.
enum class FieldKind {
    Kind,
    Name,
    Path,
    Identifier,
    Key,
    Created,
    Creator,
    FileType,
    FileSize,
    Files,
    Has,
    Metadata,
};

/// A named value of objects: one of the fixed words, or a metadata entry.
struct Field {
    FieldKind kind = FieldKind::Metadata;
    /// The name as the user wrote it, without `metadata:`.
    std::string name;
    /// The name of the metadata entry.
    OuString entry = {};

    /// Whether its values may be numbers.
    bool IsMeasured() const;
};

/// The field with this name. Fixed words are kind, name, path, id, key, created, creator, type, size, file
/// and has; letter case does not count. Every other name is a metadata entry, and so is one behind
/// `metadata:`.
Field FieldOf(std::string_view name);

/// The metadata entry with this name, also where the name is a fixed word.
Field EntryNamed(std::string_view name);

/// The fixed words.
std::vector<std::string> FixedFields();

/// A value in UTF-8 with its unit, which may be empty.
struct FieldValue {
    std::string text;
    std::string unit = {};
};

/// The values that the object has, of which there are several for Kind (the name that is shown comes first,
/// then the others that mean the same), Files and Has. Files of its iterations and parts are files of a
/// study, too. `type` and `size` are those of a file; other objects have metadata entries of these names.
std::vector<FieldValue> ValuesOf(const Field& field, const WalkedObject& walked);

/// The values as one text for people, or for programs with all digits; empty if there are none.
std::string ShownText(const Field& field, const WalkedObject& walked);
std::string ExactText(const Field& field, const WalkedObject& walked);

/// What `kind` and `has` may be compared with.
std::vector<std::string> KindWords();
std::vector<std::string> HasWords();

}  // namespace host

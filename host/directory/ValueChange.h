#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// A value of an object or a file that an update has set.
struct ValueChange {
    enum class Value { Name, Place, Metadata, Unit, File, FileOrder, Type, Format, Date };
    Value value;
    /// The name of the metadata entry, or the path of the file whose role at the object has changed.
    std::string name;
    /// What it was before; nothing if it was not there.
    std::optional<std::string> from;
    /// What it is now; nothing if it is not there any more.
    std::optional<std::string> to;
    /// The unit of a metadata entry.
    std::string unit = {};
};
using ValueChanges = std::vector<ValueChange>;

/// The word for a value in reports for scripts.
std::string_view WordOf(ValueChange::Value value);

/// `'Size' of 'beam' changes from 841 B to 1.2 kB`
std::string SentenceOf(const ValueChange& change, const std::string& object);

}  // namespace host

#pragma once

#include <string>
#include <vector>

#include "Field.h"
#include "host/document/ObjectWalk.h"

namespace host {

/// A list of objects as text: kind, path, identifier, key, and the fields that the user asked for.
class ObjectTable {
public:
    explicit ObjectTable(std::vector<Field> shown) : shown_(std::move(shown)) {}

    struct Cell {
        std::string text;
        /// The unit of a value, which stands apart in a list for programs.
        std::string unit = {};
    };
    using Row = std::vector<Cell>;

    Row RowForPeople(const WalkedObject& walked) const;
    Row RowForPrograms(const WalkedObject& walked) const;

    /// A line for each row, with columns below each other. Keys are a column only where there are any; a dash
    /// stands for a value that is not there.
    static std::string Lines(const std::vector<Row>& rows);
    /// Comma-separated values as RFC 4180 has them, with a line of names. A value's unit is a column of its
    /// own, where any value has one.
    std::string Csv(const std::vector<Row>& rows) const;

private:
    std::vector<Field> shown_;
};

}  // namespace host

#pragma once

#include <OuString.h>

#include <string_view>

#include "host/system/Database.h"

/// The values of the tables of a project file. Anything that this program does not write there is damage
/// and throws DatabaseError.
namespace host {

/// A column that holds an int.
int Integer(const Statement& row, int column);
/// A column that holds 0 or 1.
bool Flag(const Statement& row, int column);
/// A column that holds a text, with a NUL after its end and none before. It is there until the next row.
std::string_view NarrowText(const Statement& row, int column);
OuString Text(const Statement& row, int column);

}  // namespace host

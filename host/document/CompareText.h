#pragma once

#include <korvaneexchange/Compare.h>

#include <string>

/// What the program says of the differences between two projects.
namespace host {

/// How a difference is marked in front of its sentence: `+` added, `-` removed, `>` moved, `~` changed.
char MarkOf(korvane::exchange::Reason reason);

/// `3 differences: 1 added, 2 changed`
std::string SummaryOf(const korvane::exchange::CompareReport& report);

/// How projects are compared by the program: with the names under which they are displayed,
/// and with values as lists show them.
korvane::exchange::CompareOptions UsualComparison();

}  // namespace host

#pragma once

#include <string_view>

#include "FileKinds.h"

namespace host {

/// One row of the tables: what a name says.
struct FileKindRule {
    /// The extension without its dot, or the whole name, in lower case.
    std::string_view name;
    FileKind kind;
};

constexpr FileKindRule Is(std::string_view name, _tagFileType type, Solver solver = Solver::None) {
    return {name, {type, type, solver, Look::None}};
}
/// Input of one solver: a deck, unless the text shows that it is a part of one.
constexpr FileKindRule InputOf(Solver solver, std::string_view name) {
    return {name, {CAE_FILE_DECK, CAE_FILE_OTHER, solver, Look::Input}};
}
/// Input of some solver if the text says so, otherwise a file of the types given.
constexpr FileKindRule MaybeInput(std::string_view name, _tagFileType type,
                                  _tagFileType binaryType = CAE_FILE_OTHER, Solver solver = Solver::None) {
    return {name, {type, binaryType, solver, Look::PossibleInput}};
}
/// A part of the input of a solver, never a deck.
constexpr FileKindRule PartOfInput(std::string_view name, Solver solver = Solver::None) {
    return {name, {CAE_FILE_INCLUDE, CAE_FILE_OTHER, solver, Look::Part}};
}
constexpr FileKindRule TextOrBinary(std::string_view name, _tagFileType type, _tagFileType binaryType,
                                    Solver solver = Solver::None) {
    return {name, {type, binaryType, solver, Look::None}};
}

}  // namespace host

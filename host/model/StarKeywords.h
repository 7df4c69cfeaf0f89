#pragma once

#include <string>
#include <string_view>

/// Keyword lines of Abaqus and CalculiX: one star, and parameters behind commas.
namespace host {

bool IsStarKeyword(std::string_view line);

/// The keyword in upper case with single blanks: "*End  Step" gives "END STEP".
std::string StarKeyword(std::string_view line);

/// The value of a parameter on a keyword line: "input" of `*INCLUDE, INPUT=mesh.inp` is `mesh.inp`. Empty if
/// there is none.
std::string_view StarParameter(std::string_view line, std::string_view name);

}  // namespace host

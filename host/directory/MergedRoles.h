#pragma once

#include <EmbeddedModel.h>

#include <functional>

namespace host {

/// The files of an object in their roles after a new reading of the directory: those that the reading gives
/// it, and of those that it had, the ones that the directory does not have.
///
/// `reading` has the identifiers that the files have in the project. `isThere` tells whether the directory
/// has the file with an identifier.
korvane::FileRoles MergeRoles(const korvane::FileRoles& before, const korvane::FileRoles& reading,
                              const std::function<bool(int)>& isThere);

/// The roles with other identifiers: what `translate` makes of them.
korvane::FileRoles TranslateRoles(const korvane::FileRoles& roles, const std::function<int(int)>& translate);

bool AreSame(const korvane::FileRoles& left, const korvane::FileRoles& right);

}  // namespace host

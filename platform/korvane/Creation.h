#pragma once

#include <ctime>

#include "CAEObject.h"
#include "OuString.h"

namespace korvane {

/// The point of time in ISO 8601, UTC: `2026-03-01T09:30:00Z`.
OuString FormatDate(std::time_t time);
/// The name of the user who runs the process, as it was when first asked for; "unknown" where there is none.
const OuString& PresentUserName();

/// Whether objects of the kind can be created: the kinds with a name, except the unknown one.
bool CanBeCreated(_tagCAEObjectType type) noexcept;
/// Creates an object with the present date and user after the children of the parent, which is in a tree;
/// null for a kind that cannot be created and when no identifier is left.
CAEObject* CreateUnder(CAEObject& parent, _tagCAEObjectType type, const OuString& projectDirectory);

}  // namespace korvane

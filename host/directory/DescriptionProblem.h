#pragma once

#include <string>

#include "TextPlace.h"

namespace host {

/// Something that is left out of a korvane.toml, and why.
struct DescriptionProblem {
    TextPlace place;
    std::string text;
};

}  // namespace host

#pragma once

#include <string>
#include <string_view>

#include "CarriedTree.h"

/// How a report names the nodes of trees and documents, in UTF-8.
namespace korvane::exchange {

/// The JSON Pointer of the node; empty for the root.
std::string PointerOf(const CarriedTree& tree, const DistinctTexts& texts, NodeIndex node);

/// The names from the root to the node, with slashes between them, printable. Of a path with more than 40
/// names, the 20 first and last ones; of a long name, the beginning.
std::string PathOf(const CarriedTree& tree, const DistinctTexts& texts, NodeIndex node);

/// The two texts as excerpts, 'a' and 'b'. Where they differ only behind what an excerpt shows, it begins
/// shortly before.
struct ExcerptPair {
    std::string first;
    std::string second;
};
ExcerptPair ExcerptsOf(std::string_view first, std::string_view second);

}  // namespace korvane::exchange

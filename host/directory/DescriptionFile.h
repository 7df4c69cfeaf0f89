#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "DescriptionProblem.h"
#include "TextPlace.h"

/// What users say about a study, in a file korvane.toml in its directory.
namespace host {

inline constexpr std::string_view kDescriptionFile = "korvane.toml";

/// Longer files are not read.
inline constexpr std::uint64_t kMostOfDescriptionFile = std::uint64_t{1} << 20U;

/// An entry of the metadata. A number is written as briefly as it can be.
struct DescribedEntry {
    std::string name;
    std::string value;
    std::string unit;
};

struct DescribedObject {
    /// The name that an iteration or a part has otherwise; empty for the study.
    std::string key;
    /// Where the file says it.
    TextPlace place;
    /// Empty if the file does not say it.
    std::string name;
    std::string description;
    /// In the order of the file.
    std::vector<DescribedEntry> metadata;
};

struct DescriptionFile {
    DescribedObject study;
    /// In the order of the file.
    std::vector<DescribedObject> iterations;
    std::vector<DescribedObject> parts;
    std::vector<DescriptionProblem> problems;
};

/// Reads the text of the file, without lines that are not TOML. If what is meant cannot be told without such
/// a line, there is nothing but a problem.
DescriptionFile ReadDescriptionFile(std::string_view text);

}  // namespace host

#pragma once

#include <string>
#include <vector>

#include "support/ProcessorTime.h"
#include "support/TemporaryDirectory.h"

struct CommandResult {
    int status = 0;
    /// What it wrote on its standard output goes to the file `output` of the folder.
    std::string said;
    ProcessorTime time = {};
};

/// Runs the program in the folder on 256 KiB of stack: the program itself, or on Windows, where a program
/// cannot be given less, one that has all its code in a thread of that size.
CommandResult RunOnSmallStack(const std::vector<std::string>& arguments, const TemporaryDirectory& folder);

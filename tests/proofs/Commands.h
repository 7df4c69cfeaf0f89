#pragma once

#include <string>
#include <vector>

#include "support/TemporaryDirectory.h"

/// One command of the program, in the order of a project's way to the server and back.
struct Command {
    const char* name;
    /// Words that begin with @ are files of the folder: @doc.json; the word KEY is the first key of the
    /// answer.
    std::vector<std::string> arguments;
};

/// The commands that the proofs go through, a way that each goes on from the one before; a new one is a line
/// more in the table behind this. The way starts with the document `doc.json` and ends with nothing
/// different.
const std::vector<Command>& Commands();

struct CommandResult {
    int status = 0;
    /// What it wrote on its standard output goes to the file `output` of the folder.
    std::string said;
};

/// Runs the command on 256 KiB of stack: the program itself, or on Windows, where a program cannot be given
/// less, its code in a thread of that size.
CommandResult RunOnSmallStack(const Command& command, const TemporaryDirectory& folder);

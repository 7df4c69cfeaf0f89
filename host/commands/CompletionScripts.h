#pragma once

#include <string>
#include <vector>

#include "CommandTable.h"

/// Scripts by which shells complete the commands, options, words and files of the table.
namespace host {

std::string BashCompletion(const std::vector<CommandEntry>& table);
std::string ZshCompletion(const std::vector<CommandEntry>& table);
std::string FishCompletion(const std::vector<CommandEntry>& table);

}  // namespace host

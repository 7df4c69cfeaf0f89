#pragma once

namespace host {

/// The whole program: what main does. Returns the exit status and never throws.
int RunProgram(int argumentCount, char** arguments);

}  // namespace host

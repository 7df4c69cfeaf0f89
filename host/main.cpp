#include "commands/Program.h"

int main(int argumentCount, char** arguments) {
    return host::RunProgram(argumentCount, arguments);
}

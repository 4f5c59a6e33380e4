// The program as a whole: its commands, its help and its exit codes.
#pragma once

namespace tool {

// Runs the command that the line names and returns the exit code: 0, 1 or 2, see kExitText.
int runProgram(int argc, char** argv);

}  // namespace tool

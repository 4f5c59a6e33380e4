// Scratch files: files without a name, which are gone when they are closed or the program ends.
#pragma once

#include <string>

namespace tool {

// TMPDIR, else /tmp.
std::string temporaryFolder();

// Opens a scratch file in this folder for writing and reading. Throws ToolError with the system's
// reason.
int openScratchFile(const std::string& folder);

// A scratch file that holds everything from the standard input; throws ToolError.
int copyOfStandardInput();
// Writes a whole file to the standard output. Returns 0 or an errno.
int copyToStandardOutput(int file);

}  // namespace tool

// zkrt46: loads the plug-in as a host does, renders audio through it and measures it, and converts
// and checks its preset and bank files.
#include "tools/commands/Program.h"

int main(int argc, char** argv)
{
    return tool::runProgram(argc, argv);
}

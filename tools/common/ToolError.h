// What went wrong, in one line for the person at the keyboard.
#pragma once

#include <stdexcept>

namespace tool {

class ToolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tool

// ToolError: an error whose message is one line for the user.
#pragma once

#include <stdexcept>

namespace tool {

class ToolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tool

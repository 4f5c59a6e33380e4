// The one exception of the host: a single line, written for the person at the keyboard.
#pragma once

#include <stdexcept>

namespace host {

class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace host

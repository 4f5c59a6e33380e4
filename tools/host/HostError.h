// HostError: an error of the host whose message is one line for the user.
#pragma once

#include <stdexcept>

namespace host {

class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace host

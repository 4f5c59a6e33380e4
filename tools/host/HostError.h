// HostError: an error of the host whose message is one line for the user.
#pragma once

#include <stdexcept>
#include <string>

namespace host {

class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// There is no file of the plug-in's name.
class NoSuchPlugin : public HostError {
public:
    explicit NoSuchPlugin(const std::string& path)
        : HostError("no such plug-in: '" + path + "'"), path(path)
    {
    }
    const std::string path;
};

}  // namespace host

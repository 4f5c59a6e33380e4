// The message of the exception that an action throws.
#pragma once

#include <exception>
#include <string>

template <typename Action>
std::string complaintOf(const Action& action)
{
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "none";
}

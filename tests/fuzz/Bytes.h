// Takes the bytes of a fuzzer's input for numbers; zeros when they are used up.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : next(data), left(size) { }

    bool empty() const { return left == 0; }

    template <typename Number>
    Number take()
    {
        Number number{};
        const std::size_t count = std::min(left, sizeof number);
        std::memcpy(&number, next, count);
        skip(count);
        return number;
    }
    std::uint8_t byte() { return take<std::uint8_t>(); }

    std::vector<std::uint8_t> block(std::size_t count)
    {
        count = std::min(left, count);
        std::vector<std::uint8_t> bytes(next, next + count);
        skip(count);
        return bytes;
    }

private:
    void skip(std::size_t count)
    {
        next += count;
        left -= count;
    }

    const std::uint8_t* next;
    std::size_t left;
};

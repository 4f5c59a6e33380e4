// Takes the bytes of a fuzzer's input for numbers; zeros when they are used up.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : next(data), left(size) { }

    bool empty() const { return left == 0; }

    std::vector<std::uint8_t> block(std::size_t count)
    {
        count = std::min(left, count);
        const std::uint8_t* const first = next;
        next += count;
        left -= count;
        return {first, next};
    }
    template <typename Number>
    Number take()
    {
        std::vector<std::uint8_t> bytes = block(sizeof(Number));
        bytes.resize(sizeof(Number));
        Number number{};
        std::memcpy(&number, bytes.data(), sizeof number);
        return number;
    }
    std::uint8_t byte() { return take<std::uint8_t>(); }

private:
    const std::uint8_t* next;
    std::size_t left;
};

/// An input taken apart from the front: numbers, flags and texts for a target that needs several. What is missing at the
/// end reads as zero and as empty.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace ZorvFuzz {

class InputBytes {
public:
    InputBytes(const std::uint8_t* data, std::size_t size) : position(data), end(data + size) {}

    bool isEmpty() const { return position == end; }

    template <class NumberT>
    NumberT number()
    {
        NumberT value{};
        const std::size_t size = std::min(sizeof(value), left());
        if (size > 0) {
            std::memcpy(&value, position, size);
        }
        position += size;
        return value;
    }

    /// Up to a zero byte, which is passed over.
    std::string text()
    {
        const std::uint8_t* const zero = std::find(position, end, std::uint8_t{0});
        std::string taken(position, zero);
        position = zero == end ? end : zero + 1;
        return taken;
    }

private:
    std::size_t left() const { return static_cast<std::size_t>(end - position); }

    const std::uint8_t* position;
    const std::uint8_t* const end;
};

}  // namespace ZorvFuzz

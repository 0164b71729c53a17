/// Numbers in texts: digits and nothing else, and never more than fits.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>

namespace ZorvInput {

/// False, and no number, when the text is no number or one from 2^64.
inline bool parseUnsigned(const std::string& text, std::uint64_t& number)
{
    std::uint64_t parsed = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, parsed);
    if (error != std::errc() || behind != end) {
        return false;
    }
    number = parsed;
    return true;
}

}  // namespace ZorvInput

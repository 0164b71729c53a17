/// The data of a stored alarm's item: a zero-terminated text in a buffer of fixed size.
#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace ZorvFm {

constexpr std::size_t storedAlarmSize = 1000;  // bytes, the final zero included

using StoredAlarmT = std::array<char, storedAlarmSize>;

/// A longer text is cut without warning; its reader tells.
inline StoredAlarmT toStoredAlarm(const std::string& text)
{
    StoredAlarmT data{};
    std::memcpy(data.data(), text.data(), std::min(text.size(), data.size() - 1));
    return data;
}

/// The text of a buffer that the replicated list has filled.
inline std::string fromStoredAlarm(const StoredAlarmT& data)
{
    return {data.data(), strnlen(data.data(), data.size())};
}

}  // namespace ZorvFm

/// A storage's lists as text, for comparison as a whole: "7:abc 9:def".
#pragma once

#include <string>

#include "stores/ListStorage.hpp"

namespace ZorvNode {

inline std::string toText(ListStorage& lists, const std::string& list)
{
    std::uint64_t identity = 0;
    std::uint32_t itemSize = 0;
    if (lists.describe(list, identity, itemSize) != ZORV_RETURN_OK) {
        return "no list";
    }
    std::string text = "list " + std::to_string(identity) + " of " + std::to_string(itemSize);
    ListItem item;
    for (std::uint64_t from = 0; lists.findFrom(list, from, item) == ZORV_RETURN_OK; from = item.number + 1) {
        text += " " + std::to_string(item.number) + ":" + std::string(item.data.begin(), item.data.end());
    }
    return text;
}

inline std::uint64_t push(ListStorage& lists, const std::string& list, const std::string& data)
{
    std::uint64_t number = 0;
    return lists.pushBack(list, data.data(), number) == ZORV_RETURN_OK ? number : 0;
}

}  // namespace ZorvNode

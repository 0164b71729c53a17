/// Where replicated lists live: named lists of numbered items of one size, in the order in which they were pushed.
///
/// Item numbers grow over all lists of a storage and are never used again, so that a number names one item for ever and
/// the order of the numbers is the order of the items.
///
/// Threads:   any; each operation is atomic.
/// Ownership: data is copied.
/// Failure:   return codes of ZorvReturn.h; a failed operation has changed nothing. May throw what the storage throws.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ZorvReturn.h"

namespace ZorvNode {

using ListDataT = std::vector<std::uint8_t>;

/// What a storage takes in; more is answered with -10.
struct ListLimits {
    std::size_t lists = 64;
    std::size_t itemsPerList = 100000;
    std::uint32_t itemSize = 1U << 20U;
};

/// One item, by value.
struct ListItem {
    std::uint64_t number = 0;
    ListDataT data;
};

struct ListDescription {
    std::string name;
    std::uint32_t itemSize = 0;  ///< bytes
    std::size_t numberOfItems = 0;
};

class ListStorage {
public:
    virtual ~ListStorage() = default;

    /// -3 it exists, -10 too many lists, or too large items.
    virtual ZorvReturnT create(std::string_view list, std::uint32_t itemSize) = 0;

    /// -2 no such list; so does every operation below.
    virtual ZorvReturnT remove(std::string_view list) = 0;

    /// Tells a list from another one that had the same name before; and the size of its items.
    virtual ZorvReturnT describe(std::string_view list, std::uint64_t& identity, std::uint32_t& itemSize) = 0;

    virtual ZorvReturnT isEmpty(std::string_view list, bool& empty) = 0;

    /// data holds the list's item size. -10 the list is full.
    virtual ZorvReturnT pushBack(std::string_view list, const void* data, std::uint64_t& number) = 0;

    /// -2 no such item.
    virtual ZorvReturnT erase(std::string_view list, std::uint64_t number) = 0;

    /// -2 no such item.
    virtual ZorvReturnT replace(std::string_view list, std::uint64_t number, const void* data) = 0;

    /// The first item whose number is at least the given one. -2 there is none.
    virtual ZorvReturnT findFrom(std::string_view list, std::uint64_t number, ListItem& item) = 0;

    /// The number of that item alone. -2 there is none.
    virtual ZorvReturnT findNumberFrom(std::string_view list, std::uint64_t number, std::uint64_t& found) = 0;

    /// All lists, by name.
    virtual std::vector<ListDescription> describeAll() = 0;

    /// Records what could not be recorded when it was changed, if there is anything.
    virtual void catchUp() {}
};

}  // namespace ZorvNode

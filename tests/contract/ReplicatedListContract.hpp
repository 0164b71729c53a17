/// What every implementation of ZorvMwSpiReplicatedList_1T promises. An implementation joins by giving a provider to
/// INSTANTIATE_TEST_SUITE_P (ListProviders.cpp).
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ZorvMwSpiReplicatedList_1.h"

namespace ZorvTest {

/// An implementation, alive as long as this object, empty at first.
class ListImplementation {
public:
    virtual ~ListImplementation() = default;
    virtual const ZorvMwSpiReplicatedList_1T* table() const = 0;
};

struct ListProvider {
    std::string name;

    /// itemBound: how many items a list takes, if the implementation has such a bound at all.
    std::function<std::unique_ptr<ListImplementation>(std::size_t itemBound)> make;
};

class ReplicatedListContractTest : public testing::TestWithParam<ListProvider> {
protected:
    using ItemT = std::uint64_t;

    /// One open iteration.
    class Walk {
    public:
        Walk(const ZorvMwSpiReplicatedList_1T* table, const ZorvMwSpiListNameT& list);

        /// Steps once; name and value are those of the item met.
        ZorvReturnT next();

        /// All values from here to the end.
        std::vector<ItemT> rest();

        ZorvReturnT finalize() { return spi->listGetFinalize(&list, ref); }

        std::string name() const { return itemName.value; }

        ZorvMwSpiListRefT ref = nullptr;
        ZorvMwSpiListNameT itemName{};
        ItemT value = 0;

    private:
        const ZorvMwSpiReplicatedList_1T* const spi;
        const ZorvMwSpiListNameT list;
    };

    static ZorvMwSpiListNameT nameOf(const std::string& text);

    ZorvReturnT create() { return spi->listCreate(&list, sizeof(ItemT)); }

    /// Creates the list with these items; their names.
    std::vector<ZorvMwSpiListNameT> create(const std::vector<ItemT>& values);

    ZorvMwSpiListNameT push(ItemT value);
    ZorvReturnT erase(const ZorvMwSpiListNameT& item) { return spi->listEraseItem(&list, &item); }
    ZorvReturnT replace(const ZorvMwSpiListNameT& item, ItemT value);
    Walk walk() const { return {spi, list}; }

    /// All items from front to back, through one iteration.
    std::vector<ItemT> items() const;

    static constexpr std::size_t itemBound = 100;

    const std::unique_ptr<ListImplementation> implementation = GetParam().make(itemBound);
    const ZorvMwSpiReplicatedList_1T* const spi = implementation->table();
    const ZorvMwSpiListNameT list = nameOf("FmActiveAlarmList2");
    const ZorvMwSpiListNameT otherList = nameOf("FmStatusSection");
};

/// Implementations whose lists can be full.
class BoundedListContractTest : public ReplicatedListContractTest {};

}  // namespace ZorvTest

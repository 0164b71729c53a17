#include "ReplicatedListContract.hpp"

namespace ZorvTest {

ReplicatedListContractTest::Walk::Walk(const ZorvMwSpiReplicatedList_1T* table, const ZorvMwSpiListNameT& walkedList)
    : spi(table),
      list(walkedList)
{
    EXPECT_EQ(0, spi->listGetFrontRef(&list, &ref));
}

ZorvReturnT ReplicatedListContractTest::Walk::next()
{
    return spi->listGetNextItemFront(&list, &ref, &itemName, &value);
}

std::vector<ReplicatedListContractTest::ItemT> ReplicatedListContractTest::Walk::rest()
{
    std::vector<ItemT> met;
    while (ref != nullptr && next() == 0) {
        met.push_back(value);
    }
    return met;
}

ZorvMwSpiListNameT ReplicatedListContractTest::nameOf(const std::string& text)
{
    ZorvMwSpiListNameT name{};
    text.copy(name.value, sizeof(name.value) - 1);
    name.length = static_cast<std::uint16_t>(text.size() + 1);
    return name;
}

std::vector<ZorvMwSpiListNameT> ReplicatedListContractTest::create(const std::vector<ItemT>& values)
{
    EXPECT_EQ(0, create());
    std::vector<ZorvMwSpiListNameT> names;
    for (const ItemT value : values) {
        names.push_back(push(value));
    }
    return names;
}

ZorvMwSpiListNameT ReplicatedListContractTest::push(ItemT value)
{
    ZorvMwSpiListNameT name{};
    EXPECT_EQ(0, spi->listPushBack(&list, &name, &value));
    return name;
}

ZorvReturnT ReplicatedListContractTest::replace(const ZorvMwSpiListNameT& item, ItemT value)
{
    return spi->listReplaceItem(&list, &item, &value);
}

std::vector<ReplicatedListContractTest::ItemT> ReplicatedListContractTest::items() const
{
    Walk all = walk();
    std::vector<ItemT> met = all.rest();
    EXPECT_EQ(0, all.finalize());
    return met;
}

}  // namespace ZorvTest

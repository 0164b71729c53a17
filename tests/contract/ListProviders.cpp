#include "FakeReplicatedList.hpp"
#include "ReplicatedListContract.hpp"
#include "services/replicatedlist/ReplicatedListTable.hpp"
#include "stores/MemoryListStorage.hpp"

namespace ZorvTest {

namespace {

class NodeLists : public ListImplementation {
public:
    explicit NodeLists(std::size_t itemBound) : storage({8, itemBound, 65536}) {}

    const ZorvMwSpiReplicatedList_1T* table() const override { return ZorvNode::ReplicatedListTable::table(); }

private:
    ZorvNode::MemoryListStorage storage;
    ZorvNode::ReplicatedListService service{storage};
    const ZorvNode::ReplicatedListTable binding{service};
};

class FakeLists : public ListImplementation {
public:
    const ZorvMwSpiReplicatedList_1T* table() const override { return ZorvFakes::FakeReplicatedList::table(); }

private:
    ZorvFakes::Journal journal;
    ZorvFakes::FakeReplicatedList lists{journal};
};

const ListProvider memory = {"memory", [](std::size_t bound) { return std::make_unique<NodeLists>(bound); }};
const ListProvider fake = {"fake", [](std::size_t) { return std::make_unique<FakeLists>(); }};

std::string nameOf(const testing::TestParamInfo<ListProvider>& provider)
{
    return provider.param.name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Of, ReplicatedListContractTest, testing::Values(memory, fake), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, BoundedListContractTest, testing::Values(memory), nameOf);

}  // namespace ZorvTest

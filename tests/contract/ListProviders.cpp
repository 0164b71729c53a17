#include "FakeReplicatedList.hpp"
#include "ReplicatedListContract.hpp"
#include "TemporaryDirectory.hpp"
#include "services/replicatedlist/ReplicatedListTable.hpp"
#include "stores/StateStore.hpp"

namespace ZorvTest {

namespace {

class NodeLists : public ListImplementation {
public:
    NodeLists(ZorvNode::StoreKind kind, std::size_t itemBound)
        : store({kind, ZorvNode::Durability::process, directory.path()}, {8, itemBound, 65536},
                [](std::int32_t, const std::string& text) { ADD_FAILURE() << text; })
    {
    }

    const ZorvMwSpiReplicatedList_1T* table() const override { return ZorvNode::ReplicatedListTable::table(); }

private:
    const TemporaryDirectory directory;
    ZorvNode::StateStore store;
    ZorvNode::ReplicatedListService service{store.getLists()};
    const ZorvNode::ReplicatedListTable binding{service};
};

class FakeLists : public ListImplementation {
public:
    const ZorvMwSpiReplicatedList_1T* table() const override { return ZorvFakes::FakeReplicatedList::table(); }

private:
    ZorvFakes::Journal journal;
    ZorvFakes::FakeReplicatedList lists{journal};
};

const ListProvider memory = {
    "memory", [](std::size_t bound) { return std::make_unique<NodeLists>(ZorvNode::StoreKind::memory, bound); }};
const ListProvider sqlite = {
    "sqlite", [](std::size_t bound) { return std::make_unique<NodeLists>(ZorvNode::StoreKind::sqlite, bound); }};
const ListProvider fake = {"fake", [](std::size_t) { return std::make_unique<FakeLists>(); }};

std::string nameOf(const testing::TestParamInfo<ListProvider>& provider)
{
    return provider.param.name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Of, ReplicatedListContractTest, testing::Values(memory, sqlite, fake), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, BoundedListContractTest, testing::Values(memory, sqlite), nameOf);

}  // namespace ZorvTest

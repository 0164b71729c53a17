#include "EventRouterContract.hpp"
#include "FakeEventRouter.hpp"
#include "services/eventrouter/EventRouterTable.hpp"

namespace ZorvTest {

namespace {

class NodeRouter : public RouterImplementation {
public:
    explicit NodeRouter(const RouterBounds& bounds)
        : router(limitsFrom(bounds), [](std::int32_t, const std::string&) {})
    {
    }

    const ZorvOamSpiEventRouter_1T* table() const override { return ZorvNode::EventRouterTable::table(); }
    void shutdown() override { router.shutdown(); }
    std::uint64_t refusals() const override { return router.getStatistics().lost; }

private:
    static ZorvNode::EventRouter::Limits limitsFrom(const RouterBounds& bounds)
    {
        ZorvNode::EventRouter::Limits limits;
        limits.queueBound = bounds.queue;
        limits.consumerBound = bounds.consumers;
        return limits;
    }

    ZorvNode::EventRouter router;
    const ZorvNode::EventRouterTable binding{router};
};

class FakeRouter : public RouterImplementation {
public:
    const ZorvOamSpiEventRouter_1T* table() const override { return ZorvFakes::FakeEventRouter::table(); }
    void shutdown() override { router.clearAll(); }
    std::uint64_t refusals() const override { return 0; }

private:
    ZorvFakes::Journal journal;
    ZorvFakes::FakeEventRouter router{journal};
};

const RouterProvider node = {"node", [](const RouterBounds& bounds) { return std::make_unique<NodeRouter>(bounds); }};
const RouterProvider fake = {"fake", [](const RouterBounds&) { return std::make_unique<FakeRouter>(); }};

std::string nameOf(const testing::TestParamInfo<RouterProvider>& provider)
{
    return provider.param.name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Of, EventRouterContractTest, testing::Values(node, fake), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, QueueingRouterContractTest, testing::Values(node), nameOf);

}  // namespace ZorvTest

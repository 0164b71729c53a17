#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <set>
#include <thread>

#include "FakeTrace.hpp"
#include "TemporaryDirectory.hpp"
#include "services/trace/TraceTable.hpp"

namespace ZorvTest {

using testing::HasSubstr;

namespace {

/// A trace that admits everything of group "Fm" and nothing of others.
class TraceImplementation {
public:
    virtual ~TraceImplementation() = default;
    virtual const YaltMwSpiTrace_1T* table() const = 0;

    /// The latest trace, with all its parts somewhere in it.
    virtual std::string last() const = 0;
};

class NodeTrace : public TraceImplementation {
public:
    const YaltMwSpiTrace_1T* table() const override { return ZorvNode::TraceTable::table(); }
    std::string last() const override { return directory.read("trace.log"); }

private:
    const TemporaryDirectory directory;
    ZorvNode::TraceService trace{directory.path("trace.log"), {}, {{"Fm", YALT_TRACE_DETAILED}}};
    const ZorvNode::TraceTable binding{trace};
};

class FakeTraces : public TraceImplementation {
public:
    FakeTraces()
    {
        ZorvFakes::FakeTrace::setLevels(0);
        ZorvFakes::FakeTrace::setLevel("Fm", YALT_TRACE_DETAILED);
    }

    const YaltMwSpiTrace_1T* table() const override { return ZorvFakes::FakeTrace::table(); }

    std::string last() const override
    {
        const ZorvFakes::TraceLine line = trace.last();
        return line.group + " " + std::to_string(line.level) + " " + line.file + ":" + std::to_string(line.line) + " " +
               line.function + " " + line.text;
    }

private:
    ZorvFakes::Journal journal;
    ZorvFakes::FakeTrace trace{journal};
};

struct TraceProvider {
    std::string name;
    std::function<std::unique_ptr<TraceImplementation>()> make;
};

const TraceProvider nodeTrace = {"node", [] { return std::make_unique<NodeTrace>(); }};
const TraceProvider fakeTrace = {"fake", [] { return std::make_unique<FakeTraces>(); }};

}  // namespace

class TraceContractTest : public testing::TestWithParam<TraceProvider> {
protected:
    const std::int32_t* placeOf(const std::string& group) const
    {
        const std::int32_t* place = nullptr;
        EXPECT_EQ(0, spi->getLevel(group.c_str(), &place));
        return place;
    }

    const std::unique_ptr<TraceImplementation> implementation = GetParam().make();
    const YaltMwSpiTrace_1T* const spi = implementation->table();
};

TEST_P(TraceContractTest, aTraceCarriesGroupLevelPlaceAndText)
{
    EXPECT_EQ(0, spi->write("Fm", 8, "AlarmList.cpp", 42, "saveAlarm", "100%s of it"));

    EXPECT_THAT(implementation->last(), HasSubstr("Fm 8 AlarmList.cpp:42 saveAlarm 100%s of it"));
}

TEST_P(TraceContractTest, aGroupsLevelHasOnePlace)
{
    const std::int32_t* const place = placeOf("Fm");

    for (int number = 0; number < 100; ++number) {
        placeOf("Group" + std::to_string(number));
    }

    EXPECT_EQ(place, placeOf("Fm"));
    EXPECT_EQ(YALT_TRACE_DETAILED, __atomic_load_n(place, __ATOMIC_RELAXED));
}

TEST_P(TraceContractTest, anUnknownGroupComesIntoBeing)
{
    const std::int32_t* const place = placeOf("NeverHeardOf");

    EXPECT_NE(placeOf("Fm"), place);
    EXPECT_EQ(0, __atomic_load_n(place, __ATOMIC_RELAXED));
    EXPECT_EQ(place, placeOf("NeverHeardOf"));
}

TEST_P(TraceContractTest, aTraceOfAnUnknownGroupIsTaken)
{
    EXPECT_EQ(0, spi->write("NeverHeardOf", 1, "file.cpp", 1, "function", "text"));
}

TEST_P(TraceContractTest, aGroupHasOnePlaceForAllThreads)
{
    std::vector<const std::int32_t*> places(4);
    std::vector<std::thread> threads;
    for (const std::int32_t*& place : places) {
        threads.emplace_back([this, &place] {
            for (int number = 0; number < 50; ++number) {
                placeOf("Group" + std::to_string(number));
            }
            place = placeOf("New");
            EXPECT_EQ(0, spi->write("Fm", 8, "file.cpp", 1, "function", "text"));
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(1U, std::set<const std::int32_t*>(places.begin(), places.end()).size());
}

INSTANTIATE_TEST_SUITE_P(Of, TraceContractTest, testing::Values(nodeTrace, fakeTrace),
                         [](const auto& provider) { return provider.param.name; });

}  // namespace ZorvTest

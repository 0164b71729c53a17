#include <benchmark/benchmark.h>

#include "Alarm.hpp"
#include "Logging.hpp"
#include "Parts.hpp"

namespace ZorvBench {

namespace {

constexpr benchmark::IterationCount batch = 100;  // between two pauses
constexpr std::chrono::seconds patience(10);
const char* const eventType = "zorv.bench.event";

/// Remembers the one consumer.
class Producer : public ZorvNode::RouterProducer {
public:
    ZorvReturnT addFilter(unsigned long consumer, const char*, YaltNameValuePair** consumerFilter) override
    {
        consumerId = consumer;
        filter = consumerFilter;
        return ZORV_RETURN_OK;
    }

    ZorvReturnT removeFilter(unsigned long, const char*, YaltNameValuePair**) override { return ZORV_RETURN_OK; }
    ZorvReturnT clearAll() override { return ZORV_RETURN_OK; }
    ZorvReturnT doneWithValue(const char*, void*) override { return ZORV_RETURN_OK; }

    unsigned long consumerId = 0;
    YaltNameValuePair** filter = nullptr;
};

class Consumer : public ZorvNode::RouterConsumer {
public:
    ZorvReturnT onEvent(unsigned long, const char*, YaltNameValuePair**, void*) override { return ZORV_RETURN_OK; }
};

/// To a consumer that does nothing; the cost is the notifying thread's.
void notify(benchmark::State& state, Stage& stage)
{
    ZorvNode::EventRouter& router = stage.with(10).getNode()->router;
    const auto producer = std::make_shared<Producer>();
    std::uint32_t handle = 0;
    unsigned long consumerId = 0;
    YaltNameValuePair* const noFilter[] = {nullptr};
    router.registerProducer(producer, handle);
    router.addEventType(handle, eventType);
    router.registerConsumer(std::make_shared<Consumer>(), consumerId);
    router.addSubscription(consumerId, eventType, noFilter);
    while (state.KeepRunningBatch(batch)) {
        for (benchmark::IterationCount i = 0; i < batch; ++i) {
            router.notify(handle, producer->consumerId, eventType, producer->filter, &handle);
        }
        state.PauseTiming();
        router.waitUntilIdle(patience);
        state.ResumeTiming();
    }
    router.unregisterConsumer(consumerId);
    router.unregisterProducer(handle);
    router.waitUntilCallbacksEnded(patience);
}

/// An argument that would cost much.
void traceNotAdmitted(benchmark::State& state, Stage& stage)
{
    stage.with(10);
    const ZorvFm::FmConfig config;
    const ZorvFm::Alarm alarm(config);
    for (auto _ : state) {
        ZORV_TRACE("Alarm (%s)", alarm.toString().c_str());
        benchmark::DoNotOptimize(&alarm);
    }
}

void emptyLoop(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(&state);
    }
}

}  // namespace

void registerNodeParts(Stage& stage)
{
    benchmark::RegisterBenchmark("notify", [&stage](benchmark::State& state) { notify(state, stage); });
    benchmark::RegisterBenchmark("trace not admitted",
                                 [&stage](benchmark::State& state) { traceNotAdmitted(state, stage); });
    benchmark::RegisterBenchmark("empty loop", &emptyLoop);
}

}  // namespace ZorvBench

#include "RaisingProducer.hpp"

#include <cstdio>
#include <mutex>
#include <stdexcept>

namespace ZorvBench {

namespace {

std::string dnOf(std::uint64_t number)
{
    char dn[64];
    std::snprintf(dn, sizeof(dn), "ManagedElement=1,Equipment=1,Slot=%u,Port=%06u", static_cast<unsigned>(number % 16),
                  static_cast<unsigned>(number));
    return dn;
}

}  // namespace

/// Remembers the one consumer of applications' notifications.
class RaisingProducer::Port : public ZorvNode::RouterProducer {
public:
    ZorvReturnT addFilter(unsigned long consumer, const char*, YaltNameValuePair** consumerFilter) override
    {
        const std::lock_guard<std::mutex> lock(mutex);
        consumerId = consumer;
        filter = consumerFilter;
        return ZORV_RETURN_OK;
    }

    ZorvReturnT removeFilter(unsigned long, const char*, YaltNameValuePair**) override { return ZORV_RETURN_OK; }
    ZorvReturnT clearAll() override { return ZORV_RETURN_OK; }
    ZorvReturnT doneWithValue(const char*, void*) override { return ZORV_RETURN_OK; }

    std::pair<unsigned long, YaltNameValuePair**> getConsumer()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return {consumerId, filter};
    }

private:
    std::mutex mutex;
    unsigned long consumerId = 0;          // guarded by mutex
    YaltNameValuePair** filter = nullptr;  // guarded by mutex
};

RaisingProducer::RaisingProducer(ZorvNode::EventRouter& eventRouter)
    : router(eventRouter),
      port(std::make_shared<Port>())
{
    router.registerProducer(port, handle);
    router.addEventType(handle, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4);
}

RaisingProducer::~RaisingProducer()
{
    router.unregisterProducer(handle);
    router.waitUntilCallbacksEnded(std::chrono::seconds(10));
}

void RaisingProducer::prepare(const Sent& sent)
{
    Prepared& made = prepared.emplace_back(Prepared{sent.dn.empty() ? dnOf(sent.number) : sent.dn, sent.text, {}});
    made.notification = {made.dn.c_str(),   sent.majorType, sent.minorType, firstTime + sent.number,
                         made.text.c_str(), sent.severity,  {nullptr, 0}};
}

void RaisingProducer::send()
{
    const auto [consumerId, filter] = port->getConsumer();
    if (router.notify(handle, consumerId, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4, filter,
                      &prepared.at(next++).notification) != ZORV_RETURN_OK) {
        throw std::runtime_error("the router refuses a notification");
    }
}

}  // namespace ZorvBench

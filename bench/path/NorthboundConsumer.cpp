#include "NorthboundConsumer.hpp"

#include <cstring>

#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"

namespace ZorvBench {

class NorthboundConsumer::Port : public ZorvNode::RouterConsumer {
public:
    ZorvReturnT onEvent(unsigned long, const char* eventType, YaltNameValuePair**, void* value) override
    {
        if (std::vector<ClockT::time_point>* const places = arrivals;
            places != nullptr && std::strcmp(eventType, ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3) == 0) {
            const auto* notification = static_cast<const ZorvOamApiFmNotificationEventValue_3*>(value);
            (*places)[notification->alarm->eventTime % places->size()] = ClockT::now();
        }
        number.fetch_add(1, std::memory_order_release);
        return ZORV_RETURN_OK;
    }

    std::atomic<std::uint64_t> number{0};
    std::atomic<std::vector<ClockT::time_point>*> arrivals{nullptr};
};

NorthboundConsumer::NorthboundConsumer(ZorvNode::EventRouter& eventRouter)
    : router(eventRouter),
      port(std::make_shared<Port>())
{
    YaltNameValuePair* const noFilter[] = {nullptr};
    router.registerConsumer(port, consumerId);
    router.addSubscription(consumerId, ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, noFilter);
    router.addSubscription(consumerId, ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2, noFilter);
}

NorthboundConsumer::~NorthboundConsumer()
{
    router.unregisterConsumer(consumerId);
}

std::uint64_t NorthboundConsumer::getNumber() const
{
    return port->number.load(std::memory_order_acquire);
}

void NorthboundConsumer::noteArrivals(std::vector<ClockT::time_point>* places)
{
    port->arrivals = places;
}

}  // namespace ZorvBench

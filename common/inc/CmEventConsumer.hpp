/// Binds configuration-change events, filtered by regular expressions over DNs, to a member function of a subscriber.
///
/// Threads, ownership and failure as for EventConsumer.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "EventConsumer.hpp"
#include "YaltOamSpiCmEvent_1.h"

namespace Zorv {

template <class SubscriberT, int instanceNumber>
class CmEventConsumer : public EventConsumer<CmEventConsumer<SubscriberT, instanceNumber>, instanceNumber> {
public:
    using Base = EventConsumer<CmEventConsumer, instanceNumber>;
    using CmCallbackT = void (SubscriberT::*)(const YaltOamSpiCmEvent_Notification_1T& event);

    /// Subscribes to changes of objects whose DN matches one of the expressions.
    void start(const std::list<std::string>& regularExpressions, CmCallbackT memberFunction,
               SubscriberT* subscriberObject)
    {
        cmSubscriber = subscriberObject;
        cmCallback = memberFunction;
        std::vector<NameValuePair> filter;
        for (const std::string& expression : regularExpressions) {
            filter.push_back({YALT_OAM_SPI_CM_EVENT_FILTER_TYPE_REG_EXP_1, expression});
        }
        Base::start(filter, &CmEventConsumer::notifyCb, this, YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1);
    }

    void stop() { Base::stop(); }

    void notifyCb(const char* /*eventType*/, void* value)
    {
        (cmSubscriber->*cmCallback)(*static_cast<const YaltOamSpiCmEvent_Notification_1T*>(value));
    }

private:
    SubscriberT* cmSubscriber = nullptr;
    CmCallbackT cmCallback = nullptr;
};

}  // namespace Zorv

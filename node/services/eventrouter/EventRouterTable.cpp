#include "services/eventrouter/EventRouterTable.hpp"

namespace ZorvNode {

namespace {

using BindingT = TableBinding<EventRouter>;

/// A producer that came as a C table.
class TableProducer : public RouterProducer {
public:
    explicit TableProducer(const ZorvOamSpiEventProducer_1T& producer) : callbacks(producer) {}

    ZorvReturnT addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override
    {
        return callbacks.evtProdAddFilter(consumerId, eventType, filter);
    }

    ZorvReturnT removeFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override
    {
        return callbacks.evtProdRemoveFilter(consumerId, eventType, filter);
    }

    ZorvReturnT clearAll() override { return callbacks.evtProdClearAll(); }

    ZorvReturnT doneWithValue(const char* eventType, void* value) override
    {
        return callbacks.evtProdDoneWithValue(eventType, value);
    }

private:
    const ZorvOamSpiEventProducer_1T callbacks;
};

/// A consumer that came as a C record.
class TableConsumer : public RouterConsumer {
public:
    explicit TableConsumer(const ZorvOamSpiEventConsumer_1T& consumer) : callback(consumer.notifyCallback) {}

    ZorvReturnT onEvent(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                        void* value) override
    {
        return callback(consumerId, eventType, filter, value);
    }

private:
    decltype(ZorvOamSpiEventConsumer_1T::notifyCallback) const callback;
};

bool isComplete(const ZorvOamSpiEventProducer_1T* producer)
{
    return producer != nullptr && producer->evtProdAddFilter != nullptr && producer->evtProdRemoveFilter != nullptr &&
           producer->evtProdClearAll != nullptr && producer->evtProdDoneWithValue != nullptr;
}

ZorvReturnT registerProducer(const ZorvOamSpiEventProducer_1T* producer, uint32_t* producerHandle)
{
    return BindingT::call("registerProducer", [&](EventRouter& router) {
        return isComplete(producer) && producerHandle != nullptr
                   ? router.registerProducer(std::make_shared<TableProducer>(*producer), *producerHandle)
                   : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT addEventType(uint32_t producerHandle, const char* eventType)
{
    return BindingT::call("addEventType", [&](EventRouter& router) {
        return eventType != nullptr ? router.addEventType(producerHandle, eventType) : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT notify(uint32_t producerHandle, unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                   void* value)
{
    return BindingT::call("notify", [&](EventRouter& router) {
        return eventType != nullptr ? router.notify(producerHandle, consumerId, eventType, filter, value)
                                    : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT removeEventType(uint32_t producerHandle, const char* eventType)
{
    return BindingT::call("removeEventType", [&](EventRouter& router) {
        return eventType != nullptr ? router.removeEventType(producerHandle, eventType) : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT unregisterProducer(uint32_t producerHandle, const ZorvOamSpiEventProducer_1T* /*producer*/)
{
    return BindingT::call("unregisterProducer",
                          [&](EventRouter& router) { return router.unregisterProducer(producerHandle); });
}

ZorvReturnT registerConsumer(ZorvOamSpiEventConsumer_1T* consumer)
{
    return BindingT::call("registerConsumer", [&](EventRouter& router) {
        return consumer != nullptr && consumer->notifyCallback != nullptr
                   ? router.registerConsumer(std::make_shared<TableConsumer>(*consumer), consumer->consumerId)
                   : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT addSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
{
    return BindingT::call("addSubscription", [&](EventRouter& router) {
        return eventType != nullptr ? router.addSubscription(consumerId, eventType, filter) : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT removeSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
{
    return BindingT::call("removeSubscription", [&](EventRouter& router) {
        return eventType != nullptr ? router.removeSubscription(consumerId, eventType, filter) : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT unregisterConsumer(unsigned long consumerId)
{
    return BindingT::call("unregisterConsumer",
                          [&](EventRouter& router) { return router.unregisterConsumer(consumerId); });
}

}  // namespace

const ZorvOamSpiEventRouter_1T* EventRouterTable::table()
{
    static const ZorvOamSpiEventRouter_1T functions = {
        &registerProducer, &addEventType,       &notify,
        &removeEventType,  &unregisterProducer, &registerConsumer,
        &addSubscription,  &removeSubscription, &unregisterConsumer,
    };
    return &functions;
}

}  // namespace ZorvNode

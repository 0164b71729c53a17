/// What the event router calls: a producer and a consumer, whatever they are made of.
///
/// Threads:   any; the router holds no lock while it calls.
/// Failure:   an exception counts as a refusal, and is counted.
#pragma once

#include <chrono>

#include "YaltNameValuePair.h"
#include "ZorvReturn.h"

namespace ZorvNode {

/// The rules are those of ZorvOamSpiEventProducer_1T.
class RouterProducer {
public:
    virtual ~RouterProducer() = default;
    virtual ZorvReturnT addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) = 0;
    virtual ZorvReturnT removeFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) = 0;
    virtual ZorvReturnT clearAll() = 0;
    virtual ZorvReturnT doneWithValue(const char* eventType, void* value) = 0;
};

/// The rules are those of ZorvOamSpiEventConsumer_1T.
class RouterConsumer {
public:
    virtual ~RouterConsumer() = default;
    virtual ZorvReturnT onEvent(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                                void* value) = 0;

    /// How long its thread naps when there is nothing more, before it sleeps: behind one event there is often another. With
    /// a longer nap it takes more of them at a time, and later.
    virtual std::chrono::microseconds nap() const { return std::chrono::microseconds(30); }
};

}  // namespace ZorvNode

/// Decides which events a consumer of an EventProducer is sent.
#pragma once

#include "YaltNameValuePair.h"

namespace Zorv {

template <class EventT>
class FilterMatcher {
public:
    virtual ~FilterMatcher() = default;
    virtual bool isMatch(const EventT& event) const = 0;
};

/// Lets every event pass. Keeps the router's filter description, which goes back to the router with each delivery.
template <class EventT>
class MatchAllFilter : public FilterMatcher<EventT> {
public:
    explicit MatchAllFilter(YaltNameValuePair** filterDescription) : description(filterDescription) {}

    bool isMatch(const EventT& /*event*/) const override { return true; }
    virtual bool isValid() const { return true; }

    YaltNameValuePair** getDescription() const { return description; }

private:
    YaltNameValuePair** description;  // the router's
};

}  // namespace Zorv

/// A subscription's filter, copied: the null-terminated array of name-value pairs that travels through C tables.
///
/// Ownership: array, pairs and texts are this object's; it never moves.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "YaltNameValuePair.h"

namespace ZorvNode {

class EventFilter {
public:
    /// @param filter null-terminated array; null is an empty filter.
    explicit EventFilter(YaltNameValuePair* const* filter);

    EventFilter(const EventFilter&) = delete;
    EventFilter& operator=(const EventFilter&) = delete;

    /// Never null.
    YaltNameValuePair** array() { return pointers.data(); }

    bool isEmpty() const { return pairs.empty(); }

    /// True when the other array has the same names and values in the same order.
    bool equals(YaltNameValuePair* const* other) const;

private:
    std::deque<std::string> texts;
    std::deque<YaltNameValuePair> pairs;
    std::vector<YaltNameValuePair*> pointers;  // null-terminated
};

}  // namespace ZorvNode

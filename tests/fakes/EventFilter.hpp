/// A copy of an event filter in the published form: a null-terminated array of pointers to entries.
///
/// Ownership: holds all that the array points to.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "YaltNameValuePair.h"

namespace ZorvFakes {

class EventFilter {
public:
    using Entries = std::vector<std::pair<std::string, std::string>>;

    explicit EventFilter(Entries entries);

    /// A null filter stays null.
    explicit EventFilter(const YaltNameValuePair* const* filter);

    EventFilter(const EventFilter&) = delete;
    EventFilter& operator=(const EventFilter&) = delete;

    YaltNameValuePair** get() { return array.empty() ? nullptr : array.data(); }

    /// True when the other has the same entries; null is a filter without entries.
    bool equals(const YaltNameValuePair* const* other) const;

    /// "name=value, name=value"; "" without entries, "null" for a null filter.
    std::string toString() const;
    static std::string toString(const YaltNameValuePair* const* filter);

private:
    Entries texts;
    std::vector<YaltNameValuePair> pairs;
    std::vector<YaltNameValuePair*> array;  // empty for a null filter
};

}  // namespace ZorvFakes

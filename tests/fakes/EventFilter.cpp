#include "EventFilter.hpp"

namespace ZorvFakes {

namespace {

EventFilter::Entries entriesOf(const YaltNameValuePair* const* filter)
{
    EventFilter::Entries entries;
    for (auto entry = filter; entry && *entry; ++entry) {
        entries.emplace_back((*entry)->name ? (*entry)->name : "", (*entry)->value ? (*entry)->value : "");
    }
    return entries;
}

}  // namespace

EventFilter::EventFilter(Entries entries) : texts(std::move(entries))
{
    for (const auto& [name, value] : texts) {
        pairs.push_back({name.c_str(), value.c_str()});
    }
    for (YaltNameValuePair& pair : pairs) {
        array.push_back(&pair);
    }
    array.push_back(nullptr);
}

EventFilter::EventFilter(const YaltNameValuePair* const* filter) : EventFilter(entriesOf(filter))
{
    if (!filter) {
        array.clear();
    }
}

bool EventFilter::equals(const YaltNameValuePair* const* other) const
{
    return texts == entriesOf(other);
}

std::string EventFilter::toString() const
{
    return toString(array.empty() ? nullptr : array.data());
}

std::string EventFilter::toString(const YaltNameValuePair* const* filter)
{
    if (!filter) {
        return "null";
    }
    std::string text;
    for (const auto& [name, value] : entriesOf(filter)) {
        text += (text.empty() ? "" : ", ") + name + "=" + value;
    }
    return text;
}

}  // namespace ZorvFakes

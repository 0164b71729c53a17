#include "services/eventrouter/EventFilter.hpp"

namespace ZorvNode {

namespace {

const char* textOf(const char* text)
{
    return text != nullptr ? text : "";
}

}  // namespace

EventFilter::EventFilter(YaltNameValuePair* const* filter)
{
    for (; filter != nullptr && *filter != nullptr; ++filter) {
        const char* name = texts.emplace_back(textOf((*filter)->name)).c_str();
        const char* value = texts.emplace_back(textOf((*filter)->value)).c_str();
        pairs.push_back({name, value});
        pointers.push_back(&pairs.back());
    }
    pointers.push_back(nullptr);
}

bool EventFilter::equals(YaltNameValuePair* const* other) const
{
    for (const YaltNameValuePair& pair : pairs) {
        if (other == nullptr || *other == nullptr || std::string(pair.name) != textOf((*other)->name) ||
            std::string(pair.value) != textOf((*other)->value)) {
            return false;
        }
        ++other;
    }
    return other == nullptr || *other == nullptr;
}

}  // namespace ZorvNode

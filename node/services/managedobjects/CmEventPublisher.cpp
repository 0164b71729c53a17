#include "services/managedobjects/CmEventPublisher.hpp"

#include <regex.h>

#include <algorithm>
#include <utility>

#include "YaltOamSpiCmEvent_1.h"

namespace ZorvNode {

namespace {

using LockT = std::unique_lock<std::mutex>;

bool matches(const std::vector<std::unique_ptr<Zorv::RegularExpression>>& expressions, const std::string& dn)
{
    return expressions.empty() || std::any_of(expressions.begin(), expressions.end(),
                                              [&dn](const auto& expression) { return expression->match(dn); });
}

}  // namespace

/// One event in its C form, with the memory behind it.
class CmEventPublisher::Event {
public:
    Event(unsigned long txHandle, std::vector<MoChange> moChanges) : changes(std::move(moChanges))
    {
        for (const MoChange& change : changes) {
            auto& attributeNames = names.emplace_back();
            for (const std::string& attribute : change.attributes) {
                attributeNames.push_back(attribute.c_str());
            }
            cChanges.push_back({change.type, change.dn.c_str(),
                                attributeNames.empty() ? nullptr : attributeNames.data(),
                                static_cast<std::uint32_t>(attributeNames.size())});
        }
        value = {txHandle, cChanges.data(), static_cast<std::uint32_t>(cChanges.size())};
    }

    YaltOamSpiCmEvent_Notification_1T value{};

private:
    const std::vector<MoChange> changes;
    std::deque<std::vector<const char*>> names;
    std::vector<YaltOamSpiCmEvent_Change_1T> cChanges;
};

CmEventPublisher::CmEventPublisher(EventRouter& eventRouter) : router(eventRouter)
{
    router.registerProducer(std::shared_ptr<RouterProducer>(std::shared_ptr<void>(), this), handle);
    router.addEventType(handle, YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1);
}

CmEventPublisher::~CmEventPublisher()
{
    router.unregisterProducer(handle);
    router.waitUntilCallbacksEnded(std::chrono::seconds(5));
}

void CmEventPublisher::onChanged(unsigned long txHandle, std::vector<MoChange> changes)
{
    if (!changes.empty()) {
        const LockT lock(mutex);
        toPublish.push_back({txHandle, std::move(changes)});
    }
}

void CmEventPublisher::onFinished()
{
    LockT lock(mutex);
    if (publishing) {
        return;
    }
    publishing = true;
    while (!toPublish.empty()) {
        const Noted noted = std::move(toPublish.front());
        toPublish.pop_front();
        lock.unlock();
        publish(noted);
        lock.lock();
    }
    publishing = false;
}

void CmEventPublisher::publish(const Noted& noted)
{
    std::list<Subscriber> present;
    {
        const LockT lock(mutex);
        present = subscribers;
    }
    for (const Subscriber& subscriber : present) {
        std::vector<MoChange> chosen;
        std::copy_if(noted.changes.begin(), noted.changes.end(), std::back_inserter(chosen),
                     [&](const MoChange& change) { return matches(*subscriber.expressions, change.dn); });
        if (!chosen.empty()) {
            send(subscriber, noted.txHandle, std::move(chosen));
        }
    }
}

void CmEventPublisher::send(const Subscriber& subscriber, unsigned long txHandle, std::vector<MoChange> changes)
{
    const auto event = std::make_shared<Event>(txHandle, std::move(changes));
    void* const value = &event->value;
    {
        const LockT lock(mutex);
        onTheirWay.emplace(value, event);
    }
    if (router.notify(handle, subscriber.consumerId, YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1, subscriber.filter, value) !=
        ZORV_RETURN_OK) {
        doneWithValue(YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1, value);
    }
}

ZorvReturnT CmEventPublisher::addFilter(unsigned long consumerId, const char* /*eventType*/, YaltNameValuePair** filter)
{
    auto expressions = std::make_shared<ExpressionsT>();
    for (YaltNameValuePair** entry = filter; *entry != nullptr; ++entry) {
        auto expression = std::make_unique<Zorv::RegularExpression>((*entry)->value, REG_EXTENDED | REG_NOSUB);
        if (std::string((*entry)->name) != YALT_OAM_SPI_CM_EVENT_FILTER_TYPE_REG_EXP_1 ||
            !expression->isExpressionValid()) {
            return ZORV_RETURN_FAILED;
        }
        expressions->push_back(std::move(expression));
    }
    const LockT lock(mutex);
    subscribers.push_back({consumerId, filter, std::move(expressions)});
    return ZORV_RETURN_OK;
}

ZorvReturnT CmEventPublisher::removeFilter(unsigned long consumerId, const char* /*eventType*/,
                                           YaltNameValuePair** filter)
{
    const LockT lock(mutex);
    subscribers.remove_if([&](const Subscriber& subscriber) {
        return subscriber.consumerId == consumerId && subscriber.filter == filter;
    });
    return ZORV_RETURN_OK;
}

ZorvReturnT CmEventPublisher::clearAll()
{
    const LockT lock(mutex);
    subscribers.clear();
    return ZORV_RETURN_OK;
}

ZorvReturnT CmEventPublisher::doneWithValue(const char* /*eventType*/, void* value)
{
    const LockT lock(mutex);
    onTheirWay.erase(value);
    return ZORV_RETURN_OK;
}

}  // namespace ZorvNode

/// An FM notification in its C form, in each structure version.
#pragma once

#include "YaltOamSpiNotificationFm_2.h"
#include "YaltOamSpiNotificationFm_4.h"
#include "notification/FmNotification.hpp"

namespace ZorvNode {

using namespace ZorvInput;

/// The event type under which a notification is published.
const char* eventTypeOf(const FmNotification& notification);

/// The name of the time filter that belongs to an FM event type; null for any other event type.
const char* timeFilterOf(const std::string& eventType);

/// A published notification. value points into it.
class PublishedNotification {
public:
    explicit PublishedNotification(FmNotification fmNotification);

    PublishedNotification(const PublishedNotification&) = delete;
    PublishedNotification& operator=(const PublishedNotification&) = delete;

    const char* eventType() const { return eventTypeOf(notification); }
    void* value() { return inForce; }
    const FmNotification& get() const { return notification; }

private:
    const FmNotification notification;
    std::vector<YaltOamSpiFmAdditionalInfoEntry> entries;
    YaltOamSpiNotificationFmStruct version1{};
    YaltOamSpiNotificationFmStruct_2 version2{};
    YaltOamSpiNotificationFmStruct_4 version4{};
    void* inForce = nullptr;
};

}  // namespace ZorvNode

/// One FM notification on its way into the node, owned, and its C form in each structure version.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "YaltOamSpiNotificationFm_2.h"
#include "YaltOamSpiNotificationFm_4.h"

namespace ZorvNode {

enum class FmFramework { zorv, yalt };

struct FmNotification {
    FmFramework framework = FmFramework::yalt;
    int version = 4;  ///< 1, 2 or 4; 4 only in the second framework
    std::string dn;
    std::uint32_t majorType = 0;
    std::uint32_t minorType = 0;
    std::uint64_t eventTime = 0;  ///< ns since 1970-01-01 UTC; 0: the receiver stamps it. Version 1 does not carry it.
    std::string text;
    std::int32_t severity = 0;

    std::vector<std::pair<std::string, std::string>> info;  ///< version 4 only
};

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

private:
    const FmNotification notification;
    std::vector<YaltOamSpiFmAdditionalInfoEntry> entries;
    YaltOamSpiNotificationFmStruct version1{};
    YaltOamSpiNotificationFmStruct_2 version2{};
    YaltOamSpiNotificationFmStruct_4 version4{};
    void* inForce = nullptr;
};

}  // namespace ZorvNode

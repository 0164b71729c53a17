#include "ingress/PublishedNotification.hpp"

namespace ZorvNode {

namespace {

struct EventType {
    FmFramework framework;
    int version;
    const char* name;
    const char* timeFilter;
};

const EventType eventTypes[] = {
    {FmFramework::zorv, 1, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1,
     ZORV_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_1},
    {FmFramework::zorv, 2, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
     ZORV_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2},
    {FmFramework::yalt, 1, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1,
     YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_1},
    {FmFramework::yalt, 2, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
     YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2},
    {FmFramework::yalt, 4, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4,
     YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_4},
};

}  // namespace

const char* eventTypeOf(const FmNotification& notification)
{
    for (const EventType& type : eventTypes) {
        if (type.framework == notification.framework && type.version == notification.version) {
            return type.name;
        }
    }
    return YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4;
}

const char* timeFilterOf(const std::string& eventType)
{
    for (const EventType& type : eventTypes) {
        if (eventType == type.name) {
            return type.timeFilter;
        }
    }
    return nullptr;
}

PublishedNotification::PublishedNotification(FmNotification fmNotification) : notification(std::move(fmNotification))
{
    const FmNotification& from = notification;
    for (const auto& [name, value] : from.info) {
        entries.push_back({name.c_str(), value.c_str()});
    }
    version1 = {from.dn.c_str(), from.majorType, from.minorType, from.text.c_str(), from.severity};
    version2 = {from.dn.c_str(), from.majorType, from.minorType, from.eventTime, from.text.c_str(), from.severity};
    version4 = {from.dn.c_str(),
                from.majorType,
                from.minorType,
                from.eventTime,
                from.text.c_str(),
                from.severity,
                {entries.empty() ? nullptr : entries.data(), static_cast<std::uint32_t>(entries.size())}};
    if (from.version == 1) {
        inForce = &version1;
    } else if (from.version == 2) {
        inForce = &version2;
    } else {
        inForce = &version4;
    }
}

}  // namespace ZorvNode

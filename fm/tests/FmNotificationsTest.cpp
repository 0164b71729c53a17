#include "FmNotifications.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "AlarmSamples.hpp"
#include "EventText.hpp"
#include "Status.hpp"

namespace ZorvFm {
namespace {

/// Holds the creator's reference of an event.
template <class EventT>
class Held {
public:
    template <class... ArgumentT>
    explicit Held(const ArgumentT&... arguments) : event(new EventT(arguments...))
    {
    }

    ~Held() { event->releaseRef(); }

    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    EventT* operator->() { return event; }
    EventT& operator*() { return *event; }

private:
    EventT* const event;
};

std::string shown(const ZorvOamApiFmNotificationEventValue_3& value)
{
    return ZorvFakes::eventText(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, &value);
}

std::string shown(const ZorvOamApiFmNotificationEventValue_2& value)
{
    return ZorvFakes::eventText(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2, &value);
}

std::string shown(const ZorvOamApiFmHeartbeatEventValue_3& value)
{
    return ZorvFakes::eventText(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3, &value);
}

std::string shown(const ZorvOamApiFmHeartbeatEventValue_2& value)
{
    return ZorvFakes::eventText(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2, &value);
}

AlarmData withoutInfo()
{
    AlarmData alarm = fullAlarm();
    alarm.additionalInfo.clear();
    return alarm;
}

const StatusSection status = {1, 2, 3, 4, 5};

// --- Alarm notifications

TEST(FmNotificationsTest, version3CarriesTheAlarmId)
{
    Held<AlarmNotification> event(fullAlarm());

    EXPECT_EQ("{dn='ManagedElement=1,Slot=2,Port=4' majorType=32473 minorType=4097 eventTime=1700000000123456789 "
              "additionalText='Link down again' severity=4 additionalInfo=['slot'='two','port'='four']} stateful=true "
              "seqNo=17 eventType=2 probableCause=14 specificProblem='Link failure' alarmId=6 "
              "originalEventTime=1690000000000000001 originalAdditionalText='Link down' originalSeverity=3",
              shown(*event));
}

TEST(FmNotificationsTest, version2CarriesTheOriginalSequenceNumberInItsPlace)
{
    Held<AlarmNotificationV2> event(fullAlarm());

    EXPECT_EQ("{dn='ManagedElement=1,Slot=2,Port=4' majorType=32473 minorType=4097 eventTime=1700000000123456789 "
              "additionalText='Link down again' severity=4 additionalInfo=['slot'='two','port'='four']} stateful=true "
              "seqNo=17 eventType=2 probableCause=14 specificProblem='Link failure' originalSeqNo=11 "
              "originalEventTime=1690000000000000001 originalAdditionalText='Link down' originalSeverity=3",
              shown(*event));
}

TEST(FmNotificationsTest, withoutAdditionalInformationThereIsNoArray)
{
    Held<AlarmNotification> version3(withoutInfo());
    Held<AlarmNotificationV2> version2(withoutInfo());

    EXPECT_EQ(nullptr, version3->alarm->additionalInfo);
    EXPECT_EQ(0U, version3->alarm->numberOfPairs);
    EXPECT_EQ(nullptr, version2->alarm->additionalInfo);
    EXPECT_EQ(0U, version2->alarm->numberOfPairs);
}

TEST(FmNotificationsTest, anEmptyAlarmHasEmptyTexts)
{
    AlarmData empty;
    empty.specificProblem.clear();
    Held<AlarmNotification> event(empty);

    EXPECT_EQ("{dn='' majorType=0 minorType=0 eventTime=0 additionalText='' severity=0 additionalInfo=null} "
              "stateful=false seqNo=0 eventType=0 probableCause=0 specificProblem='' alarmId=0 originalEventTime=0 "
              "originalAdditionalText='' originalSeverity=0",
              shown(*event));
}

TEST(FmNotificationsTest, theEndsOfEachRangeAreKept)
{
    AlarmData alarm = withoutInfo();
    alarm.majorType = alarm.minorType = alarm.probableCause = 4294967295;
    alarm.severity = INT32_MIN;
    alarm.originalSeverity = INT32_MAX;
    alarm.eventType = -1;
    alarm.eventTime = alarm.originalEventTime = alarm.seqNo = alarm.originalSeqNo = alarm.alarmId = UINT64_MAX;
    Held<AlarmNotification> event(alarm);

    EXPECT_EQ("{dn='ManagedElement=1,Slot=2,Port=4' majorType=4294967295 minorType=4294967295 "
              "eventTime=18446744073709551615 additionalText='Link down again' severity=-2147483648 "
              "additionalInfo=null} stateful=true seqNo=18446744073709551615 eventType=4294967295 "
              "probableCause=4294967295 specificProblem='Link failure' alarmId=18446744073709551615 "
              "originalEventTime=18446744073709551615 originalAdditionalText='Link down' originalSeverity=2147483647",
              shown(*event));
}

TEST(FmNotificationsTest, theTextOfATogglingAlarmIsTheOneItShows)
{
    Held<AlarmNotification> version3(alarmInState(AlarmState::ACTIVE_TOGGLING));
    Held<AlarmNotificationV2> version2(alarmInState(AlarmState::CEASE_PENDING_TOGGLING));

    EXPECT_STREQ("Link down again The alarm is currently toggling.", version3->alarm->additionalText);
    EXPECT_STREQ("Link down again The alarm is currently toggling.", version2->alarm->additionalText);
}

TEST(FmNotificationsTest, textsArePrivateCopies)
{
    auto alarm = std::make_unique<AlarmData>(fullAlarm());
    Held<AlarmNotification> version3(*alarm);
    Held<AlarmNotificationV2> version2(*alarm);
    const std::string before3 = shown(*version3);
    const std::string before2 = shown(*version2);

    alarm->dn[0] = alarm->additionalText[0] = alarm->specificProblem[0] = alarm->originalAdditionalText[0] = '#';
    alarm->additionalInfo.front().first[0] = alarm->additionalInfo.front().second[0] = '#';
    alarm.reset();

    EXPECT_EQ(before3, shown(*version3));
    EXPECT_EQ(before2, shown(*version2));
}

// --- Text forms

TEST(FmNotificationsTest, theTextFormsOfBothVersions)
{
    Held<AlarmNotification> version3(fullAlarm());
    Held<AlarmNotificationV2> version2(fullAlarm());

    const std::string head = "{dn=ManagedElement=1,Slot=2,Port=4;majorType=32473;minorType=4097;"
                             "additionalText=Link down again;severity=4;eventTime=1700000000123456789};stateful=1;"
                             "seqNo=17;eventType=2;probableCause=14;specificProblem=Link failure;";
    const std::string tail = ";originalEventTime=1690000000000000001;originalAdditionalText=Link down;"
                             "originalSeverity=3;additionalInfoNoOfPairs=2;slot;two;port;four;";
    EXPECT_EQ(head + "alarmId=6" + tail, version3->toString());
    EXPECT_EQ(head + "originalSeqNo=11" + tail, version2->toString());
}

TEST(FmNotificationsTest, theTextFormsWithoutAdditionalInformation)
{
    AlarmData alarm = withoutInfo();
    alarm.stateful = false;
    alarm.severity = -1;
    Held<AlarmNotification> version3(alarm);
    Held<AlarmNotificationV2> version2(alarm);

    const std::string head = "{dn=ManagedElement=1,Slot=2,Port=4;majorType=32473;minorType=4097;"
                             "additionalText=Link down again;severity=-1;eventTime=1700000000123456789};stateful=0;"
                             "seqNo=17;eventType=2;probableCause=14;specificProblem=Link failure;";
    const std::string tail = ";originalEventTime=1690000000000000001;originalAdditionalText=Link down;"
                             "originalSeverity=3;additionalInfoNoOfPairs=0;";
    EXPECT_EQ(head + "alarmId=6" + tail, version3->toString());
    EXPECT_EQ(head + "originalSeqNo=11" + tail, version2->toString());
}

TEST(FmNotificationsTest, aNullTextEndsTheTextForm)
{
    Held<AlarmNotification> event(withoutInfo());
    const std::string upToTheText = "{dn=ManagedElement=1,Slot=2,Port=4;majorType=32473;minorType=4097;additionalText=";

    char* const specificProblem = std::exchange(event->specificProblem, nullptr);
    EXPECT_EQ(upToTheText + "Link down again;severity=4;eventTime=1700000000123456789};stateful=1;seqNo=17;"
                            "eventType=2;probableCause=14;specificProblem=",
              event->toString());
    char* const additionalText = std::exchange(event->alarm->additionalText, nullptr);
    EXPECT_EQ(upToTheText, event->toString());
    char* const dn = std::exchange(event->alarm->dn, nullptr);
    EXPECT_EQ("{dn=", event->toString());

    event->specificProblem = specificProblem;
    event->alarm->additionalText = additionalText;
    event->alarm->dn = dn;
}

TEST(FmNotificationsTest, aNullTextAmongThePairsEndsTheTextForm)
{
    Held<AlarmNotificationV2> event(fullAlarm());
    char* const value = std::exchange(event->alarm->additionalInfo[0].value, nullptr);

    const std::string text = event->toString();

    event->alarm->additionalInfo[0].value = value;
    EXPECT_EQ("additionalInfoNoOfPairs=2;slot;", text.substr(text.find("additionalInfoNoOfPairs")));
}

// --- Heartbeats

TEST(FmNotificationsTest, aHeartbeatCarriesTheStatusInAnotherOrder)
{
    Held<HeartbeatNotification> version3(status);
    Held<HeartbeatNotificationV2> version2(status);

    const std::string text =
        "lastStatefulTimestamp=3 lastStatefulSeqNo=1 lastStatelessTimestamp=4 lastStatelessSeqNo=2";
    EXPECT_EQ(text, shown(*version3));
    EXPECT_EQ(text, shown(*version2));
}

TEST(FmNotificationsTest, theTextFormsOfHeartbeats)
{
    Held<HeartbeatNotification> version3(status);
    Held<HeartbeatNotificationV2> version2(status);

    const std::string text =
        ";lastStatefulTimestamp=3;lastStatefulSeqNo=1;lastStatelessTimestamp=4;lastStatelessSeqNo=2;";
    EXPECT_EQ(text, version3->toString());
    EXPECT_EQ(text, version2->toString());
}

// --- Alarm list rebuilt

TEST(FmNotificationsTest, alarmListRebuiltCarriesNothing)
{
    Held<AlarmListRebuiltNotification> version3;
    Held<AlarmListRebuiltNotificationV2> version2;

    EXPECT_EQ(0, version3->noData);
    EXPECT_EQ(0, version2->noData);
}

}  // namespace
}  // namespace ZorvFm

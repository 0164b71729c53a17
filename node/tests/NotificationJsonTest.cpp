#include "api/NotificationJson.hpp"

#include <gmock/gmock.h>

#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"

namespace ZorvNode {

class NotificationJsonTest : public ::testing::Test {
protected:
    char dn[7] = "Port=1";
    char text[5] = "a\"\n\xFF";
    char name[2] = "n";
    char value[3] = "\xC3v";
    char problem[5] = "loss";
    char original[6] = "first";
    ZorvOamApiFmAdditionalInfoPair pairs[2] = {{name, value}, {nullptr, nullptr}};
    FmAlarmBlock block = {dn, 4294967295U, 9, UINT64_MAX, text, 4, pairs, 2};

    const std::string blockJson =
        "\"dn\":\"Port=1\",\"majorType\":4294967295,\"minorType\":9,\"eventTime\":18446744073709551615,"
        "\"additionalText\":\"a\\\"\\n\xEF\xBF\xBD\",\"severity\":\"MAJOR\","
        "\"additionalInfo\":[[\"n\",\"\xEF\xBF\xBDv\"],[\"\",\"\"]],";
    const std::string behindJson = "\"eventType\":2,\"probableCause\":15,\"specificProblem\":\"loss\","
                                   "\"originalEventTime\":5,\"originalAdditionalText\":\"first\","
                                   "\"originalSeverity\":\"CRITICAL\"}";
};

TEST_F(NotificationJsonTest, anAlarmOfVersion3HasAllItsFields)
{
    const ZorvOamApiFmNotificationEventValue_3 alarm = {&block, true, 7, 2, 15, problem, 77, 5, original, 5};

    const NorthboundEvent it = readNorthboundEvent(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, &alarm);

    EXPECT_EQ(3, it.version);
    EXPECT_EQ("alarm", it.name);
    EXPECT_TRUE(it.isStateful);
    EXPECT_EQ(7U, it.seqNo);
    EXPECT_EQ("{\"version\":3,\"stateful\":true,\"seqNo\":7,\"alarmId\":77," + blockJson + behindJson, it.json);
}

TEST_F(NotificationJsonTest, anAlertOfVersion2HasAllItsFields)
{
    const ZorvOamApiFmNotificationEventValue_2 alarm = {&block, false, 7, 2, 15, problem, 77, 5, original, 5};

    const NorthboundEvent it = readNorthboundEvent(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2, &alarm);

    EXPECT_EQ(2, it.version);
    EXPECT_EQ("alarm", it.name);
    EXPECT_FALSE(it.isStateful);
    EXPECT_EQ(7U, it.seqNo);
    EXPECT_EQ("{\"version\":2,\"stateful\":false,\"seqNo\":7,\"originalSeqNo\":77," + blockJson + behindJson, it.json);
}

TEST_F(NotificationJsonTest, whatPointsNowhereIsEmptyAndASeverityWithoutANameANumber)
{
    block = {nullptr, 0, 0, 0, nullptr, -1, nullptr, 2};
    const ZorvOamApiFmNotificationEventValue_3 alarm = {&block, true, 0, 0, 0, nullptr, 0, 0, nullptr, 6};

    EXPECT_EQ("{\"version\":3,\"stateful\":true,\"seqNo\":0,\"alarmId\":0,\"dn\":\"\",\"majorType\":0,\"minorType\":0,"
              "\"eventTime\":0,\"additionalText\":\"\",\"severity\":-1,\"additionalInfo\":[],\"eventType\":0,"
              "\"probableCause\":0,\"specificProblem\":\"\",\"originalEventTime\":0,\"originalAdditionalText\":\"\","
              "\"originalSeverity\":6}",
              readNorthboundEvent(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, &alarm).json);
}

TEST_F(NotificationJsonTest, heartbeatsTellTheLastNumbers)
{
    const ZorvOamApiFmHeartbeatEventValue_3 third = {1, 2, 3, 4};
    const ZorvOamApiFmHeartbeatEventValue_2 second = {1, 2, 3, 4};
    const std::string fields = ",\"lastStatefulSeqNo\":2,\"lastStatefulTimestamp\":1,\"lastStatelessSeqNo\":4,"
                               "\"lastStatelessTimestamp\":3}";

    const NorthboundEvent it = readNorthboundEvent(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3, &third);
    const NorthboundEvent other = readNorthboundEvent(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2, &second);

    EXPECT_EQ("heartbeat", it.name);
    EXPECT_EQ(2U, it.stateful);
    EXPECT_EQ(4U, it.stateless);
    EXPECT_EQ("{\"version\":3" + fields, it.json);
    EXPECT_EQ(2, other.version);
    EXPECT_EQ("{\"version\":2" + fields, other.json);
}

TEST_F(NotificationJsonTest, aRebuiltAlarmListIsToldWithItsVersion)
{
    const ZorvOamApiFmAlarmListRebuiltEventValue_3 nothing = {};

    const NorthboundEvent it = readNorthboundEvent(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3, &nothing);
    const NorthboundEvent other = readNorthboundEvent(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2, &nothing);

    EXPECT_EQ("rebuilt", it.name);
    EXPECT_EQ(3, it.version);
    EXPECT_EQ("{\"version\":3}", it.json);
    EXPECT_EQ(2, other.version);
    EXPECT_EQ("{\"version\":2}", other.json);
}

TEST_F(NotificationJsonTest, thereAreThreeEventTypesOfEachVersion)
{
    EXPECT_THAT(northboundEventTypes,
                ::testing::ElementsAre(::testing::StrEq(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3),
                                       ::testing::StrEq(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3),
                                       ::testing::StrEq(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3),
                                       ::testing::StrEq(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2),
                                       ::testing::StrEq(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2),
                                       ::testing::StrEq(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2)));
}

}  // namespace ZorvNode

#include "northbound/NotificationText.hpp"

#include <gmock/gmock.h>

#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"

namespace ZorvNode {

class NotificationTextTest : public ::testing::Test {
protected:
    char dn[12] = "Port=\"1\"";
    char text[12] = "a\nb";
    char problem[12] = "Loss";
    char original[12] = "first";
    char name[4] = "k";
    char value[4] = "v";
    ZorvOamApiFmAdditionalInfoPair pairs[2] = {{name, value}, {value, name}};
    FmAlarmBlock block{dn, 32473, 9, 1714543200000000001U, text, 4, pairs, 2};
};

TEST_F(NotificationTextTest, versionThreeHasEveryFieldAndTheAlarmId)
{
    const ZorvOamApiFmNotificationEventValue_3 alarm = {&block,   true, 5, 2, 29, problem, 17, 1714543199000000000U,
                                                        original, 0};

    EXPECT_EQ("alarm v3 stateful seqNo=5 alarmId=17 severity=MAJOR dn=\"Port=\\\"1\\\"\" majorType=32473 minorType=9 "
              "eventTime=2024-05-01T06:00:00.000000001Z additionalText=\"a\\nb\" eventType=2 probableCause=29 "
              "specificProblem=\"Loss\" originalEventTime=2024-05-01T05:59:59.000000000Z originalSeverity=CLEARED "
              "originalAdditionalText=\"first\" additionalInfo={\"k\"=\"v\", \"v\"=\"k\"}",
              notificationText("ZorvOamApiFmNotificationEventType_3", &alarm));
}

TEST_F(NotificationTextTest, versionTwoHasTheOriginalSequenceNumber)
{
    block.additionalInfo = nullptr;
    block.severity = 9;
    const ZorvOamApiFmNotificationEventValue_2 alarm = {&block, false, 5, 2, 29, problem, 3, 0, nullptr, 2};

    EXPECT_EQ("alarm v2 stateless seqNo=5 originalSeqNo=3 severity=9 dn=\"Port=\\\"1\\\"\" majorType=32473 minorType=9 "
              "eventTime=2024-05-01T06:00:00.000000001Z additionalText=\"a\\nb\" eventType=2 probableCause=29 "
              "specificProblem=\"Loss\" originalEventTime=- originalSeverity=WARNING originalAdditionalText=\"\" "
              "additionalInfo={}",
              notificationText("ZorvOamApiFmNotificationEventType_2", &alarm));
}

TEST_F(NotificationTextTest, aHeartbeatHasNumbersAndTimes)
{
    const ZorvOamApiFmHeartbeatEventValue_3 heartbeat = {1714543200000000000U, 4, 0, 2};

    EXPECT_EQ("heartbeat v3 lastStatefulSeqNo=4 lastStatefulTimestamp=2024-05-01T06:00:00.000000000Z "
              "lastStatelessSeqNo=2 lastStatelessTimestamp=-",
              notificationText("ZorvOamApiFmHeartbeatEventType_3", &heartbeat));
}

TEST_F(NotificationTextTest, anAlarmListRebuiltSaysItAll)
{
    EXPECT_EQ("alarm-list-rebuilt v3", notificationText("ZorvOamApiFmAlarmListRebuiltEventType_3", nullptr));
    EXPECT_EQ("alarm-list-rebuilt v2", notificationText("ZorvOamApiFmAlarmListRebuiltEventType_2", nullptr));
}

}  // namespace ZorvNode

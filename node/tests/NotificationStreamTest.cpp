#include "ListenerFixture.hpp"
#include "SendingProducer.hpp"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_3.h"
#include "api/resources/Resources.hpp"

namespace ZorvNode {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The northbound notifications as readers at the node's socket see them.
class NotificationStreamTest : public ListenerFixture {
protected:
    NotificationStreamTest()
    {
        for (const char* eventType : northboundEventTypes) {
            alarmHandling.announce(eventType);
        }
        addNotifications(routes, follower, counters);
        start();
    }

    ~NotificationStreamTest() override { listener->stop(); }

    void beat(std::uint64_t stateful, std::uint64_t stateless)
    {
        alarmHandling.send(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3,
                           ZorvOamApiFmHeartbeatEventValue_3{0, stateful, 0, stateless});
    }

    void raise(std::uint64_t seqNo, const std::string& withText = "")
    {
        std::string text = withText;
        FmAlarmBlock block{};
        block.additionalText = text.data();
        ZorvOamApiFmNotificationEventValue_3 alarm{};
        alarm.alarm = &block;
        alarm.stateful = true;
        alarm.seqNo = seqNo;
        alarmHandling.send(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, alarm);
    }

    /// A reader whose stream has begun.
    RawClient follow(const std::string& query, const std::string& fields = "") const
    {
        RawClient reader = connect();
        reader.send("GET /v1/notifications" + query + " HTTP/1.1\r\n" + fields + "\r\n");
        EXPECT_THAT(reader.until(":\n\n"), StartsWith("HTTP/1.1 200 OK\r\n"));
        return reader;
    }

    /// "NAME ID" of the next event.
    static std::string next(RawClient& reader)
    {
        reader.until("event: ");
        const std::string name = reader.until("\n");
        reader.until("id: ");
        const std::string id = reader.until("\n");
        reader.until("\n\n");
        return name.substr(0, name.size() - 1) + " " + id.substr(0, id.size() - 1);
    }

    /// The names and ids of all that are kept.
    std::string kept(const std::string& query, const std::string& fields = "") const
    {
        RawClient reader = follow("?follow=false" + query, fields);
        std::string events;
        for (std::string event = next(reader); event != " "; event = next(reader)) {
            events += event + "; ";
        }
        return events;
    }

    EventRouter router{{}, [](std::int32_t, const std::string&) {}};
    SendingProducer alarmHandling{router};
    NotificationFollower follower{router, 8};
    StreamCounters counters;
};

TEST_F(NotificationStreamTest, aReaderIsSentWhatComesFromNowOn)
{
    beat(1, 1);
    RawClient reader = connect();
    reader.send(get("/v1/notifications"));
    EXPECT_EQ(
        "HTTP/1.1 200 OK\r\nConnection: Close\r\nTransfer-Encoding: chunked\r\nContent-Type: text/event-stream\r\n"
        "Cache-Control: no-store\r\n\r\n",
        reader.until("\r\n\r\n"));
    reader.until(":\n\n");

    beat(1, 2);

    EXPECT_EQ("resync 1.2", next(reader));
    reader.until("event: ");
    EXPECT_EQ("heartbeat\nid: 1.2\ndata: {\"version\":3,\"lastStatefulSeqNo\":1,\"lastStatefulTimestamp\":0,"
              "\"lastStatelessSeqNo\":2,\"lastStatelessTimestamp\":0}\n\n",
              reader.until("\n\n"));
}

TEST_F(NotificationStreamTest, aReaderGoesOnBehindThePlaceItHasSeen)
{
    beat(1, 1);
    raise(2);
    raise(3);

    EXPECT_EQ("alarm 2.1; alarm 3.1; ", kept("&after=1.1"));
    EXPECT_EQ("alarm 3.1; ", kept("", "Last-Event-ID: 2.1\r\n"));
    EXPECT_EQ("", kept("&after=3.1", "Last-Event-ID: 2.1\r\n"));
    EXPECT_EQ("", kept(""));
    EXPECT_EQ("heartbeat 1.1; alarm 2.1; alarm 3.1; ", kept("&after=oldest"));
}

TEST_F(NotificationStreamTest, aReaderWhosePlaceIsNotKnownBeginsWithResync)
{
    beat(1, 1);
    raise(2);

    EXPECT_EQ("resync 2.1; ", kept("&after=0.1"));
    RawClient reader = follow("?after=0.1");
    EXPECT_EQ("resync 2.1", next(reader));
    raise(3);
    EXPECT_EQ("alarm 3.1", next(reader));
}

TEST_F(NotificationStreamTest, eachVersionHasItsOwnHistory)
{
    alarmHandling.send(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2, ZorvOamApiFmHeartbeatEventValue_2{0, 7, 0, 8});
    beat(1, 2);

    EXPECT_EQ("heartbeat 7.8; ", kept("&after=oldest&version=2"));
    EXPECT_EQ("heartbeat 1.2; ", kept("&after=oldest&version=3"));
    EXPECT_EQ("heartbeat 1.2; ", kept("&after=oldest"));
}

TEST_F(NotificationStreamTest, wrongParametersAreRefused)
{
    const auto refusal = [](const std::string& reason, const std::string& field) {
        return "400 {\"error\":{\"reason\":\"" + reason + "\",\"field\":\"" + field + "\"}}";
    };

    EXPECT_EQ(refusal("not STATEFUL.STATELESS or oldest", "after"), ask(get("/v1/notifications?after=1")));
    EXPECT_EQ(refusal("not a number from 2 to 3", "version"), ask(get("/v1/notifications?version=4")));
    EXPECT_EQ(refusal("not true or false", "follow"), ask(get("/v1/notifications?follow=1")));
    EXPECT_EQ(refusal("no such parameter", "colour"), ask(get("/v1/notifications?colour=1")));
}

TEST_F(NotificationStreamTest, aReaderThatStopsReadingSlowsNobodyAndIsCutOffWithResync)
{
    beat(0, 0);
    RawClient stopped = follow("");
    RawClient reader = follow("");
    const std::string large(100000, 'x');

    for (std::uint64_t seqNo = 1; seqNo <= 60; ++seqNo) {
        raise(seqNo, large);
        ASSERT_EQ("alarm " + std::to_string(seqNo) + ".0", next(reader));
    }

    const std::string seen = stopped.rest();
    EXPECT_THAT(seen, HasSubstr("\nid: 1.0\n"));
    EXPECT_THAT(seen, ::testing::Not(HasSubstr("\nid: 59.0\n")));
    EXPECT_THAT(seen.substr(seen.size() - 60), HasSubstr("event: resync\nid: 60.0\ndata: {}\n\n"));
    EXPECT_THAT(seen, EndsWith("0\r\n\r\n"));
    EXPECT_EQ(1U, counters.cutOff);
}

}  // namespace ZorvNode

#include "Middleware.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EventText.hpp"
#include "Portal.hpp"
#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFakes {
namespace {

class MiddlewareTest : public testing::Test {
protected:
    const void* find(const char* component, const char* name, const char* version)
    {
        return Zorv::Portal::instance().getInterface(component, name, version);
    }

    Middleware middleware;
};

TEST_F(MiddlewareTest, everyServiceIsOfferedUnderItsIdentity)
{
    middleware.connect();

    EXPECT_EQ(FakeLog::table(), find(nullptr, "ZorvMwSpiLog", "1"));
    EXPECT_EQ(FakeTrace::table(), find(nullptr, "YaltMwSpiTrace", nullptr));
    EXPECT_EQ(FakeEventRouter::table(), find("ZorvOamSpiEventService", "ZorvOamSpiEventRouter", "1"));
    EXPECT_EQ(FakeReplicatedList::table(), find(nullptr, "ZorvMwSpiReplicatedList", "1"));
    EXPECT_EQ(FakeManagedObjects::table(), find("ZorvOamSpiCmRouterService", "ZorvOamSpiManagedObject", "3"));
    EXPECT_EQ(FakeModelRepository::table(), find("ZorvOamSpiModelRepositoryService", "ZorvOamSpiModelRepository", "1"));
    EXPECT_EQ(FakeTransactions::masterTable(),
              find("ZorvOamSpiTransactionService", "ZorvOamSpiTransactionMaster", "1"));
    EXPECT_EQ(FakeTransactions::participantTable(), find("ZorvOamSpiTransactionService", "ZorvOamSpiTransaction", "1"));
    EXPECT_EQ(FakeTransactions::participantTable(), find("YaltOamSpiTransactionService", "YaltOamSpiTransaction", "1"));
}

TEST_F(MiddlewareTest, withdrawnServicesComeBack)
{
    middleware.connect();
    middleware.portal.withdraw("ZorvMwSpiLog");
    EXPECT_EQ(nullptr, find(nullptr, "ZorvMwSpiLog", "1"));

    middleware.offerAll();
    EXPECT_EQ(FakeLog::table(), find(nullptr, "ZorvMwSpiLog", "1"));
}

TEST_F(MiddlewareTest, connectLeavesTheJournalEmpty)
{
    middleware.connect();

    EXPECT_THAT(middleware.journal.take(), IsEmpty());
}

TEST_F(MiddlewareTest, recordsAndLogLinesAreToldApart)
{
    EXPECT_EQ(0, FakeLog::table()->write("SystemLog", 3, "text"));
    EXPECT_EQ(0, FakeLog::table()->write("FmAlarmLog", 5, "record"));
    EXPECT_EQ(-2, FakeLog::table()->write("Unknown", 5, "lost"));
    EXPECT_THAT(middleware.journal.take(), ElementsAre("log 3 text", "record 5 record"));

    middleware.journal.hide({Topic::Record});
    FakeLog::table()->write("FmAlarmLog", 5, "record");
    EXPECT_THAT(middleware.journal.take(), IsEmpty());
}

TEST_F(MiddlewareTest, classesAreDescribed)
{
    middleware.repository.describe("Port", {"Link"}, {{"number", YALT_MO_ATTRIBUTE_UINT32, true, true}});
    const ZorvOamSpiModelClass_1T* description = nullptr;

    EXPECT_EQ(-2, FakeModelRepository::table()->getClass("Unknown", &description));
    ASSERT_EQ(0, FakeModelRepository::table()->getClass("Port", &description));

    EXPECT_STREQ("Port", description->name);
    ASSERT_EQ(1U, description->numberOfChildClasses);
    EXPECT_STREQ("Link", description->childClasses[0]);
    ASSERT_EQ(1U, description->numberOfAttributes);
    EXPECT_STREQ("number", description->attributes[0].name);
    EXPECT_EQ(YALT_MO_ATTRIBUTE_UINT32, description->attributes[0].type);
    EXPECT_TRUE(description->attributes[0].isSequence);
    EXPECT_TRUE(description->attributes[0].isReadOnly);
}

TEST_F(MiddlewareTest, theFmModelHasItsSummary)
{
    middleware.fmModel.plant();

    EXPECT_EQ("lastSequenceNo=0 lastChanged='' totalActive=0 sumCritical=0 sumMajor=0 sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(MiddlewareTest, registrationsFollowThePublishedRules)
{
    const ZorvMgmtSpiInterface_1* const none[] = {nullptr};
    ZorvMgmtSpiComponent_1T component{};
    const auto* portal = static_cast<const ZorvMgmtSpiPortal_3T*>(middleware.accessor()->getPortal("3"));
    EXPECT_EQ(-1, portal->registerComponent(nullptr));
    EXPECT_EQ(-1, portal->registerComponent(&component));
    component = {"Name",
                 none,
                 none,
                 none,
                 [](ZorvStateChangeReason) { return 0; },
                 [](ZorvStateChangeReason) { return 0; },
                 [](const ZorvMgmtSpiInterface_1*) -> const void* { return nullptr; }};
    EXPECT_EQ(0, portal->registerComponent(&component));
    EXPECT_EQ(-3, portal->registerComponent(&component));
    EXPECT_EQ(&component, middleware.portal.component("Name"));

    EXPECT_EQ(0, portal->unregisterComponent(&component));
    EXPECT_EQ(-2, portal->unregisterComponent(&component));
    EXPECT_EQ(nullptr, middleware.portal.component("Name"));
    EXPECT_EQ(nullptr, middleware.accessor()->getPortal("2"));
    EXPECT_EQ(nullptr, middleware.accessor()->getPortal(nullptr));
}

// --- Northbound values as texts

class EventTextTest : public testing::Test {
protected:
    char dn[5] = "A=1";
    char text[5] = "more";
    char problem[5] = "link";
    char original[6] = "first";
    char name[2] = "n";
    char value[2] = "v";

    ZorvOamApiFmAdditionalInfoPair pairs[2] = {{name, value}, {name, nullptr}};
    FmAlarmBlock block{dn, 1, 2, 3, text, 4, pairs, 2};
};

TEST_F(EventTextTest, alarms)
{
    const ZorvOamApiFmNotificationEventValue_3 version3{&block, true, 5, 6, 7, problem, 8, 9, original, 10};
    const ZorvOamApiFmNotificationEventValue_2 version2{&block, false, 5, 6, 7, problem, 8, 9, original, 10};

    EXPECT_EQ("{dn='A=1' majorType=1 minorType=2 eventTime=3 additionalText='more' severity=4 "
              "additionalInfo=['n'='v','n'=null]} stateful=true seqNo=5 eventType=6 probableCause=7 "
              "specificProblem='link' alarmId=8 originalEventTime=9 originalAdditionalText='first' "
              "originalSeverity=10",
              eventText("ZorvOamApiFmNotificationEventType_3", &version3));
    EXPECT_EQ("{dn='A=1' majorType=1 minorType=2 eventTime=3 additionalText='more' severity=4 "
              "additionalInfo=['n'='v','n'=null]} stateful=false seqNo=5 eventType=6 probableCause=7 "
              "specificProblem='link' originalSeqNo=8 originalEventTime=9 originalAdditionalText='first' "
              "originalSeverity=10",
              eventText("ZorvOamApiFmNotificationEventType_2", &version2));
}

TEST_F(EventTextTest, missingParts)
{
    block = {nullptr, 1, 2, 3, nullptr, 4, nullptr, 0};
    ZorvOamApiFmNotificationEventValue_3 alarm{&block, true, 5, 6, 7, nullptr, 8, 9, nullptr, 10};
    const std::string rest = " stateful=true seqNo=5 eventType=6 probableCause=7 specificProblem=null alarmId=8 "
                             "originalEventTime=9 originalAdditionalText=null originalSeverity=10";

    EXPECT_EQ("{dn=null majorType=1 minorType=2 eventTime=3 additionalText=null severity=4 additionalInfo=null}" + rest,
              eventText("ZorvOamApiFmNotificationEventType_3", &alarm));
    block.numberOfPairs = 3;
    EXPECT_EQ("{dn=null majorType=1 minorType=2 eventTime=3 additionalText=null severity=4 additionalInfo=null*3}" +
                  rest,
              eventText("ZorvOamApiFmNotificationEventType_3", &alarm));
    alarm.alarm = nullptr;
    EXPECT_EQ("null" + rest, eventText("ZorvOamApiFmNotificationEventType_3", &alarm));
    EXPECT_EQ("null", eventText("ZorvOamApiFmNotificationEventType_3", nullptr));
}

TEST_F(EventTextTest, heartbeatsAndRebuiltLists)
{
    const ZorvOamApiFmHeartbeatEventValue_3 heartbeat3{1, 2, 3, 4};
    const ZorvOamApiFmHeartbeatEventValue_2 heartbeat2{1, 2, 3, 4};
    const ZorvOamApiFmAlarmListRebuiltEventValue_3 rebuilt3{0};
    const ZorvOamApiFmAlarmListRebuiltEventValue_2 rebuilt2{0};
    const std::string numbers =
        "lastStatefulTimestamp=1 lastStatefulSeqNo=2 lastStatelessTimestamp=3 lastStatelessSeqNo=4";

    EXPECT_EQ(numbers, eventText("ZorvOamApiFmHeartbeatEventType_3", &heartbeat3));
    EXPECT_EQ(numbers, eventText("ZorvOamApiFmHeartbeatEventType_2", &heartbeat2));
    EXPECT_EQ("noData=0", eventText("ZorvOamApiFmAlarmListRebuiltEventType_3", &rebuilt3));
    EXPECT_EQ("noData=0", eventText("ZorvOamApiFmAlarmListRebuiltEventType_2", &rebuilt2));
    EXPECT_EQ("", eventText("Unknown_1", &rebuilt2));
}

}  // namespace
}  // namespace ZorvFakes

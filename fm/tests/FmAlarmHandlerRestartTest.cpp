#include "HandlerTest.hpp"
#include "NbiAlarmList.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;
using ZorvFakes::FmJournal::coldStart;
using ZorvFakes::FmJournal::fmObjectFound;
using ZorvFakes::FmJournal::summaryWritten;

namespace ZorvFm {
namespace {

class FmAlarmHandlerRestartTest : public HandlerTest {
protected:
    const std::string port1 = "ManagedElement=1,Port=1";
    const std::string port2 = "ManagedElement=1,Port=2";
    const std::string port3 = "ManagedElement=1,Port=3";
};

// --- Coming up

TEST_F(FmAlarmHandlerRestartTest, theFirstStartMakesTheListsAndShowsAnEmptyNode)
{
    startInSight();

    EXPECT_THAT(journal(),
                ElementsAreArray(all({coldStart(),
                                      {"createTransaction 1 60 -> 0"},
                                      fmObjectFound(),
                                      summaryWritten({0, "1970-01-01T00:00:00.000+00:00", 0, 0, 0, 0, 0})})));
}

TEST_F(FmAlarmHandlerRestartTest, theRecoveredStateIsShownAtOnce)
{
    start();
    send(linkDown(port1));
    ReferenceAlarm minor = linkDown(port2);
    minor.severity = YALT_FM_SEVERITY_MINOR;
    minor.eventTime += second / 4;
    send(minor);
    ReferenceAlarm alert = linkDown(port3);
    alert.stateful = false;
    alert.eventTime += 60 * second;
    send(alert);

    start();

    EXPECT_EQ("lastSequenceNo=2 lastChanged='2023-11-14T22:13:15.250+00:00' totalActive=2 sumCritical=0 sumMajor=1 "
              "sumMinor=1 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(FmAlarmHandlerRestartTest, aFailureToShowItIsTriedAgain)
{
    start();
    send(linkDown(port1));
    middleware.transactions.failNext("commitTransaction", ZORV_RETURN_FAILED);
    middleware.journal.showOnly({Topic::Log});
    journal();

    startInSight();
    handler->saveVeskFmAttributes();

    EXPECT_THAT(journal(),
                ElementsAre("log 6 listIsEmpty of list FmStatusSection returned 0",
                            "log 6 Active Alarm List recovered, 1",
                            "log 4 Did not succeed writing alarm sequence number to database, will try again later"));
    EXPECT_EQ("lastSequenceNo=1 lastChanged='2023-11-14T22:13:15.000+00:00' totalActive=1 sumCritical=0 sumMajor=1 "
              "sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(FmAlarmHandlerRestartTest, withoutAListServiceAlarmsLiveInMemory)
{
    middleware.portal.withdraw("ZorvMwSpiReplicatedList");
    middleware.journal.showOnly({Topic::Log, Topic::List});

    startInSight();
    EXPECT_THAT(journal(),
                ElementsAre("log 3 Failed to create replicated list FmStatusSection :  -1",
                            "log 6 listIsEmpty of list FmStatusSection returned -1",
                            "log 6 FmStatusSection list did not exist. Preparing for a cold start.",
                            "log 3 Replicated List FmActiveAlarmList2 listCreate failed: -1",
                            "log 6 Active Alarm List recovered, 0", "log 4 Failed to copy Active AlarmData List"));

    send(linkDown());
    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    const std::string failedPush =
        "log 3 Failed to push back alarm to replicated list! retval=-1 '" + Reference::debugLineWithState(alarm) + "'";
    EXPECT_THAT(journal(), ElementsAre("log 3 Response from replicated listIsEmpty of FmStatusSection: -1",
                                       "log 6 Put initial status item into FmStatusSection list.",
                                       "log 3 Response from replicated listPushBack to FmStatusSection: -1",
                                       "log 5 Sending alarm: " + Reference::debugLine(alarm), failedPush, failedPush));

    std::vector<AlarmData> alarms;
    NbiAlarmList::getAlarms(alarms);
    ASSERT_EQ(1U, alarms.size());
    EXPECT_EQ(Reference::debugLine(alarm), alarms.front().toString());
}

// --- Coming up again

TEST_F(FmAlarmHandlerRestartTest, alarmsKeepTheirIdsAndNumberingContinues)
{
    start();
    send(linkDown(port1));
    send(linkDown(port2));
    start();

    send(linkDown(port3));
    const ReferenceAlarm alarm = listed(linkDown(port3), 2, 3, 3, 3);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(alarm), pushed(), replaced(4)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(linkDown(port1), 2, 1, 1, 1)),
                                      storedText(listed(linkDown(port2), 2, 2, 2, 2)), storedText(alarm)));

    send(linkUp(port1));
    EXPECT_THAT(
        journal(),
        ElementsAreArray(all({replaced(2), statusReplaced(),
                              reported(cleared(listed(linkDown(port1), 2, 1, 1, 1), linkUp(port1), 4)), replaced(2)})));
}

TEST_F(FmAlarmHandlerRestartTest, pendingFiltersCompleteAtTheFirstTick)
{
    config.transientCeaseAlarmFilterTime = 60 * second;
    start();
    send(linkDown(port1));
    send(linkUp(port1));
    config.transientRaiseAlarmFilterTime = 60 * second;
    send(linkDown(port2));
    start();

    tick();

    ReferenceAlarm ended = listed(linkDown(port1), 2, 1, 1, 1);
    EXPECT_THAT(journal(),
                ElementsAreArray(all({statusReplaced(), reported(cleared(ended, linkUp(port1), 2)), replaced(2),
                                      statusReplaced(), reported(listed(linkDown(port2), 2, 2, 3, 3)), replaced(3)})));
}

TEST_F(FmAlarmHandlerRestartTest, theHistoryOfACeasedAlarmIsForgotten)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 2;
    start();
    send(linkDown(port1));
    send(linkUp(port1));
    start();

    tick();

    EXPECT_THAT(journal(), ElementsAreArray(erased(2)));
}

TEST_F(FmAlarmHandlerRestartTest, aTogglingAlarmCarriesTheRemarkInItsTextFromThenOn)
{
    config.alarmToggleWindowSize = 60 * second;
    start();
    send(linkDown(port1));
    start();

    std::vector<AlarmData> alarms;
    NbiAlarmList::getAlarms(alarms);

    ASSERT_EQ(1U, alarms.size());
    EXPECT_EQ("Link down The alarm is currently toggling. The alarm is currently toggling.",
              alarms.front().additionalText);
}

TEST_F(FmAlarmHandlerRestartTest, anItemWithoutAnIdGetsOneAboveAllOthers)
{
    middleware.lists.plant("FmActiveAlarmList2", storedText(listed(linkDown(port1), 2, 0, 1, 1)));
    middleware.lists.plant("FmActiveAlarmList2", storedText(listed(linkDown(port2), 2, 41, 2, 2)));
    start();
    send(linkUp(port1));

    EXPECT_THAT(stored(),
                ElementsAre(storedText(ceased(cleared(listed(linkDown(port1), 2, 42, 1, 1), linkUp(port1), 1))),
                            storedText(listed(linkDown(port2), 2, 41, 2, 2))));
}

TEST_F(FmAlarmHandlerRestartTest, stoppedAndStartedAgainTheSameHandlerGivesNoIdTwice)
{
    start();
    send(linkDown(port1));
    send(linkUp(port1));
    tick();
    EXPECT_THAT(stored(), IsEmpty());
    handler->initialize();
    journal();

    send(linkDown(port1));

    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(listed(linkDown(port1), 2, 2, 3, 3)),
                                                 pushed(), replaced(3)})));
}

TEST_F(FmAlarmHandlerRestartTest, stoppedAndStartedAgainTheSameHandlerCountsEachAlarmOnce)
{
    start();
    send(linkDown(port1));
    send(linkDown(port2));

    handler->initialize();

    EXPECT_EQ("lastSequenceNo=2 lastChanged='2023-11-14T22:13:15.000+00:00' totalActive=2 sumCritical=0 sumMajor=2 "
              "sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(FmAlarmHandlerRestartTest, ofTwoItemsWithOneIdentityTheFirstIsUpdated)
{
    for (const std::uint64_t id : {1U, 2U, 3U}) {
        middleware.lists.plant("FmActiveAlarmList2", storedText(listed(linkDown(port1), 2, id, id, id)));
    }
    start();
    ReferenceAlarm change = linkDown(port1);
    change.text = "Still down";

    send(change);

    change.originalText = "Link down";
    EXPECT_THAT(stored(),
                ElementsAre(storedText(listed(change, 2, 1, 1, 1)), storedText(listed(linkDown(port1), 2, 2, 2, 2)),
                            storedText(listed(linkDown(port1), 2, 3, 3, 3))));
}

TEST_F(FmAlarmHandlerRestartTest, ofTwoItemsWithOneIdentityEachIsAnAlarm)
{
    middleware.lists.plant("FmActiveAlarmList2", storedText(listed(linkDown(port1), 2, 1, 1, 1)));
    middleware.lists.plant("FmActiveAlarmList2", storedText(listed(linkDown(port1), 2, 2, 2, 2)));
    start();

    send(linkUp(port1));
    EXPECT_THAT(
        journal(),
        ElementsAreArray(
            all({replaced(1), statusPushed(3), reported(cleared(listed(linkDown(port1), 2, 1, 1, 1), linkUp(port1), 1)),
                 replaced(1), replaced(2), statusReplaced(3),
                 reported(cleared(listed(linkDown(port1), 2, 2, 2, 2), linkUp(port1), 2)), replaced(2)})));

    tick();
    EXPECT_THAT(journal(), ElementsAreArray(all({erased(1), erased(2)})));
}

}  // namespace
}  // namespace ZorvFm

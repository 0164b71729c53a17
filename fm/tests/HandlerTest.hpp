/// What the tests of alarm handling stand on: a handler that is up, with those who listen northbound; time stands still.
///
/// A test says what it sends and what it expects in the words of the reference model's alarm, whose texts are plain code of
/// their own. The journal is compared whole: log lines, records, notifications and calls, in their order.
#pragma once

#include <optional>

#include "FmAlarmHandler.hpp"
#include "FmConfig.hpp"
#include "FmJournal.hpp"
#include "FmTest.hpp"
#include "MOConnector.hpp"
#include "ReferenceTexts.hpp"
#include "Status.hpp"
#include "TimeZone.hpp"

namespace ZorvFm {

class HandlerTest : public FmTest {
protected:
    using Entries = ZorvFakes::Journal::Entries;
    using ReferenceAlarm = Reference::ReferenceAlarm;

    static constexpr std::uint64_t second = 1000000000;
    static constexpr std::uint64_t timeOfDay = 1700000000 * second;
    static constexpr unsigned long consumer3 = 1001;
    static constexpr unsigned long consumer2 = 1002;

    HandlerTest();
    ~HandlerTest() override;

    /// Brings alarm handling up, anew when it was up. The journal is empty then.
    void start();

    /// The same, and the journal shows it.
    void startInSight();

    /// The name under which the node is known northbound.
    void nameElement(const std::string& name);

    /// A notification as it comes from the connector: link down on a port, an alarm of severity major.
    static ReferenceAlarm linkDown(const std::string& dn = "ManagedElement=1,Port=1");

    /// Its end, later and with another text.
    static ReferenceAlarm linkUp(const std::string& dn = "ManagedElement=1,Port=1");

    /// The alarm in the list that such a notification makes, with its numbers.
    static ReferenceAlarm listed(ReferenceAlarm notification, int state, std::uint64_t alarmId, std::uint64_t seqNo,
                                 std::uint64_t originalSeqNo);

    /// The alarm as it is reported at its end.
    static ReferenceAlarm cleared(ReferenceAlarm alarm, const ReferenceAlarm& notification, std::uint64_t seqNo);

    /// The alarm that is left in the list after that report.
    static ReferenceAlarm ceased(ReferenceAlarm reported);

    static AlarmData dataOf(const ReferenceAlarm& alarm);

    void send(const ReferenceAlarm& notification);

    /// Brings alarm handling up and raises one alarm, out of the journal's sight: id 1, its item is item2, or item1 when it
    /// is not reported at once.
    void raiseOne();

    void pass(std::uint64_t nanoseconds) { middleware.clock.advance(std::chrono::nanoseconds(nanoseconds)); }

    /// Half a second later a round of ticks.
    void tick();

    // --- What the journal shows

    Entries recordOf(const ReferenceAlarm& alarm) const;

    /// Record, log line and notifications of an alarm or an alert.
    Entries reported(const ReferenceAlarm& alarm) const;
    Entries alerted(const ReferenceAlarm& alert) const;

    /// The status record, stored for the first time and after that.
    static Entries statusPushed(int item = 1);
    static Entries statusReplaced(int item = 1);

    static Entries pushed() { return {"listPushBack FmActiveAlarmList2 -> 0"}; }
    static Entries replaced(int item)
    {
        return {"listReplaceItem FmActiveAlarmList2 item" + std::to_string(item) + " -> 0"};
    }
    static Entries erased(int item)
    {
        return {"listEraseItem FmActiveAlarmList2 item" + std::to_string(item) + " -> 0"};
    }

    /// The stored alarms.
    Entries stored() const { return middleware.lists.items("FmActiveAlarmList2"); }

    /// What raiseOne makes when no filter holds it back.
    const ReferenceAlarm active = listed(linkDown(), 2, 1, 1, 1);

    const Entries contentsDiffer = {"log 5 Same alarm but new severity, additional text or additional info."};

    FmConfig config;
    MOConnector connector;
    std::optional<Status> status;
    std::optional<FmAlarmHandler> handler;

private:
    const TimeZone utc{"UTC0"};
};

}  // namespace ZorvFm

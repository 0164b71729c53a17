#include "HandlerTest.hpp"

#include "FmEventProducer.hpp"
#include "MeIdTranslator.hpp"

using ZorvFakes::FmJournal::all;

namespace ZorvFm {

HandlerTest::HandlerTest()
{
    middleware.fmModel.plant();
    middleware.clock.turnOn(1000 * second, timeOfDay);
    FmEventProducer::instance().start();
    middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
    middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2);
    nameElement("");
}

HandlerTest::~HandlerTest()
{
    handler.reset();
    FmEventProducer::instance().stop();
    EXPECT_EQ(middleware.lists.opened(), middleware.lists.finalized());
    EXPECT_EQ(middleware.transactions.begun(), middleware.transactions.committed() + middleware.transactions.aborted());
}

/// Reads the name at once, so that no test sees it done.
void HandlerTest::nameElement(const std::string& name)
{
    middleware.fmModel.setExternalId(name);
    Zorv::MeIdTranslator::instance().modelChanged();
    Zorv::MeIdTranslator::instance().toExternalDn("ManagedElement=1");
    journal();
}

void HandlerTest::start()
{
    startInSight();
    journal();
}

void HandlerTest::startInSight()
{
    handler.reset();
    status.emplace();
    handler.emplace(config, connector, *status);
    status->initialize();
    handler->initialize();
}

HandlerTest::ReferenceAlarm HandlerTest::linkDown(const std::string& dn)
{
    ReferenceAlarm alarm;
    alarm.dn = dn;
    alarm.majorType = 1;
    alarm.minorType = 7;
    alarm.text = "Link down";
    alarm.originalText = alarm.text;
    alarm.severity = YALT_FM_SEVERITY_MAJOR;
    alarm.originalSeverity = alarm.severity;
    alarm.eventTime = timeOfDay - 5 * second;
    alarm.originalEventTime = alarm.eventTime;
    alarm.stateful = true;
    alarm.eventType = 2;
    alarm.probableCause = 14;
    alarm.specificProblem = "Link failure";
    return alarm;
}

HandlerTest::ReferenceAlarm HandlerTest::linkUp(const std::string& dn)
{
    ReferenceAlarm clear = linkDown(dn);
    clear.text = "Link up";
    clear.originalText = clear.text;
    clear.severity = YALT_FM_SEVERITY_CLEARED;
    clear.originalSeverity = YALT_FM_SEVERITY_CLEARED;
    clear.eventTime = timeOfDay - 3 * second;
    clear.originalEventTime = clear.eventTime;
    return clear;
}

HandlerTest::ReferenceAlarm HandlerTest::listed(ReferenceAlarm notification, int state, std::uint64_t alarmId,
                                                std::uint64_t seqNo, std::uint64_t originalSeqNo)
{
    notification.state = state;
    notification.alarmId = alarmId;
    notification.seqNo = seqNo;
    notification.originalSeqNo = originalSeqNo;
    return notification;
}

HandlerTest::ReferenceAlarm HandlerTest::cleared(ReferenceAlarm alarm, const ReferenceAlarm& notification,
                                                 std::uint64_t seqNo)
{
    alarm.severity = YALT_FM_SEVERITY_CLEARED;
    alarm.clearEventTime = notification.eventTime;
    alarm.eventTime = notification.eventTime;
    alarm.textForClear = notification.text;
    alarm.text = notification.text;
    alarm.info = notification.info;
    alarm.seqNo = seqNo;
    alarm.state = 6;
    return alarm;
}

HandlerTest::ReferenceAlarm HandlerTest::ceased(ReferenceAlarm reported)
{
    reported.seqNo = 0;
    reported.originalSeqNo = 0;
    reported.originalEventTime = 0;
    return reported;
}

AlarmData HandlerTest::dataOf(const ReferenceAlarm& alarm)
{
    AlarmData data;
    data.dn = alarm.dn;
    data.majorType = alarm.majorType;
    data.minorType = alarm.minorType;
    data.additionalText = alarm.text;
    data.originalAdditionalText = alarm.originalText;
    data.severity = alarm.severity;
    data.originalSeverity = alarm.originalSeverity;
    data.eventTime = alarm.eventTime;
    data.originalEventTime = alarm.originalEventTime;
    data.stateful = alarm.stateful;
    data.eventType = alarm.eventType;
    data.probableCause = alarm.probableCause;
    data.specificProblem = alarm.specificProblem;
    for (const auto& [name, value] : alarm.info) {
        data.addAdditionalInfo(name, value);
    }
    return data;
}

void HandlerTest::send(const ReferenceAlarm& notification)
{
    AlarmData data = dataOf(notification);
    handler->handleAlarmNotif(data);
}

void HandlerTest::raiseOne()
{
    start();
    send(linkDown());
    journal();
}

void HandlerTest::tick()
{
    pass(second / 2);
    handler->tickAllAlarms();
}

HandlerTest::Entries HandlerTest::recordOf(const ReferenceAlarm& alarm) const
{
    return {"record 5 " + Reference::logRecord(alarm, middleware.clock.realTime())};
}

HandlerTest::Entries HandlerTest::reported(const ReferenceAlarm& alarm) const
{
    return all({recordOf(alarm),
                {"log 5 Sending alarm: " + Reference::debugLine(alarm), Reference::notification3(alarm, consumer3),
                 Reference::notification2(alarm, consumer2)}});
}

HandlerTest::Entries HandlerTest::alerted(const ReferenceAlarm& alert) const
{
    return all({recordOf(alert),
                {"log 5 Sending alert: " + Reference::debugLine(alert), Reference::notification3(alert, consumer3),
                 Reference::notification2(alert, consumer2)}});
}

HandlerTest::Entries HandlerTest::statusPushed(int item)
{
    return {"listIsEmpty FmStatusSection -> 0 true", "log 6 Put initial status item into FmStatusSection list.",
            "listPushBack FmStatusSection -> 0",
            "log 6 Successfully executed listPushBack to FmStatusSection: Returned listItemName=item" +
                std::to_string(item)};
}

HandlerTest::Entries HandlerTest::statusReplaced(int item)
{
    return {"listIsEmpty FmStatusSection -> 0 false",
            "listGetFrontRef FmStatusSection -> 0",
            "listGetNextItemFront FmStatusSection -> 0",
            "listReplaceItem FmStatusSection item" + std::to_string(item) + " -> 0",
            "log 6 Updated status item in FmStatusSection list.",
            "listGetFinalize FmStatusSection -> 0"};
}

}  // namespace ZorvFm

#include "RealNode.hpp"

#include <cstring>

#include "MeIdTranslator.hpp"
#include "NbiAlarmList.hpp"

namespace ZorvFm {
namespace {

constexpr const char* alarmListName = "FmActiveAlarmList2";
constexpr const char* statusListName = "FmStatusSection";

FmConfig configOf(const Reference::Configuration& wanted)
{
    FmConfig config;
    config.alarmToggleSilentTimeout = wanted.silentTimeout;
    config.transientRaiseAlarmFilterTime = wanted.raiseFilterTime;
    config.transientCeaseAlarmFilterTime = wanted.ceaseFilterTime;
    config.alarmToggleWindowSize = wanted.toggleWindow;
    config.alarmToggleTriggerCount = wanted.toggleCount;
    config.reuseAdditionalTextFromAalAtClear = wanted.reuseTextAtClear;
    return config;
}

AlarmData received(const Reference::Notification& sent)
{
    const char* dn = sent.dn.empty() ? nullptr : sent.dn.c_str();
    const char* text = sent.text.c_str();
    if (sent.version == 1) {
        return AlarmData(YaltOamSpiNotificationFmStruct{dn, sent.majorType, sent.minorType, text, sent.severity});
    }
    if (sent.version == 2) {
        return AlarmData(
            YaltOamSpiNotificationFmStruct_2{dn, sent.majorType, sent.minorType, sent.eventTime, text, sent.severity});
    }
    std::vector<YaltOamSpiFmAdditionalInfoEntry> entries;
    for (const auto& [name, value] : sent.info) {
        entries.push_back({name.c_str(), value.c_str()});
    }
    const YaltOamSpiFmAdditionalInfoContainer info{entries.data(), static_cast<std::uint32_t>(entries.size())};
    return AlarmData(YaltOamSpiNotificationFmStruct_4{dn, sent.majorType, sent.minorType, sent.eventTime, text,
                                                      sent.severity, info});
}

}  // namespace

RealNode::RealNode(ZorvFakes::Middleware& fakes, const Reference::History& history)
    : middleware(fakes),
      config(configOf(history.configuration)),
      memory(std::make_unique<Memory>(config))
{
    middleware.fmModel.setExternalId(history.configuration.elementName);
    setTypes(history.types);
    for (const Reference::Survivor& survivor : history.survivors) {
        middleware.lists.plant(alarmListName, storedText(survivor.asStored()));
    }
    takeJournal();
}

RealNode::~RealNode()
{
    middleware.lists.heal();
    middleware.transactions.heal();
    deleteList(alarmListName);
    deleteList(statusListName);
}

void RealNode::deleteList(const std::string& name)
{
    ZorvMwSpiListNameT listName{static_cast<std::uint16_t>(name.size() + 1), {}};
    std::memcpy(listName.value, name.data(), name.size());
    middleware.lists.listDelete(&listName);
}

void RealNode::start(bool keepsMemory)
{
    memory->connector.clearCache();
    if (!keepsMemory) {
        memory.reset();
        memory = std::make_unique<Memory>(config);
    }
    memory->status.initialize();
    memory->handler.initialize();
}

void RealNode::notify(const Reference::Notification& notification)
{
    AlarmData alarm = received(notification);
    memory->connector.updateAlarm(alarm);
    if (memory->handler.isUpdateAlarm(alarm)) {
        memory->handler.handleAlarmNotif(alarm);
    }
}

void RealNode::passTime(std::uint64_t nanoseconds)
{
    middleware.clock.advance(std::chrono::nanoseconds(nanoseconds));
}

void RealNode::tickAll()
{
    memory->handler.tickAllAlarms();
}

void RealNode::suppress(int value)
{
    memory->handler.suppressAlarm(value);
}

void RealNode::saveSummary()
{
    memory->handler.saveVeskFmAttributes();
}

/// In two models, to see that the order of all counts.
void RealNode::setTypes(const std::vector<Reference::AlarmType>& types)
{
    const std::string fmDn = ZorvFakes::FmModel::fmDn;
    middleware.objects.remove(fmDn + ",FmAlarmModel=1");
    middleware.objects.remove(fmDn + ",FmAlarmModel=2");
    middleware.fmModel.plantModel("1");
    for (std::size_t i = 0; i < types.size(); ++i) {
        const Reference::AlarmType& type = types[i];
        middleware.fmModel.plantType(i < types.size() / 2 ? "1" : "2", std::to_string(i),
                                     {type.majorType, type.minorType, type.stateful, type.eventType,
                                      type.specificProblem, type.probableCause, "", type.configuredSeverity});
    }
    memory->connector.clearCache();
    Zorv::MeIdTranslator::instance().modelChanged();
}

void RealNode::failNext(Reference::Operation operation, int code)
{
    switch (operation) {
    case Reference::Operation::PUSH:
        middleware.lists.failNext("listPushBack FmActiveAlarmList2", code);
        break;
    case Reference::Operation::REPLACE:
        middleware.lists.failNext("listReplaceItem FmActiveAlarmList2", code);
        break;
    case Reference::Operation::ERASE:
        middleware.lists.failNext("listEraseItem FmActiveAlarmList2", code);
        break;
    case Reference::Operation::COMMIT:
        middleware.transactions.failNext("commitTransaction", code);
        break;
    }
}

std::vector<std::string> RealNode::storedItems() const
{
    return middleware.lists.items(alarmListName);
}

std::vector<std::string> RealNode::visibleAlarms() const
{
    std::vector<AlarmData> alarms;
    NbiAlarmList::getAlarms(alarms);
    std::vector<std::string> lines;
    for (const AlarmData& alarm : alarms) {
        lines.push_back(alarm.toString());
    }
    return lines;
}

Reference::Summary RealNode::countSummary()
{
    Reference::Summary summary;
    memory->handler.countAlarmSummaries(summary.total, summary.critical, summary.major, summary.minor, summary.warning);
    return summary;
}

Reference::StatusNumbers RealNode::statusNumbers() const
{
    const StatusSection& section = memory->status.get();
    return {section.lastStatefulSeqNo, section.lastStatelessSeqNo, section.lastStatefulTimestamp,
            section.lastStatelessTimestamp, section.lastNotificationCheck};
}

}  // namespace ZorvFm

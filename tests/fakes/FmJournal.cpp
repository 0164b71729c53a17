#include "FmJournal.hpp"

#include <sstream>

namespace ZorvFakes {
namespace FmJournal {

namespace {

const std::string fmDn = "ManagedElement=1,SystemFunctions=1,Fm=1";

const Entries producedTypes = {"ZorvOamApiFmNotificationEventType_3",     "ZorvOamApiFmHeartbeatEventType_3",
                               "ZorvOamApiFmAlarmListRebuiltEventType_3", "ZorvOamApiFmNotificationEventType_2",
                               "ZorvOamApiFmHeartbeatEventType_2",        "ZorvOamApiFmAlarmListRebuiltEventType_2"};

const char* severityText(int severity)
{
    static constexpr const char* texts[] = {"CLEARED", "INDETERMINATE", "WARNING", "MINOR", "MAJOR", "CRITICAL"};
    return texts[severity];
}

}  // namespace

Entries all(std::initializer_list<Entries> parts)
{
    Entries entries;
    for (const Entries& part : parts) {
        entries.insert(entries.end(), part.begin(), part.end());
    }
    return entries;
}

// --- Starting and stopping

Entries producersStarted(int firstHandle)
{
    Entries entries;
    for (const std::string& type : producedTypes) {
        entries.emplace_back("registerProducer -> 0");
        entries.push_back("addEventType " + std::to_string(firstHandle++) + " " + type + " -> 0");
    }
    return entries;
}

Entries producersStopped(int firstHandle)
{
    Entries entries;
    for (const std::string& type : producedTypes) {
        const std::string handle = std::to_string(firstHandle++);
        entries.push_back("removeEventType " + handle + " " + type + " -> 0");
        entries.push_back("unregisterProducer " + handle + " -> 0");
    }
    return entries;
}

Entries subscriptions(const std::string& time)
{
    const auto timed = [&](const std::string& framework, const std::string& version) {
        return framework + "OamSpiNotificationFmEventType_" + version + " " + framework +
               "OamSpiNotificationFmFilterTypeDateTime_" + version + "=" + time;
    };
    const std::string changes = "YaltOamSpiCmEvent_Notification_1 "
                                "YaltOamSpiCmEvent_FilterTypeRegExp_1=^ManagedElement=.*,SystemFunctions=.*,Fm=.*$, "
                                "YaltOamSpiCmEvent_FilterTypeRegExp_1=^ManagedElement=[^,]+$";
    return {changes,
            timed("Zorv", "1"),
            timed("Zorv", "2"),
            timed("Yalt", "1"),
            timed("Yalt", "2"),
            timed("Yalt", "4"),
            "ZorvOamSpiFmAlarmSuppressEventType_1 "};
}

Entries consumersStarted(const std::string& time)
{
    Entries entries = {"log 6 Using time " + time + " as filter"};
    for (const std::string& subscription : subscriptions(time)) {
        entries.emplace_back("registerConsumer -> 0");
        entries.push_back("addSubscription " + subscription + " -> 0");
    }
    return entries;
}

/// The consumers are stopped by number, and that of suppression, started last, is the third.
Entries consumersStopped(int firstConsumer, const std::string& time)
{
    const Entries started = subscriptions(time);
    Entries entries;
    for (const int place : {0, 1, 2, 6, 3, 4, 5}) {
        entries.push_back("removeSubscription " + started[static_cast<std::size_t>(place)] + " -> 0");
        entries.push_back("unregisterConsumer " + std::to_string(firstConsumer + place) + " -> 0");
    }
    return entries;
}

Entries coldStart()
{
    return {"listCreate FmStatusSection 40 -> 0",
            "listIsEmpty FmStatusSection -> 0 true",
            "log 6 listIsEmpty of list FmStatusSection returned 0",
            "log 4 FmStatusSection list existed but was empty. Preparing for a cold start.",
            "listCreate FmActiveAlarmList2 1000 -> 0",
            "listIsEmpty FmActiveAlarmList -> -2",
            "listGetFrontRef FmActiveAlarmList2 -> 0",
            "listGetFinalize FmActiveAlarmList2 -> 0",
            "log 6 Active Alarm List recovered, 0"};
}

Entries warmStart(int storedAlarms)
{
    return all({{"listCreate FmStatusSection 40 -> -3", "listIsEmpty FmStatusSection -> 0 false",
                 "log 6 listIsEmpty of list FmStatusSection returned 0", "listGetFrontRef FmStatusSection -> 0",
                 "listGetNextItemFront FmStatusSection -> 0", "listGetFinalize FmStatusSection -> 0",
                 "listCreate FmActiveAlarmList2 1000 -> -3", "listIsEmpty FmActiveAlarmList -> -2",
                 "listGetFrontRef FmActiveAlarmList2 -> 0"},
                Entries(static_cast<std::size_t>(storedAlarms), "listGetNextItemFront FmActiveAlarmList2 -> 0"),
                {"listGetFinalize FmActiveAlarmList2 -> 0",
                 "log 6 Active Alarm List recovered, " + std::to_string(storedAlarms)}});
}

Entries fmObjectFound()
{
    return {"newMoIterator  ManagedElement -> 0",
            "nextMo -> 0 ManagedElement=1",
            "nextMo -> -2",
            "finalizeMoIterator -> 0",
            "newMoIterator ManagedElement=1 SystemFunctions -> 0",
            "nextMo -> 0 SystemFunctions=1",
            "nextMo -> -2",
            "finalizeMoIterator -> 0",
            "newMoIterator ManagedElement=1,SystemFunctions=1 Fm -> 0",
            "nextMo -> 0 Fm=1",
            "nextMo -> -2",
            "finalizeMoIterator -> 0"};
}

Entries configurationRead()
{
    return {"createTransaction 1 60 -> 0", "getMoAttribute " + fmDn + " heartbeatInterval -> 0",
            "abortTransaction -> 0"};
}

// --- The FM object

Entries summaryWritten(const Summary& summary)
{
    Entries entries;
    const auto write = [&](const std::string& attribute, const std::string& value) {
        entries.push_back("setMoAttribute " + fmDn + " " + attribute + " " + value + " -> 0");
    };
    const auto writeCounter = [&](const std::string& attribute, const std::optional<int>& value) {
        if (value) {
            write(attribute, std::to_string(*value));
        }
    };
    write("lastSequenceNo", std::to_string(summary.lastSequenceNo));
    write("lastChanged", "'" + summary.lastChanged + "'");
    writeCounter("totalActive", summary.total);
    writeCounter("sumCritical", summary.critical);
    writeCounter("sumMajor", summary.major);
    writeCounter("sumMinor", summary.minor);
    writeCounter("sumWarning", summary.warning);
    entries.emplace_back("commitTransaction -> 0");
    return entries;
}

// --- What is reported

std::string Report::record(const std::string& stamp) const
{
    const std::string tag = stateful ? "Alarm" : "Alert";
    std::ostringstream text;
    text << "record 5 <FmLogRecord>\n   <LogTimestamp>" << stamp << "</LogTimestamp>\n   <" << tag << ">" << stateful
         << ";" << eventTimeText << ";" << dn << ";" << majorType << ";" << minorType << ";" << specificProblem << ";"
         << probableCause << ";" << severityText(severity) << ";" << additionalText << ";" << seqNo << ";"
         << eventTypeText << ";" << originalEventTimeText << ";" << severityText(originalSeverity) << ";"
         << originalAdditionalText << ";" << originalSeqNo << ";" << additionalInfo.size();
    for (const auto& [name, value] : additionalInfo) {
        text << ";" << name << ";" << value;
    }
    text << "</" << tag << ">\n</FmLogRecord>";
    return text.str();
}

std::string Report::line() const
{
    std::ostringstream text;
    text << "log 5 Sending " << (stateful ? "alarm" : "alert") << ": dn=" << dn << "; majorType=" << majorType
         << "; minorType=" << minorType << "; additionalText=" << additionalText << "; severity=" << severity
         << "; specificProblem=" << specificProblem << "; seqNo=" << seqNo << "; eventTime=" << eventTime
         << "; stateful=" << stateful << "; eventType=" << eventType << "; probableCause=" << probableCause
         << "; originalSeqNo=" << originalSeqNo << "; originalAdditionalText=" << originalAdditionalText
         << "; originalSeverity=" << originalSeverity << "; originalEventTime=" << originalEventTime
         << "; alarmId=" << alarmId << "; additionalInfoSize=" << additionalInfo.size();
    for (const auto& [name, value] : additionalInfo) {
        text << "; " << name << "; " << value;
    }
    return text.str();
}

std::string Report::version3(unsigned long consumer) const
{
    return notified("3", consumer, "alarmId=" + std::to_string(alarmId));
}

std::string Report::version2(unsigned long consumer) const
{
    return notified("2", consumer, "originalSeqNo=" + std::to_string(originalSeqNo));
}

std::string Report::notified(const std::string& version, unsigned long consumer, const std::string& identity) const
{
    std::string pairs;
    for (const auto& [name, value] : additionalInfo) {
        pairs += (pairs.empty() ? "'" : ",'") + name + "'='" + value + "'";
    }
    std::ostringstream text;
    text << std::boolalpha << "notify ZorvOamApiFmNotificationEventType_" << version << " consumer=" << consumer
         << " filter=[] {dn='" << dn << "' majorType=" << majorType << " minorType=" << minorType
         << " eventTime=" << eventTime << " additionalText='" << additionalText << "' severity=" << severity
         << " additionalInfo=" << (pairs.empty() ? "null" : "[" + pairs + "]") << "} stateful=" << stateful
         << " seqNo=" << seqNo << " eventType=" << eventType << " probableCause=" << probableCause
         << " specificProblem='" << specificProblem << "' " << identity << " originalEventTime=" << originalEventTime
         << " originalAdditionalText='" << originalAdditionalText << "' originalSeverity=" << originalSeverity
         << " -> 0";
    return text.str();
}

}  // namespace FmJournal
}  // namespace ZorvFakes

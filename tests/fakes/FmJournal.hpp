/// What fault management leaves in the journal, in words: so that tests compare whole journals and stay readable.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Journal.hpp"

namespace ZorvFakes {
namespace FmJournal {

using Entries = Journal::Entries;

/// One after the other.
Entries all(std::initializer_list<Entries> parts);

// --- Starting and stopping

/// The six northbound event types, in the order of starting and stopping. Handles count on from start to start.
Entries producersStarted(int firstHandle);
Entries producersStopped(int firstHandle);

/// The seven subscriptions in the order in which they are made, with the time of the last notification as filter.
Entries subscriptions(const std::string& time);
Entries consumersStarted(const std::string& time);
Entries consumersStopped(int firstConsumer, const std::string& time);

/// Status and alarms without anything stored, and as an earlier worker has left them.
Entries coldStart();
Entries warmStart(int storedAlarms);

/// The search for the FM object, once for each load of the library.
Entries fmObjectFound();

/// The worker's first reading.
Entries configurationRead();

// --- The FM object

/// What was written; counters that stayed as they were are not.
struct Summary {
    std::uint64_t lastSequenceNo = 0;
    std::string lastChanged = "1970-01-01T00:00:00.000+00:00";
    std::optional<int> total, critical, major, minor, warning;
};

/// The writes and the commit, without the beginning of the transaction.
Entries summaryWritten(const Summary& summary);

// --- What is reported

/// A report with all that its texts show; at first a raise of the fake model's default type.
struct Report {
    std::string dn;
    std::uint32_t majorType = 1;
    std::uint32_t minorType = 1;
    std::uint64_t eventTime = 1700000000000000000;
    std::string eventTimeText = "2023-11-14T22:13:20.000+00:00";
    std::string additionalText;
    int severity = 4;
    std::vector<std::pair<std::string, std::string>> additionalInfo;
    bool stateful = true;
    std::uint64_t seqNo = 1;
    int eventType = 2;
    std::string eventTypeText = "COMMUNICATIONSALARM";
    std::uint32_t probableCause = 14;
    std::string specificProblem = "Link failure";
    std::uint64_t alarmId = 1;
    std::uint64_t originalSeqNo = 1;
    std::uint64_t originalEventTime = 1700000000000000000;
    std::string originalEventTimeText = "2023-11-14T22:13:20.000+00:00";
    std::string originalAdditionalText;
    int originalSeverity = 4;

    /// The alarm log record, stamped with this text.
    std::string record(const std::string& stamp) const;

    /// The line that announces the sending.
    std::string line() const;

    std::string version3(unsigned long consumer) const;
    std::string version2(unsigned long consumer) const;

private:
    std::string notified(const std::string& version, unsigned long consumer, const std::string& identity) const;
};

}  // namespace FmJournal
}  // namespace ZorvFakes

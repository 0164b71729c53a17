/// Fault management as it is meant, written down as plainly as can be: lists walked from the front, nothing remembered
/// that can be looked up, no code of the component. The real one is compared with it.
///
/// Times are nanoseconds. What it would have logged, recorded and sent comes out as the journal of the fakes shows it; of
/// the log lines those of the levels 3 to 5.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ReferenceTexts.hpp"

namespace ZorvFm {
namespace Reference {

struct Configuration {
    std::uint64_t silentTimeout = 0;
    std::uint64_t raiseFilterTime = 0;
    std::uint64_t ceaseFilterTime = 0;
    std::uint64_t toggleWindow = 0;
    std::uint32_t toggleCount = 1;
    bool reuseTextAtClear = false;
    std::string elementName;  // of "ManagedElement=1", as known northbound; empty: as it is
};

/// An alarm type of the model, with the severity in the model's own numbers.
struct AlarmType {
    std::uint32_t majorType;
    std::uint32_t minorType;
    bool stateful;
    std::int32_t eventType;
    std::string specificProblem;
    std::uint32_t probableCause;
    std::optional<std::int32_t> configuredSeverity;
};

/// What an application sends. Structure version 1 has no event time and no information, version 2 no information.
struct Notification {
    int version;
    std::string dn;
    std::uint32_t majorType;
    std::uint32_t minorType;
    std::int32_t severity;
    std::uint64_t eventTime;
    std::string text;
    InfoT info;
};

struct Summary {
    std::uint32_t total = 0;
    std::uint32_t critical = 0;
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t warning = 0;
};

/// The status record.
struct StatusNumbers {
    std::uint64_t lastStateful = 0;
    std::uint64_t lastStateless = 0;
    std::uint64_t timeOfStateful = 0;
    std::uint64_t timeOfStateless = 0;
    std::uint64_t timeOfCheck = 0;
};

/// The router's numbers for those who listen northbound.
struct Consumers {
    unsigned long alarm3;
    unsigned long alarm2;
    unsigned long rebuilt3;
    unsigned long rebuilt2;
};

/// Operations of the middleware that may fail.
enum class Operation { PUSH, REPLACE, ERASE, COMMIT };

class ReferenceModel {
public:
    ReferenceModel(const Configuration& theConfiguration, const Consumers& theConsumers);

    // --- What happens

    void setTime(std::uint64_t monotonic, std::uint64_t timeOfDay);
    void passTime(std::uint64_t nanoseconds);
    void setTypes(const std::vector<AlarmType>& modelTypes);

    /// The node comes up: with its own memory still there (the component was stopped), or without.
    void start(bool keepsMemory);

    /// Stored by an earlier life of the node.
    void plantStored(const ReferenceAlarm& alarm);

    void notify(const Notification& notification);
    void tickAll();
    void suppress(int value);
    void saveSummary();

    /// The next call of the operation that would not fail yet answers with the code.
    void failNext(Operation operation, int code) { failures[operation].push_back(code); }

    // --- What can be seen of it

    std::vector<std::string> takeJournal();
    std::vector<std::string> storedItems() const;
    std::vector<std::string> visibleAlarms() const;
    Summary countSummary() const;
    const StatusNumbers& statusNumbers() const { return status; }

    /// The attributes of the FM object.
    std::string fmObject() const { return shownObject; }

private:
    struct StoredItem {
        std::uint64_t number;
        ReferenceAlarm alarm;
    };

    // completing from the model
    const AlarmType* findType(const ReferenceAlarm& data) const;
    static std::optional<std::int32_t> configuredSeverity(const AlarmType& type);
    void complete(ReferenceAlarm& data);
    bool isIgnored(const ReferenceAlarm& data) const;

    // the paths of a notification
    void handle(ReferenceAlarm& data);
    void raisePath(const ReferenceAlarm& data);
    void clearPath(const ReferenceAlarm& data);
    void alertPath(ReferenceAlarm data);
    void updatePath(const ReferenceAlarm& data, ReferenceAlarm& alarm);

    // the filter
    void raise(ReferenceAlarm& alarm);
    void clear(ReferenceAlarm& alarm);
    int tick(ReferenceAlarm& alarm, std::uint64_t time);
    void prune(ReferenceAlarm& alarm, std::uint64_t time) const;
    void startTimer(ReferenceAlarm& alarm, std::uint64_t length) const;

    // reporting
    void tickAlarm(ReferenceAlarm& alarm, std::uint64_t time);
    void report(ReferenceAlarm& alarm, std::int32_t previousSeverity);
    void send(const ReferenceAlarm& copy);
    std::string externalDn(const std::string& dn) const;

    // the list
    static void init(ReferenceAlarm& alarm, const ReferenceAlarm& data);
    void assignId(ReferenceAlarm& alarm);
    ReferenceAlarm* find(const ReferenceAlarm& identity);
    const ReferenceAlarm* find(const ReferenceAlarm& identity) const;
    std::vector<ReferenceAlarm*> findForClear(const ReferenceAlarm& pattern);
    void store(ReferenceAlarm& alarm);
    void erase(const ReferenceAlarm& alarm);
    void recover();

    int nextFailure(Operation operation);
    void log(int level, const std::string& text);
    void record(const ReferenceAlarm& alarm);

    const Configuration configuration;
    const Consumers consumers;
    std::uint64_t now = 0;
    std::uint64_t dayTime = 0;
    std::vector<AlarmType> types;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> typesRead;  // since the types were last set

    std::list<ReferenceAlarm> alarms;
    std::uint64_t highestId = 0;
    std::list<StoredItem> stored;
    std::uint64_t lastItem = 0;
    StatusNumbers status;
    bool statusIsStored = false;
    std::uint64_t lastRound = 0;
    bool suppression = false;

    bool summaryPending = false;
    std::uint64_t pendingSeqNo = 0;
    std::string pendingTime;
    std::string shownObject;

    std::map<Operation, std::list<int>> failures;
    std::vector<std::string> journal;
};

}  // namespace Reference
}  // namespace ZorvFm

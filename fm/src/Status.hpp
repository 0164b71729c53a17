/// Sequence numbers and times of what was sent, kept across restarts and fail-overs in a replicated list of one item.
///
/// A sender asks for the next number, sends, and records the sending with the matching update: the numbers grow by exactly
/// one with each recorded notification.
///
/// Threads:   the worker's, once it runs; before that the component's.
/// Failure:   failures of the list are logged; memory is right, and the next save stores it.
#pragma once

#include <cstdint>

#include "ReplicatedList.hpp"

namespace ZorvFm {

/// The stored record: raw bytes in host order. Times are event times in ns; 0: none yet.
struct StatusSection {
    std::uint64_t lastStatefulSeqNo = 0;
    std::uint64_t lastStatelessSeqNo = 0;
    std::uint64_t lastStatefulTimestamp = 0;
    std::uint64_t lastStatelessTimestamp = 0;
    std::uint64_t lastNotificationCheck = 0;  // of the last notification handled, sent or dropped
};

static_assert(sizeof(StatusSection) == 40, "stored as it lies in memory");

class Status {
public:
    Status();

    /// Brings up the list and reads the stored record; without one this is a cold start.
    void initialize();

    const StatusSection& get() const { return section; }
    std::uint64_t getNextStatefulSeqNo() const { return section.lastStatefulSeqNo + 1; }
    std::uint64_t getNextStatelessSeqNo() const { return section.lastStatelessSeqNo + 1; }
    bool isColdStart() const { return coldStart; }

    /// @param time event time in ns
    void updateStateful(std::uint64_t time);
    void updateStateless(std::uint64_t time);
    void updateNotificationCheck(std::uint64_t time);

    void save() const;

private:
    void createList() const;
    void readSection();
    void pushSection() const;
    void replaceSection() const;

    ReplicatedList list;
    StatusSection section;
    bool coldStart = false;
};

}  // namespace ZorvFm

/// Alarm handling on the services of a node, with a number of active alarms: driven as the worker drives it, without the
/// threads, with nobody northbound.
///
/// Alarms are told apart by their numbers. A hundred numbers in a row have one type; those from size() on are not active
/// at first.
///
/// Threads: one.
#pragma once

#include <memory>
#include <vector>

#include "FmAlarmHandler.hpp"
#include "FmConfig.hpp"
#include "MOConnector.hpp"
#include "PartsNode.hpp"
#include "Status.hpp"

namespace ZorvBench {

class ActiveAlarms {
public:
    explicit ActiveAlarms(std::uint64_t number);

    std::uint64_t size() const { return textOf.size(); }

    /// An active alarm: each in turn, in an order without pattern.
    std::uint64_t next();

    /// As new, or with the contents it has.
    void raise(std::uint64_t number);

    /// With another text.
    void update(std::uint64_t number);

    void clear(std::uint64_t number);

    /// By a pattern that matches all that differ in the last digit only, ten of the hundred of its type.
    void clearTen(std::uint64_t number);

    /// A notification looked up: its type, the alarm, and what would change.
    bool lookUp(std::uint64_t number);

    /// The round of the next second; removes what was cleared.
    void tick();

    /// The summary's total.
    std::uint64_t countActive();

    /// Alarms sent northbound so far.
    std::uint64_t getNumberSent() const { return status.get().lastStatefulSeqNo; }

    PartsNode& getNode() { return node; }

private:
    void handle(const std::string& dn, std::uint64_t number, std::int32_t severity, bool isSecondText);
    ZorvFm::AlarmData notify(const std::string& dn, std::uint64_t number, std::int32_t severity, bool isSecondText);

    PartsNode node;
    const ZorvFm::FmConfig config;
    ZorvFm::Status status;
    ZorvFm::MOConnector connector;
    ZorvFm::FmAlarmHandler handler;
    std::vector<bool> textOf;  // of each active alarm: first or second
    std::uint64_t last = 0;
    std::uint64_t notifications = 0;
};

}  // namespace ZorvBench

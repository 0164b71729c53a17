/// A history: what happens to a node, step by step. Made at random, played to the real component and to the reference
/// model, and written down as the C++ text that makes it again.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "ReferenceModel.hpp"

namespace ZorvFm {
namespace Reference {

// --- Steps

/// An application sends a notification.
struct Send {
    Notification notification;
};

struct PassTime {
    std::uint64_t nanoseconds;
};

struct Tick {};

struct Suppress {
    int value;
};

struct SaveSummary {};

/// The component stops and starts again, in the same process or in a new one. The lists survive.
struct Restart {
    bool keepsMemory;
};

struct ChangeModel {
    std::vector<AlarmType> types;
};

/// The next call of an operation of the middleware fails.
struct Fail {
    Operation operation;
    int code;
};

using Step = std::variant<Send, PassTime, Tick, Suppress, SaveSummary, Restart, ChangeModel, Fail>;

/// An alarm that an earlier life of the node has stored.
struct Survivor {
    std::string dn;
    std::uint32_t majorType;
    std::uint32_t minorType;
    std::int32_t severity;
    std::string text;
    int state;
    std::uint64_t alarmId;

    ReferenceAlarm asStored() const;
};

struct History {
    Configuration configuration;
    std::vector<AlarmType> types;
    std::vector<Survivor> survivors;
    std::vector<Step> steps;
};

/// Lets a step happen to a node, the real one or the reference model.
template <class NodeT>
class Happening {
public:
    explicit Happening(NodeT& theNode) : node(theNode) {}

    void operator()(const Send& send) { node.notify(send.notification); }
    void operator()(const PassTime& time) { node.passTime(time.nanoseconds); }
    void operator()(const Tick& /*tick*/) { node.tickAll(); }
    void operator()(const Suppress& suppress) { node.suppress(suppress.value); }
    void operator()(const SaveSummary& /*save*/) { node.saveSummary(); }
    void operator()(const Restart& restart) { node.start(restart.keepsMemory); }
    void operator()(const ChangeModel& change) { node.setTypes(change.types); }
    void operator()(const Fail& fail) { node.failNext(fail.operation, fail.code); }

private:
    NodeT& node;
};

/// The same history for the same seed.
History makeHistory(std::uint64_t seed);

/// As C++ text.
std::string toText(const Step& step);
std::string toText(const History& history);

}  // namespace Reference
}  // namespace ZorvFm

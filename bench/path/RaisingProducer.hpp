/// Applications in one object: raises and clears alarms on the event router, as many as alarm handling can take.
///
/// Threads:   one sends; the router calls back on its own.
/// Ownership: the router outlives it. What was sent is kept until it is destroyed.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "YaltOamSpiNotificationFm_4.h"
#include "services/eventrouter/EventRouter.hpp"

namespace ZorvBench {

/// A typical alarm, told apart by its number: the port in its DN, and the nanoseconds of its event time.
struct Sent {
    std::uint64_t number = 0;
    std::string dn;  // empty: that of the number
    std::uint32_t majorType = 32473;
    std::uint32_t minorType = 101;
    std::int32_t severity = YALT_FM_SEVERITY_MAJOR;
    std::string text = "no light received for more than ten seconds";
};

class RaisingProducer {
public:
    explicit RaisingProducer(ZorvNode::EventRouter& eventRouter);
    ~RaisingProducer();

    RaisingProducer(const RaisingProducer&) = delete;
    RaisingProducer& operator=(const RaisingProducer&) = delete;

    void prepare(const Sent& sent);

    /// Hands the next prepared one over.
    void send();

    static constexpr std::uint64_t firstTime = 1714543200000000000;  // ns

private:
    class Port;

    struct Prepared {
        std::string dn;
        std::string text;
        YaltOamSpiNotificationFmStruct_4 notification;
    };

    ZorvNode::EventRouter& router;
    const std::shared_ptr<Port> port;
    std::uint32_t handle = 0;
    std::deque<Prepared> prepared;
    std::size_t next = 0;
};

}  // namespace ZorvBench

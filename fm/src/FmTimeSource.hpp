/// Time for the heartbeat, in whole seconds.
///
/// Threads:   any.
/// Failure:   without a monotonic clock the time of day takes its place.
#pragma once

#include <cstdint>

namespace ZorvFm {

class FmTimeSource {
public:
    FmTimeSource() = default;
    virtual ~FmTimeSource() = default;

    FmTimeSource(const FmTimeSource&) = delete;
    FmTimeSource& operator=(const FmTimeSource&) = delete;

    virtual std::int32_t getTime() const = 0;
};

/// The monotonic clock.
class FmMonotonicTimeSource : public FmTimeSource {
public:
    std::int32_t getTime() const override;
};

}  // namespace ZorvFm

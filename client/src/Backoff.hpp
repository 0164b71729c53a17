/// How long to wait before the next try: twice as long each time, up to a bound.
///
/// Threads: one.
#pragma once

#include <algorithm>
#include <chrono>

namespace ZorvClient {

class Backoff {
public:
    using DurationT = std::chrono::milliseconds;

    Backoff(DurationT first, DurationT bound) : shortest(first), longest(bound), following(first) {}

    DurationT next()
    {
        const DurationT wait = following;
        following = std::min(following * 2, longest);
        return wait;
    }

    void reset() { following = shortest; }

private:
    const DurationT shortest;
    const DurationT longest;
    DurationT following;
};

}  // namespace ZorvClient

/// Puts the monotonic clock of alarm handling forward, so that nobody has to wait for what happens only now and then.
///
/// The linker sends clock_gettime here. The benchmark library and the condition variables keep the real clock.
///
/// Threads: any.
#pragma once

#include <chrono>

namespace ZorvBench {

void skipTime(std::chrono::nanoseconds time);

}  // namespace ZorvBench

/// What a measurement says: one line a figure, name, value and unit separated by tabs.
///
/// Threads: one.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace ZorvBench {

using ClockT = std::chrono::steady_clock;
using SecondsT = std::chrono::duration<double>;

void say(const std::string& name, double value, const std::string& unit);

/// The median and the 99th percentile, in us.
void sayLatencies(const std::string& name, std::vector<SecondsT> latencies);

/// CPU time of the process so far.
SecondsT cpuTime();

/// Resident memory of the process, bytes.
double residentMemory();

}  // namespace ZorvBench

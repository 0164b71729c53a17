#include "Figures.hpp"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>

namespace ZorvBench {

void say(const std::string& name, double value, const std::string& unit)
{
    std::printf("%s\t%.9g\t%s\n", name.c_str(), value, unit.c_str());
    std::fflush(stdout);
}

void sayLatencies(const std::string& name, std::vector<SecondsT> latencies)
{
    std::sort(latencies.begin(), latencies.end());
    say(name + " p50", 1e6 * latencies.at(latencies.size() / 2).count(), "us");
    say(name + " p99", 1e6 * latencies.at(latencies.size() * 99 / 100).count(), "us");
}

SecondsT cpuTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

double residentMemory()
{
    malloc_trim(0);
    double pages = 0;
    double resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

}  // namespace ZorvBench

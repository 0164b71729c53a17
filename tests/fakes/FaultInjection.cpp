#include "FaultInjection.hpp"

#include <limits>

namespace ZorvFakes {

namespace {

constexpr unsigned forEver = std::numeric_limits<unsigned>::max();

bool isNamedBy(const std::string& call, const std::string& name)
{
    return call.compare(0, name.size(), name) == 0 && (call.size() == name.size() || call[name.size()] == ' ');
}

}  // namespace

void FaultInjection::failNext(const std::string& call, int32_t code, unsigned times)
{
    add({call, 0, times, code});
}

void FaultInjection::failAt(const std::string& call, unsigned nth, int32_t code)
{
    add({call, nth - 1, 1, code});
}

void FaultInjection::failAlways(const std::string& call, int32_t code)
{
    add({call, 0, forEver, code});
}

void FaultInjection::add(const Plan& plan)
{
    const std::lock_guard<std::mutex> lock(mutex);
    plans.push_back(plan);
}

void FaultInjection::heal()
{
    const std::lock_guard<std::mutex> lock(mutex);
    plans.clear();
}

unsigned FaultInjection::calls(const std::string& operation) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = counted.find(operation);
    return found == counted.end() ? 0 : found->second;
}

std::optional<int32_t> FaultInjection::planned(const std::string& call)
{
    const std::lock_guard<std::mutex> lock(mutex);
    ++counted[call.substr(0, call.find(' '))];
    for (auto plan = plans.begin(); plan != plans.end(); ++plan) {
        if (!isNamedBy(call, plan->call)) {
            continue;
        }
        if (plan->skip > 0) {
            --plan->skip;
            continue;
        }
        const int32_t code = plan->code;
        if (plan->times != forEver && --plan->times == 0) {
            plans.erase(plan);
        }
        return code;
    }
    return std::nullopt;
}

}  // namespace ZorvFakes

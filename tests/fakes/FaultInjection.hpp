/// Failures that a test plans for the calls of a fake.
///
/// A plan names calls by their operation alone ("listPushBack") or by more of the journal's text, up to any blank
/// ("listPushBack FmStatusSection", "getMoAttribute ManagedElement=1 externalId"). A call that fails by plan changes
/// nothing in the fake.
///
/// Threads: any.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace ZorvFakes {

class FaultInjection {
public:
    /// The next calls so named answer with the code.
    void failNext(const std::string& call, int32_t code, unsigned times = 1);

    /// The nth call so named from now on (1 is the next one) answers with the code.
    void failAt(const std::string& call, unsigned nth, int32_t code);

    /// Every call so named answers with the code, until heal.
    void failAlways(const std::string& call, int32_t code);

    /// Forgets all plans.
    void heal();

    /// How often an operation was called, failures by plan included.
    unsigned calls(const std::string& operation) const;

protected:
    /// Counts the call; the planned code, or nothing when the call is to do its work.
    std::optional<int32_t> planned(const std::string& call);

private:
    struct Plan {
        std::string call;
        unsigned skip;
        unsigned times;
        int32_t code;
    };

    void add(const Plan& plan);

    mutable std::mutex mutex;
    std::list<Plan> plans;                    // guarded by mutex
    std::map<std::string, unsigned> counted;  // guarded by mutex; by operation
};

}  // namespace ZorvFakes

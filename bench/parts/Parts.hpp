/// The benchmarks of this program. Names are "what it does" and, where the cost is to be the same whatever their number,
/// the number of active alarms.
#pragma once

#include <memory>

#include "ActiveAlarms.hpp"

namespace ZorvBench {

/// The active alarms of the present benchmark: kept for the next one, and made anew when their number changes.
class Stage {
public:
    ActiveAlarms& with(std::uint64_t number)
    {
        if (!alarms || alarms->size() != number) {
            alarms.reset();
            alarms = std::make_unique<ActiveAlarms>(number);
        }
        return *alarms;
    }

private:
    std::unique_ptr<ActiveAlarms> alarms;
};

/// What must not depend on the number of active alarms.
void registerFlatParts(Stage& stage);

/// What serves every notification on its way: traces, the router.
void registerNodeParts(Stage& stage);

/// Texts and notifications made from an alarm.
void registerTextParts();

}  // namespace ZorvBench

#include "runtime/ProcessorTurns.hpp"

#include <sched.h>

namespace ZorvNode {

void interruptNobody()
{
    if (sched_getscheduler(0) == SCHED_OTHER) {
        const sched_param none{};
        static_cast<void>(sched_setscheduler(0, SCHED_BATCH, &none));
    }
}

}  // namespace ZorvNode

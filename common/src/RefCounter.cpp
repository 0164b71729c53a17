#include "RefCounter.hpp"

namespace Zorv {

void RefCounter::releaseRef()
{
    if (references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete this;
    }
}

}  // namespace Zorv

#include "FmTimeSource.hpp"

#include <ctime>

namespace ZorvFm {

std::int32_t FmMonotonicTimeSource::getTime() const
{
    timespec now{};
    if (clock_gettime(CLOCK_MONOTONIC, &now) != 0) {
        return static_cast<std::int32_t>(time(nullptr));
    }
    return static_cast<std::int32_t>(now.tv_sec);
}

}  // namespace ZorvFm

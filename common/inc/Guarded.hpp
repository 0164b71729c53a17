/// The border of a C table: calls that arrive through it never let an exception out.
#pragma once

#include <exception>

#include "Logging.hpp"
#include "ZorvReturn.h"

namespace Zorv {

/// The operation's result; -1, with an error line that names where, when it throws.
template <class OperationT>
ZorvReturnT guarded(const char* where, OperationT operation) noexcept
{
    try {
        return operation();
    } catch (const std::exception& e) {
        ZORV_ERROR("%s: %s", where, e.what());
    } catch (...) {
        ZORV_ERROR("%s: %s", where, "unknown exception");
    }
    return ZORV_RETURN_FAILED;
}

}  // namespace Zorv

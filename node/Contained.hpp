/// Calls into foreign code: whatever it throws stays here.
#pragma once

#include <exception>
#include <string>

#include "ZorvReturn.h"

namespace ZorvNode {

struct CallResult {
    ZorvReturnT code = ZORV_RETURN_FAILED;
    bool threw = false;
    std::string text;  ///< of the exception
};

template <class CallT>
CallResult contained(CallT call) noexcept
{
    try {
        return {call(), false, ""};
    } catch (const std::exception& e) {
        return {ZORV_RETURN_FAILED, true, e.what()};
    } catch (...) {
        return {ZORV_RETURN_FAILED, true, "unknown exception"};
    }
}

}  // namespace ZorvNode

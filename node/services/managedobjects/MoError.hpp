/// Why an operation on managed objects is refused: the return code, and a line for people.
#pragma once

#include <stdexcept>
#include <string>

#include "ZorvReturn.h"

namespace ZorvNode {

class MoError : public std::runtime_error {
public:
    MoError(ZorvReturnT returnCode, const std::string& what) : std::runtime_error(what), code(returnCode) {}

    const ZorvReturnT code;
};

}  // namespace ZorvNode

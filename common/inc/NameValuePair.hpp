/// One entry of an event filter, as the framework's classes hold it.
#pragma once

#include <string>

namespace Zorv {

struct NameValuePair {
    std::string name;
    std::string value;
};

}  // namespace Zorv

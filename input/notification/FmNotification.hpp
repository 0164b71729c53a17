/// One FM notification on its way into the node, owned.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ZorvInput {

enum class FmFramework { zorv, yalt };

using InfoT = std::vector<std::pair<std::string, std::string>>;

struct FmNotification {
    FmFramework framework = FmFramework::yalt;
    int version = 4;  ///< 1, 2 or 4; 4 only in the second framework
    std::string dn;
    std::uint32_t majorType = 0;
    std::uint32_t minorType = 0;
    std::uint64_t eventTime = 0;  ///< ns since 1970-01-01 UTC; 0: the receiver stamps it. Version 1 does not carry it.
    std::string text;
    std::int32_t severity = 0;  ///< YaltOamSpiNotificationFmSeverityT, or any other number
    InfoT info;                 ///< version 4 only
};

}  // namespace ZorvInput

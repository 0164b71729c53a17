/// The configuration of a node (docs/formats/node-configuration.md).
///
/// Failure: readNodeConfiguration throws InputError.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "api/http/ApiSettings.hpp"
#include "services/log/RotatingFile.hpp"
#include "stores/StoreSettings.hpp"

namespace ZorvNode {

/// The alarm that the node raises about itself when it cannot write its state or its logs.
struct StorageAlarm {
    std::string
        dn;  ///< of what the storages belong to: the alarms' DNs are this and ",Storage=state" or ",Storage=log"
    std::uint32_t majorType = 0;
    std::uint32_t minorType = 0;
};

/// Paths are absolute.
struct NodeConfiguration {
    std::string file;  ///< the configuration file itself, which libraries read too
    std::vector<std::string> libraries;
    std::string model;
    std::string runDirectory;
    std::string logDirectory;
    std::int32_t logLevel = 6;
    Rotation logRotation;
    Rotation traceRotation{10000000, 2};
    std::map<std::string, std::int32_t> traceLevels;  ///< by group
    std::size_t queueBound = 10000;
    std::size_t consumerBound = 256;
    std::size_t inboxBound = 100000;
    std::size_t listBound = 64;
    std::size_t itemBound = 100000;
    StoreSettings store;
    std::size_t transactionBound = 1000;
    ApiSettings api;
    std::optional<StorageAlarm> storageAlarm;
};

NodeConfiguration readNodeConfiguration(const std::string& path);

}  // namespace ZorvNode

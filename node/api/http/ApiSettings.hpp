/// How the node's interface is offered, and what it takes.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "api/http/Caller.hpp"

namespace ZorvNode {

/// Over the network: only with a certificate and tokens.
struct TlsSettings {
    std::string address;
    std::uint16_t port = 0;
    std::string certificate;  ///< PEM file, with the chain
    std::string key;          ///< PEM file
    std::string tokens;
};

struct ApiSettings {
    std::string socket;
    std::uint32_t socketMode = 0660;
    std::optional<gid_t> socketGroup;
    PermissionSettings permissions;
    std::optional<TlsSettings> tls;
    std::size_t connectionBound = 256;
    std::size_t streamBound = 64;
    std::size_t headerBound = 16384;    ///< bytes
    std::size_t bodyBound = 1048576;    ///< bytes
    std::size_t batchBound = 1000;      ///< notifications in one request
    std::size_t streamHistory = 10000;  ///< notifications of each version
    std::chrono::seconds requestTime{30};
    std::chrono::seconds idleTime{60};
};

}  // namespace ZorvNode

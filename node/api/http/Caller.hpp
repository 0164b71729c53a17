/// Who calls, and what that lets them do.
///
/// On the Unix-domain socket the operating system tells the peer's user and groups; over TLS the token decides.
///
/// Threads: values; Permissions is unchangeable after its construction.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace ZorvNode {

struct Caller {
    std::string text;  ///< for logs: "user 1000 group 1000 process 4711", "token 2 from 10.0.0.1:5000"
    bool mayRead = false;
    bool mayPublish = false;
    bool mayManage = false;
};

/// Groups whose members may do more than read; none: publishing is for everyone who can connect, managing is for root and
/// for the user that the node runs as.
struct PermissionSettings {
    std::optional<gid_t> publishGroup;
    std::optional<gid_t> manageGroup;
};

/// The caller at the other end of a connected Unix-domain socket.
Caller callerOf(int descriptor, const PermissionSettings& settings);

}  // namespace ZorvNode

#include "api/http/Caller.hpp"

#include <grp.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace ZorvNode {

namespace {

constexpr int usualGroups = 64;
constexpr std::size_t accountTextSize = 16384;

/// All groups of a user; the peer's own group alone when the user has no account.
std::vector<gid_t> groupsOf(uid_t user, gid_t ownGroup)
{
    std::vector<char> text(accountTextSize);
    passwd account{};
    passwd* found = nullptr;
    if (getpwuid_r(user, &account, text.data(), text.size(), &found) != 0 || found == nullptr) {
        return {ownGroup};
    }
    int number = usualGroups;
    std::vector<gid_t> groups(static_cast<std::size_t>(number));
    if (getgrouplist(found->pw_name, ownGroup, groups.data(), &number) < 0) {
        groups.resize(static_cast<std::size_t>(number));
        getgrouplist(found->pw_name, ownGroup, groups.data(), &number);
    }
    groups.resize(static_cast<std::size_t>(std::max(number, 0)));
    return groups;
}

}  // namespace

Caller callerOf(int descriptor, const PermissionSettings& settings)
{
    ucred peer{};
    socklen_t size = sizeof(peer);
    if (getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) {
        return {"unknown peer", false, false, false};
    }
    Caller caller;
    caller.text = "user " + std::to_string(peer.uid) + " group " + std::to_string(peer.gid) + " process " +
                  std::to_string(peer.pid);
    const bool isOwn = peer.uid == 0 || peer.uid == geteuid();
    const std::vector<gid_t> groups = isOwn ? std::vector<gid_t>() : groupsOf(peer.uid, peer.gid);
    const auto isMember = [&](gid_t group) { return std::find(groups.begin(), groups.end(), group) != groups.end(); };
    caller.mayRead = true;
    caller.mayManage = isOwn || (settings.manageGroup && isMember(*settings.manageGroup));
    caller.mayPublish = caller.mayManage || !settings.publishGroup || isMember(*settings.publishGroup);
    return caller;
}

}  // namespace ZorvNode

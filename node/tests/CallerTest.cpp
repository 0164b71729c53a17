#include "api/http/Caller.hpp"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

namespace ZorvNode {

namespace {

constexpr uid_t stranger = 65533;
constexpr gid_t itsGroup = 65532;
constexpr gid_t otherGroup = 65531;

/// One end of a connection whose other end belongs to somebody.
class Peer {
public:
    /// @param user 0: whoever runs the test.
    explicit Peer(uid_t user = 0, gid_t group = 0)
    {
        const uid_t own = geteuid();
        const gid_t ownGroup = getegid();
        isSomebody = user == 0 || (setegid(group) == 0 && seteuid(user) == 0);
        EXPECT_EQ(0, socketpair(AF_UNIX, SOCK_STREAM, 0, ends));
        if (user != 0) {
            EXPECT_EQ(0, seteuid(own));
            EXPECT_EQ(0, setegid(ownGroup));
        }
    }
    ~Peer()
    {
        close(ends[0]);
        close(ends[1]);
    }

    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// A letter for each permission.
    std::string mayDo(const PermissionSettings& settings) const
    {
        const Caller caller = callerOf(ends[0], settings);
        return std::string(caller.mayRead ? "r" : "") + (caller.mayPublish ? "p" : "") + (caller.mayManage ? "m" : "");
    }

    int end() const { return ends[0]; }

    bool isSomebody = true;  ///< false: the test's user may not be anybody else

private:
    int ends[2] = {-1, -1};
};

}  // namespace

TEST(CallerTest, theNodesOwnUserMayDoEverything)
{
    const Peer peer;

    EXPECT_EQ("rpm", peer.mayDo({}));
    EXPECT_EQ("rpm", peer.mayDo({otherGroup, otherGroup}));
    EXPECT_EQ("user " + std::to_string(geteuid()) + " group " + std::to_string(getegid()) + " process " +
                  std::to_string(getpid()),
              callerOf(peer.end(), {}).text);
}

TEST(CallerTest, othersMayPublishUnlessAGroupIsNamedAndManageWhenTheirsIs)
{
    const Peer peer(stranger, itsGroup);
    const std::string everything = peer.isSomebody ? "" : "rpm";  // then the peer is the test's own user

    EXPECT_EQ(peer.isSomebody ? "rp" : everything, peer.mayDo({}));
    EXPECT_EQ(peer.isSomebody ? "r" : everything, peer.mayDo({otherGroup, std::nullopt}));
    EXPECT_EQ(peer.isSomebody ? "rp" : everything, peer.mayDo({itsGroup, otherGroup}));
    EXPECT_EQ("rpm", peer.mayDo({std::nullopt, itsGroup}));
    EXPECT_EQ("rpm", peer.mayDo({otherGroup, itsGroup}));
}

TEST(CallerTest, whoeverCannotBeToldMayDoNothing)
{
    const Caller caller = callerOf(-1, {});

    EXPECT_EQ("unknown peer", caller.text);
    EXPECT_FALSE(caller.mayRead || caller.mayPublish || caller.mayManage);
}

}  // namespace ZorvNode

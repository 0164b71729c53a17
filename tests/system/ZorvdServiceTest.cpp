/// zorvd as a service: what it tells the manager that runs it, at the socket that the manager names.

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "RunningNode.hpp"

namespace ZorvTest {

using ::testing::ElementsAre;
using ::testing::StartsWith;

/// Receives what a service tells.
class ManagerSocket {
public:
    explicit ManagerSocket(const std::string& path) : file(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        const timeval longest{20, 0};
        setsockopt(file, SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof(longest));
        EXPECT_EQ(0, bind(file, reinterpret_cast<const sockaddr*>(&address), sizeof(address)));
    }

    ~ManagerSocket() { close(file); }

    ManagerSocket(const ManagerSocket&) = delete;
    ManagerSocket& operator=(const ManagerSocket&) = delete;

    /// The next message; "" when none comes.
    std::string next() const
    {
        char text[1024];
        const ssize_t length = recv(file, text, sizeof(text), 0);
        return length > 0 ? std::string(text, static_cast<std::size_t>(length)) : "";
    }

    /// The next one that does not tell that the node is alive.
    std::string nextNews() const
    {
        std::string text = next();
        while (text == "WATCHDOG=1") {
            text = next();
        }
        return text;
    }

private:
    const int file;
};

class ZorvdServiceTest : public ::testing::Test {
protected:
    const NodeFiles files;
    const ManagerSocket manager{files.path("notify")};
};

TEST_F(ZorvdServiceTest, theManagerIsToldWhenTheNodeIsReadyReloadsAndStops)
{
    RunningNode node(files, {}, {"NOTIFY_SOCKET=" + files.path("notify")});
    EXPECT_EQ("READY=1\nSTATUS=running", manager.next());

    node.process().signal(SIGHUP);
    EXPECT_THAT(manager.next(), StartsWith("RELOADING=1\nMONOTONIC_USEC="));
    EXPECT_EQ("READY=1\nSTATUS=running", manager.next());

    EXPECT_EQ(0, node.stop().exitCode);
    EXPECT_EQ("STOPPING=1\nSTATUS=stopping the components", manager.next());
}

TEST_F(ZorvdServiceTest, aManagerThatWatchesIsToldThatTheNodeIsAlive)
{
    RunningNode node(files, {}, {"NOTIFY_SOCKET=" + files.path("notify"), "WATCHDOG_USEC=30000"});

    const std::string ready = manager.next();
    const std::string first = manager.next();
    const std::string second = manager.next();

    EXPECT_THAT((std::vector<std::string>{ready, first, second}),
                ElementsAre("READY=1\nSTATUS=running", "WATCHDOG=1", "WATCHDOG=1"));
    EXPECT_EQ(0, node.stop().exitCode);
    EXPECT_EQ("STOPPING=1\nSTATUS=stopping the components", manager.nextNews());
}

}  // namespace ZorvTest

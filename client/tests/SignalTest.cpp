/// The application's signals are its own.
#include "ClientTest.hpp"

#include <signal.h>

#include <atomic>
#include <filesystem>
#include <fstream>

namespace ZorvClientTest {

namespace {

std::atomic<int> pipeSignals{0};

/// Field of a line "Name:  value" of the status of the client's thread.
std::string statusOfTheClientsThread(const std::string& field)
{
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream status(task.path() / "status");
        const std::string all{std::istreambuf_iterator<char>(status), std::istreambuf_iterator<char>()};
        if (all.find("Name:\tzorv-client\n") != std::string::npos) {
            const std::size_t begin = all.find(field + ":\t") + field.size() + 2;
            return all.substr(begin, all.find('\n', begin) - begin);
        }
    }
    return "no such thread";
}

}  // namespace

struct SignalTest : ClientTest {};

TEST_F(SignalTest, theClientsThreadBlocksAllSignals)
{
    std::string blocked;
    settings.outcome = [](const ZorvClientOutcomeT*, void* context) {
        *static_cast<std::string*>(context) = statusOfTheClientsThread("SigBlk");
    };
    settings.callbackContext = &blocked;
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    // All but SIGKILL, SIGSTOP and the two that the C library keeps for itself.
    EXPECT_EQ(std::stoull(blocked, nullptr, 16) | 0x1'8004'0100, 0xffff'ffff'ffff'ffff) << blocked;
}

TEST_F(SignalTest, theCallersMaskIsLeftAsItIs)
{
    sigset_t before;
    sigset_t after;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &before);
    raise(1);
    ::pthread_sigmask(SIG_SETMASK, nullptr, &after);
    for (int number = 1; number < 32; ++number) {
        EXPECT_EQ(::sigismember(&before, number), ::sigismember(&after, number)) << number;
    }
}

TEST_F(SignalTest, noPipeSignalWhenTheNodeHangsUp)
{
    struct sigaction action {};
    struct sigaction before {};
    action.sa_handler = [](int) { ++pipeSignals; };
    ::sigaction(SIGPIPE, &action, &before);
    node.start();
    ZorvClient::Socket socket;
    socket.connect(node.path());
    node.stop();
    EXPECT_FALSE(socket.send("to nobody", std::chrono::steady_clock::now() + 10s));
    ::sigaction(SIGPIPE, &before, nullptr);
    EXPECT_EQ(pipeSignals, 0);
}

}  // namespace ZorvClientTest

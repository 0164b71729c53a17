/// What a node offers on the network: nothing, unless it is told to, and then nothing without TLS and a token.

#include <Poco/Net/Context.h>
#include <Poco/Net/SecureStreamSocket.h>
#include <Poco/Net/ServerSocket.h>
#include <Poco/StringTokenizer.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include "RunningNode.hpp"

namespace ZorvTest {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;

using Poco::Net::Context;

namespace {

const std::string loopback = "127.0.0.1";
const std::string reader = "reader-0123456789";
const std::string publisher = "publisher-0123456789";
const std::string manager = "manager-0123456789";

/// The sockets of a process, as "socket:[4711]".
std::set<std::string> socketsOf(const std::string& process)
{
    std::set<std::string> sockets;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + process + "/fd")) {
        std::error_code error;  // a file that has just been closed
        sockets.insert(std::filesystem::read_symlink(entry, error));
    }
    return sockets;
}

/// "tcp 0100007F:1F90" for each socket of the internet that a process has, in whatever state.
std::vector<std::string> networkOf(const std::string& process)
{
    const std::set<std::string> sockets = socketsOf(process);
    std::vector<std::string> found;
    for (const char* const protocol : {"tcp", "tcp6", "udp", "udp6", "udplite", "udplite6", "raw", "raw6"}) {
        std::ifstream table(std::string("/proc/net/") + protocol);
        for (std::string line; std::getline(table, line);) {
            const Poco::StringTokenizer words(line, " ", Poco::StringTokenizer::TOK_IGNORE_EMPTY);
            constexpr std::size_t address = 1;
            constexpr std::size_t inode = 9;
            if (words.count() > inode && sockets.count("socket:[" + words[inode] + "]") != 0) {
                found.push_back(protocol + (" " + words[address]));
            }
        }
    }
    return found;
}

std::uint16_t freePort()
{
    const Poco::Net::ServerSocket any(Poco::Net::SocketAddress(loopback, 0));
    return any.address().port();
}

std::string receiveAll(Poco::Net::StreamSocket& socket)
{
    std::string text;
    try {
        char block[4096];
        for (int length = 0; (length = socket.receiveBytes(block, sizeof(block))) > 0;) {
            text.append(block, static_cast<std::size_t>(length));
        }
    } catch (const Poco::TimeoutException&) {
        throw;
    } catch (const Poco::Exception&) {
        // closed the hard way
    }
    return text;
}

}  // namespace

class NetworkTest : public ::testing::Test {
protected:
    void start()
    {
        node = std::make_unique<RunningNode>(files);
        process = files.directory.read("run/zorvd.pid");
        process.pop_back();
    }

    /// The socket is there a little earlier.
    void awaitTls() const
    {
        const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (files.directory.read("run/log/SystemLog.log").find("listening with TLS on ") == std::string::npos) {
            ASSERT_LT(std::chrono::steady_clock::now(), latest);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    void startWithTls()
    {
        offerTls();
        start();
        awaitTls();
    }

    void offerTls()
    {
        const std::string command = "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 1 "
                                    "-subj /CN=node -keyout " +
                                    files.path("key.pem") + " -out " + files.path("node.pem") + " 2> " +
                                    files.path("openssl.txt");
        ASSERT_EQ(0, std::system(command.c_str())) << files.directory.read("openssl.txt");
        files.directory.write("tokens", "read " + reader + "\npublish " + publisher + "\nmanage " + manager + "\n");
        ASSERT_EQ(0, chmod(files.path("tokens").c_str(), 0600));
        files.writeConfiguration(std::string(BAD_LIBRARIES) + "/WellBehaved.so",
                                 "<api><tls><address>" + loopback + "</address><port>" + std::to_string(port) +
                                     "</port><certificate>node.pem</certificate><key>key.pem</key>"
                                     "<tokens>tokens</tokens></tls></api>\n");
    }

    Poco::Net::SocketAddress address() const { return {loopback, port}; }

    /// The answer's status to a request with a token, over TLS.
    std::string ask(const std::string& token, const std::string& method, const std::string& target,
                    const std::string& body = "") const
    {
        Context::Params params;
        params.verificationMode = Context::VERIFY_NONE;
        Poco::Net::SecureStreamSocket socket(address(), Context::Ptr(new Context(Context::TLS_CLIENT_USE, params)));
        socket.setReceiveTimeout(Poco::Timespan(20, 0));
        const std::string request = method + " " + target + " HTTP/1.1\r\nHost: node\r\n" +
                                    (token.empty() ? "" : "Authorization: Bearer " + token + "\r\n") +
                                    "Content-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
                                    "\r\n\r\n" + body;
        socket.sendBytes(request.data(), static_cast<int>(request.size()));
        return statusFrom(socket);
    }

    static std::string statusFrom(Poco::Net::StreamSocket& socket)
    {
        const std::string version = "HTTP/1.1 ";
        std::array<char, 12> begin{};  // with the three digits
        int size = 0;
        for (int length = 1; length > 0 && size < static_cast<int>(begin.size()); size += length) {
            length = socket.receiveBytes(begin.data() + size, static_cast<int>(begin.size()) - size);
        }
        return std::string(begin.data(), static_cast<std::size_t>(size)).substr(version.size());
    }

    /// The answers to a read, a publication and a change.
    std::string triesWith(const std::string& token) const
    {
        return ask(token, "GET", "/v1/node") + " " +
               ask(token, "POST", "/v1/notifications",
                   R"({"raise":{"dn":"Node=1","majorType":1,"minorType":1,"severity":"MAJOR"}})") +
               " " + ask(token, "PUT", "/v1/levels", R"({"log":"information"})");
    }

    const std::uint16_t port = freePort();
    NodeFiles files;
    std::unique_ptr<RunningNode> node;
    std::string process;
};

TEST_F(NetworkTest, aNodeThatIsNotToldToHasNoSocketOfTheInternet)
{
    files.writeConfiguration(FM_LIBRARY);
    start();
    node->request("GET", "/v1/node");

    EXPECT_THAT(socketsOf(process), Not(IsEmpty()));
    EXPECT_THAT(networkOf(process), IsEmpty());
}

TEST_F(NetworkTest, aNodeThatIsToldToListensOnItsAddressAlone)
{
    startWithTls();

    char expected[32];
    std::snprintf(expected, sizeof(expected), "tcp 0100007F:%04X", unsigned{port});
    EXPECT_THAT(networkOf(process), ElementsAre(expected));
}

TEST_F(NetworkTest, whoeverDoesNotSpeakTlsIsToldNothing)
{
    startWithTls();
    Poco::Net::StreamSocket socket(address());
    socket.setReceiveTimeout(Poco::Timespan(20, 0));
    const std::string request = "GET /v1/node HTTP/1.1\r\nHost: node\r\nAuthorization: Bearer " + manager + "\r\n\r\n";
    socket.sendBytes(request.data(), static_cast<int>(request.size()));

    EXPECT_THAT(receiveAll(socket), AllOf(Not(HasSubstr("HTTP")), Not(HasSubstr("{"))));
    EXPECT_EQ("200", ask(manager, "GET", "/v1/node"));
}

TEST_F(NetworkTest, theTokenDecidesWhatItsBearerMayDo)
{
    startWithTls();

    EXPECT_EQ("401 401 401", triesWith(""));
    EXPECT_EQ("401 401 401", triesWith("manager-0123456788"));
    EXPECT_EQ("401 401 401", triesWith(manager + "0"));
    EXPECT_EQ("200 403 403", triesWith(reader));
    EXPECT_EQ("200 200 403", triesWith(publisher));
    EXPECT_EQ("200 200 200", triesWith(manager));
}

TEST_F(NetworkTest, theLogsTellWhichTokenAndFromWhereButNotTheTokenItself)
{
    startWithTls();
    triesWith("manager-0123456788");
    triesWith(publisher);
    triesWith(manager);

    const std::string publications = files.directory.read("run/log/Publications.log");
    const std::string system = files.directory.read("run/log/SystemLog.log");
    EXPECT_THAT(publications, MatchesRegex(".* published 1, rejected 0, by token 2 from 127.0.0.1:[0-9]+\n"
                                           ".* published 1, rejected 0, by token 3 from 127.0.0.1:[0-9]+\n"));
    EXPECT_THAT(system, MatchesRegex(".* NOTICE levels changed, by token 3 from 127.0.0.1:[0-9]+\n.*"));
    for (const std::string& token : {publisher, manager, std::string("manager-0123456788")}) {
        EXPECT_THAT(publications + system, Not(HasSubstr(token)));
    }
}

TEST_F(NetworkTest, tokensThatOthersMayReadAreNoneAndTheNodeDoesNotStart)
{
    offerTls();
    ASSERT_EQ(0, chmod(files.path("tokens").c_str(), 0604));

    const ProcessResult refused = files.runNode();

    EXPECT_EQ("zorvd: cannot listen on " + loopback + ":" + std::to_string(port) + ": " + files.path("tokens") +
                  ": other users may read it; chmod 600\n",
              refused.err);
    EXPECT_EQ(1, refused.exitCode);
    EXPECT_FALSE(std::filesystem::exists(files.socket()));
}

}  // namespace ZorvTest

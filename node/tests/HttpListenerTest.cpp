#include <Poco/Net/ServerSocket.h>
#include <sys/stat.h>

#include "ListenerFixture.hpp"

namespace ZorvNode {

using ::testing::EndsWith;
using ::testing::StartsWith;

using ClockT = std::chrono::steady_clock;

class HttpListenerTest : public ListenerFixture {
protected:
    std::string failureOfStart()
    {
        try {
            start();
        } catch (const std::runtime_error& e) {
            return e.what();
        }
        return "started";
    }

    /// A reader whose stream has begun.
    RawClient openStream() const
    {
        RawClient reader = connect();
        reader.send(get("/v1/stream"));
        EXPECT_THAT(reader.until("data: {}\n\n"), EndsWith("event: hello\nid: 7\ndata: {}\n\n"));
        return reader;
    }

    /// Asks again and again: what has ended is noticed a little later.
    void askUntil(const std::string& target, const std::string& expected) const
    {
        const auto latest = ClockT::now() + std::chrono::seconds(20);
        std::string head;
        while (head.find(expected) == std::string::npos) {
            ASSERT_LT(ClockT::now(), latest) << head;
            RawClient client = connect();
            client.send(get(target));
            head = client.until("\r\n\r\n");
        }
    }

    mode_t modeOfSocket() const
    {
        struct stat status {};
        EXPECT_EQ(0, stat(settings.socket.c_str(), &status));
        return status.st_mode;
    }
};

// --- waiting

TEST(PatientServerSocketTest, waitsForSomebodyHoweverLittleTimeIsGiven)
{
    PatientServerSocket socket(Poco::Net::ServerSocket(Poco::Net::SocketAddress("127.0.0.1", 0)));
    auto waiting = std::async(std::launch::async, [&] { return socket.poll(1, Poco::Net::Socket::SELECT_READ); });
    EXPECT_EQ(std::future_status::timeout, waiting.wait_for(std::chrono::milliseconds(100)));

    const Poco::Net::StreamSocket client(socket.address());

    EXPECT_TRUE(waiting.get());
    EXPECT_EQ(client.address(), socket.acceptConnection().peerAddress());
}

TEST(PatientServerSocketTest, waitsNoMoreWhenItIsTold)
{
    PatientServerSocket socket(Poco::Net::ServerSocket(Poco::Net::SocketAddress("127.0.0.1", 0)));
    auto waiting = std::async(std::launch::async, [&] { return socket.poll(1, Poco::Net::Socket::SELECT_READ); });

    socket.tellStop();

    EXPECT_FALSE(waiting.get());
    const Poco::Net::StreamSocket client(socket.address());
    EXPECT_FALSE(socket.poll(1, Poco::Net::Socket::SELECT_READ));
}

// --- bounds

TEST_F(HttpListenerTest, tooManyConnectionsAreRefused)
{
    settings.connectionBound = 2;
    start();
    RawClient first = connect();
    RawClient second = connect();
    EXPECT_THAT(first.ask(get("/v1/echo")), StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(second.ask(get("/v1/echo")), StartsWith("HTTP/1.1 200 "));

    EXPECT_EQ("HTTP/1.1 503 Service Unavailable\r\nContent-Type: application/json\r\nConnection: close\r\n"
              "Content-Length: 60\r\n\r\n" +
                  error("too many connections; try again later"),
              connect().rest());
    EXPECT_EQ(2U, listener->getCounters().accepted);
    EXPECT_EQ(1U, listener->getCounters().refused);

    EXPECT_THAT(first.ask(get("/v1/echo")), StartsWith("HTTP/1.1 200 "));
    second.close();
    askUntil("/v1/echo", " 200 ");
}

TEST_F(HttpListenerTest, tooManyStreamsAreRefused)
{
    settings.streamBound = 1;
    start();
    RawClient reader = openStream();
    RawClient second = connect();

    EXPECT_EQ("503 " + error("too many streams; try again later"), statusAndBody(second.ask(get("/v1/stream"))));
    EXPECT_THAT(second.ask(get("/v1/echo")), StartsWith("HTTP/1.1 200 "));
    EXPECT_EQ(1U, listener->getCounters().streams);
    EXPECT_EQ(1U, listener->getCounters().refusedStreams);

    reader.close();
    askUntil("/v1/stream", " 200 ");
}

// --- its end

TEST_F(HttpListenerTest, itsEndEndsStreamsAndIdleConnectionsSoon)
{
    bool soon = false;
    for (int attempt = 0; !soon && attempt < attempts; ++attempt) {
        start();
        RawClient reader = openStream();
        RawClient idle = connect();
        idle.ask(get("/v1/echo"));
        RawClient halfway = connect();
        halfway.send("GET /v1/ec");

        soon = stopsSoon();

        EXPECT_THAT(reader.rest(), EndsWith("0\r\n\r\n"));
        EXPECT_EQ("", idle.rest());
        EXPECT_NE(0, access(settings.socket.c_str(), F_OK));
    }
    EXPECT_TRUE(soon);
}

TEST_F(HttpListenerTest, aRequestThatRunsIsAnsweredBeforeTheEnd)
{
    std::promise<void> begun;
    std::promise<void> goOn;
    routes.add("GET", "/v1/wait", Permission::read, [&](const HttpRequest&, const std::string&) {
        begun.set_value();
        goOn.get_future().wait();
        return answer("[]");
    });
    start();
    RawClient client = connect();
    client.send(get("/v1/wait"));
    begun.get_future().wait();

    std::future<void> stopped = std::async(std::launch::async, [this] { listener->stop(); });
    while (access(settings.socket.c_str(), F_OK) == 0) {
        std::this_thread::yield();  // until the end has begun
    }
    goOn.set_value();
    stopped.wait();

    EXPECT_EQ("200 []", statusAndBody(client.rest()));
}

TEST_F(HttpListenerTest, itsEndMayComeTwiceOrBeforeItsStart)
{
    HttpListener(settings, routes, log.sink()).stop();
    start();
    listener->stop();
    listener->stop();
}

// --- the socket's file

TEST_F(HttpListenerTest, theSocketHasItsMode)
{
    settings.socketMode = 0606;
    settings.socketGroup = getegid();
    start();

    EXPECT_TRUE(S_ISSOCK(modeOfSocket()));
    EXPECT_EQ(0606U, modeOfSocket() & 07777U);
}

TEST_F(HttpListenerTest, aLeftoverSocketIsReplaced)
{
    {
        const Poco::Net::ServerSocket left(
            Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, settings.socket));
    }
    ASSERT_EQ(0, access(settings.socket.c_str(), F_OK));

    start();

    EXPECT_EQ("200 {\"body\":\"\"}", ask(get("/v1/echo")));
}

TEST_F(HttpListenerTest, anotherListenerIsLeftAlone)
{
    start();
    HttpListener second(settings, routes, log.sink());

    try {
        second.start();
        FAIL() << "started";
    } catch (const std::runtime_error& e) {
        EXPECT_EQ("cannot listen on " + settings.socket + ": another node answers on it", e.what());
    }

    second.stop();
    EXPECT_EQ("200 {\"body\":\"\"}", ask(get("/v1/echo")));
}

TEST_F(HttpListenerTest, aFileThatIsNoSocketIsLeftAlone)
{
    directory.write("s", "precious");

    EXPECT_EQ("cannot listen on " + settings.socket + ": is there already and is no socket", failureOfStart());

    listener.reset();
    EXPECT_EQ("precious", directory.read("s"));
}

TEST_F(HttpListenerTest, aFolderThatIsNotThereIsTold)
{
    settings.socket = directory.path("none/s");

    EXPECT_THAT(failureOfStart(), StartsWith("cannot listen on " + settings.socket + ": "));
}

}  // namespace ZorvNode

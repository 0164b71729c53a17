#include <Poco/Net/Context.h>
#include <Poco/Net/SecureStreamSocket.h>
#include <Poco/Net/ServerSocket.h>
#include <sys/stat.h>

#include "ListenerFixture.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

using Poco::Net::Context;

class TlsListenerTest : public ListenerFixture {
protected:
    TlsListenerTest()
    {
        const std::string command = "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 1 "
                                    "-subj /CN=test -keyout " +
                                    directory.path("key.pem") + " -out " + directory.path("certificate.pem") + " 2> " +
                                    directory.path("openssl.log");
        EXPECT_EQ(0, std::system(command.c_str())) << directory.read("openssl.log");
        writeTokens("read reader-0123456789\npublish publisher-0123456789\nmanage manager-0123456789\n");
        settings.tls = TlsSettings{"127.0.0.1", freePort(), directory.path("certificate.pem"),
                                   directory.path("key.pem"), directory.path("tokens")};
    }

    void writeTokens(const std::string& content) const
    {
        EXPECT_EQ(0, chmod(directory.write("tokens", content).c_str(), 0600));
    }

    static std::uint16_t freePort()
    {
        const Poco::Net::ServerSocket any(Poco::Net::SocketAddress("127.0.0.1", 0));
        return any.address().port();
    }

    RawClient connectWithTls() const
    {
        Context::Params params;
        params.verificationMode = Context::VERIFY_NONE;
        const Context::Ptr context(new Context(Context::TLS_CLIENT_USE, params));
        return RawClient(Poco::Net::SecureStreamSocket(address(), context));
    }

    Poco::Net::SocketAddress address() const { return {settings.tls->address, settings.tls->port}; }

    std::string askWithTls(const std::string& method, const std::string& path, const std::string& token) const
    {
        return connectWithTls().ask(method + " " + path + " HTTP/1.1\r\n" +
                                    (token.empty() ? "" : "Authorization: Bearer " + token + "\r\n") + "\r\n");
    }

    std::string failureOfStart()
    {
        try {
            start();
        } catch (const std::runtime_error& e) {
            return e.what();
        }
        return "started";
    }
};

TEST_F(TlsListenerTest, aTokenIsNeeded)
{
    start();

    EXPECT_EQ("HTTP/1.1 401 Unauthorized\r\nConnection: Keep-Alive\r\nWWW-Authenticate: Bearer\r\n"
              "Content-Type: application/json\r\nContent-Length: 53\r\n\r\n" +
                  error("a known bearer token is needed"),
              askWithTls("GET", "/v1/echo", ""));
    EXPECT_THAT(askWithTls("GET", "/v1/echo", "reader-0123456788"), StartsWith("HTTP/1.1 401 "));
    EXPECT_THAT(log.lines(), ElementsAre("5 listening with TLS on 127.0.0.1:" + std::to_string(settings.tls->port)));
}

TEST_F(TlsListenerTest, theTokensPermissionDecides)
{
    start();

    EXPECT_THAT(askWithTls("GET", "/v1/echo", "reader-0123456789"), StartsWith("HTTP/1.1 200 "));
    EXPECT_EQ("403 " + error("this caller may not publish"),
              statusAndBody(askWithTls("POST", "/v1/echo", "reader-0123456789")));
    EXPECT_THAT(askWithTls("POST", "/v1/echo", "publisher-0123456789"), StartsWith("HTTP/1.1 200 "));
    EXPECT_EQ("403 " + error("this caller may not manage the node"),
              statusAndBody(askWithTls("PUT", "/v1/items/1", "publisher-0123456789")));
    EXPECT_THAT(askWithTls("PUT", "/v1/items/1", "manager-0123456789"), StartsWith("HTTP/1.1 200 "));
}

TEST_F(TlsListenerTest, requestsThatAreSentAtOnceAreAnsweredInTheirOrder)
{
    settings.headerBound = 65536;
    start();
    RawClient client = connectWithTls();
    const std::string tail =
        " HTTP/1.1\r\nAuthorization: Bearer reader-0123456789\r\nA: " + std::string(3000, 'x') + "\r\n\r\n";

    client.send("GET /v1/echo?n=1" + tail + "GET /v1/echo?n=2" + tail + "GET /v1/echo?n=3" + tail);

    for (const char* number : {"1", "2", "3"}) {
        EXPECT_EQ(std::string("{\"n\":\"") + number + "\",\"body\":\"\"}", bodyOf(client.answer()));
    }
}

TEST_F(TlsListenerTest, theSocketNeedsNoToken)
{
    start();

    EXPECT_EQ("200 \"1\"", ask("PUT /v1/items/1 HTTP/1.1\r\n\r\n"));
}

TEST_F(TlsListenerTest, whoeverNeverFinishesTheHandshakeIsCutOff)
{
    settings.requestTime = std::chrono::seconds(1);
    start();
    RawClient client{Poco::Net::StreamSocket(address())};

    client.send("\x16\x03\x01");

    client.rest();
    EXPECT_THAT(askWithTls("GET", "/v1/echo", "reader-0123456789"), StartsWith("HTTP/1.1 200 "));
}

TEST_F(TlsListenerTest, itsEndEndsStreamsAndIdleConnectionsSoon)
{
    const std::string tail = " HTTP/1.1\r\nAuthorization: Bearer reader-0123456789\r\n\r\n";
    bool soon = false;
    for (int attempt = 0; !soon && attempt < attempts; ++attempt) {
        start();
        RawClient idle = connectWithTls();
        idle.ask("GET /v1/echo" + tail);
        RawClient reader = connectWithTls();
        reader.send("GET /v1/stream" + tail);
        EXPECT_THAT(reader.until("data: {}\n\n"), HasSubstr("event: hello"));

        soon = stopsSoon();
    }
    EXPECT_TRUE(soon);
}

TEST_F(TlsListenerTest, whatIsWrongEndsTheStartAndLeavesNothingBehind)
{
    const std::string where = "cannot listen on 127.0.0.1:" + std::to_string(settings.tls->port) + ": ";
    writeTokens("");
    EXPECT_EQ(where + settings.tls->tokens + ": no token in the file", failureOfStart());
    EXPECT_NE(0, access(settings.socket.c_str(), F_OK));

    writeTokens("read reader-0123456789");
    settings.tls->certificate = directory.path("none.pem");
    EXPECT_THAT(failureOfStart(), StartsWith(where));
    EXPECT_NE(0, access(settings.socket.c_str(), F_OK));
}

}  // namespace ZorvNode

/// Answers in all forms in which they may come.
#include "HttpPost.hpp"
#include "NodeScript.hpp"

#include <gtest/gtest.h>

namespace ZorvClientTest {

using ZorvClient::ConnectionLost;
using ZorvClient::HttpAnswer;
using ZorvClient::Socket;

struct HttpReaderTest : ::testing::Test {
    HttpReaderTest() { node.start(); }

    HttpAnswer read(const std::string& bytes)
    {
        node.next(raw(bytes));
        socket.close();
        socket.connect(node.path());
        return ZorvClient::post(socket, "/", "c/1", "[]", std::chrono::steady_clock::now() + std::chrono::seconds(10));
    }

    NodeScript node;
    Socket socket;
};

TEST_F(HttpReaderTest, bodyOfKnownLength)
{
    const HttpAnswer answer = read("HTTP/1.1 422 Not One\r\nContent-Length: 5\r\n\r\nhello");
    EXPECT_EQ(answer.status, 422);
    EXPECT_EQ(answer.statusText, "Not One");
    EXPECT_EQ(answer.body, "hello");
    EXPECT_FALSE(answer.isLast);
}

TEST_F(HttpReaderTest, bodyUntilTheEndOfTheConnection)
{
    const HttpAnswer answer = read("HTTP/1.1 200 OK\r\n\r\nhello");
    EXPECT_EQ(answer.body, "hello");
    EXPECT_TRUE(answer.isLast);
}

TEST_F(HttpReaderTest, bodyInChunks)
{
    const HttpAnswer answer =
        read("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nhel\r\n2;x=y\r\nlo\r\n0\r\nA: b\r\n\r\n");
    EXPECT_EQ(answer.body, "hello");
    EXPECT_FALSE(answer.isLast);
}

TEST_F(HttpReaderTest, answerWithoutABody)
{
    const HttpAnswer answer = read("HTTP/1.1 204 None\r\n\r\n");
    EXPECT_EQ(answer.body, "");
    EXPECT_FALSE(answer.isLast);
}

TEST_F(HttpReaderTest, interimAnswersAreSkipped)
{
    EXPECT_EQ(read("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n").status, 200);
}

TEST_F(HttpReaderTest, namesOfFieldsGoByAnyCase)
{
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\ncontent-LENGTH:  2 \r\n\r\nok").body, "ok");
}

TEST_F(HttpReaderTest, statusTextMayBeMissing)
{
    EXPECT_EQ(read("HTTP/1.1 200\r\nContent-Length: 0\r\n\r\n").statusText, "");
}

TEST_F(HttpReaderTest, connectionFieldTellsTheLastAnswer)
{
    EXPECT_TRUE(read("HTTP/1.1 200 OK\r\nConnection: Close\r\nContent-Length: 0\r\n\r\n").isLast);
    EXPECT_TRUE(read("HTTP/1.0 200 OK\r\nContent-Length: 0\r\n\r\n").isLast);
    EXPECT_FALSE(read("HTTP/1.0 200 OK\r\nConnection: Keep-Alive\r\nContent-Length: 0\r\n\r\n").isLast);
}

TEST_F(HttpReaderTest, moreThanWasAskedForEndsTheConnection)
{
    EXPECT_TRUE(read("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok?").isLast);
}

TEST_F(HttpReaderTest, whatIsNoAnswerIsALostConnection)
{
    const std::string longLine(70000, 'x');
    for (const std::string& bytes : {
             std::string(),
             std::string("SSH-2.0-server\r\n\r\n"),
             std::string("HTTP/1.1 2xx OK\r\n\r\n"),
             std::string("HTTP/1.1 099 Low\r\n\r\n"),
             std::string("HTTP/1.2 200 OK\r\nContent-Length: 0\r\n\r\n"),
             std::string("HTTP/1.1 20"),
             std::string("HTTP/1.1 2000 High\r\n\r\n"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhell"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nhello"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nhello"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length: 5000000\r\n\r\nhello"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length: 2\r\nContent-Length: 2\r\n\r\nok"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length: 2\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n"),
             std::string("HTTP/1.1 200 OK\r\nno colon\r\n\r\n"),
             std::string("HTTP/1.1 200 OK\r\nContent-Length : 2\r\n\r\nok"),
             std::string("HTTP/1.1 200 OK\r\n: 2\r\n\r\nok"),
             std::string("HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip\r\n\r\n"),
             std::string("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nhello\r\n0\r\n\r\n"),
             std::string("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nhel\r\n"),
             "HTTP/1.1 200 OK\r\nA: " + longLine + "\r\n\r\n",
         }) {
        EXPECT_THROW(read(bytes), ConnectionLost) << bytes.substr(0, 80);
    }
}

TEST_F(HttpReaderTest, noAnswerInTimeIsALostConnection)
{
    node.next(hang());
    socket.connect(node.path());
    EXPECT_THROW(
        ZorvClient::post(socket, "/", "c/1", "[]", std::chrono::steady_clock::now() + std::chrono::milliseconds(5)),
        ConnectionLost);
}

TEST_F(HttpReaderTest, interruptEndsTheWait)
{
    node.next(hang());
    socket.connect(node.path());
    std::thread other([this] {
        node.awaitRequests(1);
        socket.interrupt();
    });
    EXPECT_THROW(ZorvClient::post(socket, "/", "c/1", "[]", std::chrono::steady_clock::now() + std::chrono::hours(1)),
                 ConnectionLost);
    other.join();
    socket.close();
    EXPECT_THROW(socket.connect(node.path()), ConnectionLost);
}

TEST_F(HttpReaderTest, anAbsentNodeIsALostConnection)
{
    node.stop();
    EXPECT_THROW(socket.connect(node.path()), ConnectionLost);
    EXPECT_THROW(socket.connect(node.path() + ".not"), ConnectionLost);
    EXPECT_THROW(socket.connect(std::string(200, 'x')), ConnectionLost);
    EXPECT_FALSE(socket.isOpen());
}

}  // namespace ZorvClientTest

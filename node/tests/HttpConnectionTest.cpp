#include "ListenerFixture.hpp"

#include <Poco/Exception.h>

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class HttpConnectionTest : public ListenerFixture {
protected:
    HttpConnectionTest()
    {
        settings.bodyBound = 1024;
        settings.headerBound = 3000;  // less than what is received at once
    }
};

// --- answers

TEST_F(HttpConnectionTest, aRequestIsAnsweredWithJson)
{
    start();

    EXPECT_EQ(
        "HTTP/1.1 200 OK\r\nConnection: Keep-Alive\r\nContent-Type: application/json\r\nContent-Length: 32\r\n\r\n"
        "{\"a\":\"1\",\"b\":\"x y\\\"z\",\"body\":\"\"}",
        connect().ask(get("/v1/echo?a=1&b=x%20y%22z")));
}

TEST_F(HttpConnectionTest, anErrorIsAnsweredWithItsReason)
{
    start();

    EXPECT_EQ("404 " + error("no such path: /v2/x y"), ask(get("/v2/x%20y")));
    EXPECT_EQ("HTTP/1.1 405 Method Not Allowed\r\nConnection: Keep-Alive\r\nAllow: GET, POST\r\n"
              "Content-Type: application/json\r\nContent-Length: 67\r\n\r\n" +
                  error("BREW is not for /v1/echo; it takes GET, POST"),
              connect().ask("BREW /v1/echo HTTP/1.1\r\n\r\n"));
    EXPECT_EQ(2U, listener->getCounters().refusedRequests);
}

TEST_F(HttpConnectionTest, headIsRefusedWithoutABody)
{
    start();
    RawClient client = connect();
    client.send("HEAD /v1/echo HTTP/1.1\r\n\r\n");

    EXPECT_THAT(client.until("\r\n\r\n"), HasSubstr("HTTP/1.1 405 Method Not Allowed\r\n"));
    EXPECT_EQ("200 {\"body\":\"\"}", statusAndBody(client.ask(get("/v1/echo"))));
}

TEST_F(HttpConnectionTest, aConnectionStaysForTheNextRequest)
{
    start();
    RawClient client = connect();

    EXPECT_EQ("200 {\"n\":\"1\",\"body\":\"\"}", statusAndBody(client.ask(get("/v1/echo?n=1"))));
    EXPECT_EQ("404 " + error("no such path: /"), statusAndBody(client.ask(get("/"))));
    EXPECT_EQ("200 {\"body\":\"[]\"}", statusAndBody(client.ask(post("[]"))));
    EXPECT_EQ(1U, listener->getCounters().accepted);
    EXPECT_EQ(3U, listener->getCounters().requests);
}

TEST_F(HttpConnectionTest, requestsThatAreSentAtOnceAreAnsweredInTheirOrder)
{
    start();
    RawClient client = connect();

    client.send(get("/v1/echo?n=1") + post("[2]") + post("3\r\n[3]\r\n0\r\n\r\n", "Transfer-Encoding: chunked\r\n") +
                get("/v1/echo?n=4"));

    EXPECT_EQ("{\"n\":\"1\",\"body\":\"\"}", bodyOf(client.answer()));
    EXPECT_EQ("{\"body\":\"[2]\"}", bodyOf(client.answer()));
    EXPECT_EQ("{\"body\":\"[3]\"}", bodyOf(client.answer()));
    EXPECT_EQ("{\"n\":\"4\",\"body\":\"\"}", bodyOf(client.answer()));
}

TEST_F(HttpConnectionTest, aClientMayAskForTheEnd)
{
    start();
    RawClient client = connect();

    client.send("GET /v1/echo HTTP/1.1\r\nConnection: close\r\n\r\n");

    EXPECT_EQ("HTTP/1.1 200 OK\r\nConnection: Close\r\nContent-Type: application/json\r\nContent-Length: 11\r\n\r\n"
              "{\"body\":\"\"}",
              client.rest());
}

TEST_F(HttpConnectionTest, theOldVersionIsAnsweredAndEnded)
{
    start();
    RawClient client = connect();
    client.send("GET /v1/echo HTTP/1.0\r\n\r\n");
    EXPECT_EQ("{\"body\":\"\"}", bodyOf(client.rest()));

    RawClient reader = connect();
    reader.send("GET /v1/stream HTTP/1.0\r\n\r\n");
    EXPECT_THAT(reader.until("{}\n\n"), ::testing::EndsWith("\r\n\r\n:\n\nevent: hello\nid: 7\ndata: {}\n\n"));
}

TEST_F(HttpConnectionTest, nobodyIsToldAnythingWhoAskedNothing)
{
    start();
    RawClient client = connect();

    client.endSending();

    EXPECT_EQ("", client.rest());
    EXPECT_EQ(0U, listener->getCounters().refusedRequests);
}

// --- bodies

TEST_F(HttpConnectionTest, aBodyInChunksIsPutTogether)
{
    start();

    EXPECT_EQ("200 {\"body\":\"[1, 2]\"}", ask(post("4;name=value\r\n[1, \r\n002\r\n2]\r\n0\r\nA-Field: x\r\n\r\n",
                                                    "Transfer-Encoding: Chunked\r\n")));
    EXPECT_EQ("200 {\"body\":\"\"}", ask(post("0\r\n\r\n", "Transfer-Encoding: chunked\r\n")));
}

TEST_F(HttpConnectionTest, aClientThatExpectsItIsToldToGoOn)
{
    start();
    RawClient client = connect();

    EXPECT_EQ("HTTP/1.1 100 Continue\r\n\r\n", client.ask(post("", "Expect: 100-continue\r\nContent-Length: 2\r\n")));
    EXPECT_EQ("200 {\"body\":\"[]\"}", statusAndBody(client.ask("[]")));
}

TEST_F(HttpConnectionTest, aClientThatExpectsItIsToldNotToGoOn)
{
    start();

    EXPECT_EQ("413 " + error("the body is larger than 1024 bytes"),
              ask(post("", "Expect: 100-continue\r\nContent-Length: 1025\r\n")));
}

TEST_F(HttpConnectionTest, anyMethodMayHaveABody)
{
    start();

    EXPECT_EQ("200 {\"body\":\"[]\"}",
              ask("GET /v1/echo HTTP/1.1\r\nContent-Type: application/json\r\nContent-Length: 2\r\n\r\n[]"));
}

TEST_F(HttpConnectionTest, aBodyIsAsLargeAsTheBoundAtMost)
{
    start();
    const std::string most(1024, '7');
    const std::string chunk = "200\r\n" + std::string(512, '7') + "\r\n";
    const std::string chunked = "Transfer-Encoding: chunked\r\n";

    EXPECT_EQ("200 {\"body\":\"" + most + "\"}", ask(post(most)));
    EXPECT_EQ("200 {\"body\":\"" + most + "\"}", ask(post(chunk + chunk + "0\r\n\r\n", chunked)));
    EXPECT_EQ("413 " + error("the body is larger than 1024 bytes"), ask(post(most + "7")));
    EXPECT_EQ("413 " + error("the body is larger than 1024 bytes"), ask(post(chunk + chunk + "1\r\n", chunked)));
    EXPECT_EQ("413 " + error("the body is larger than 1024 bytes"), ask(post("ffffffff\r\n", chunked)));
}

TEST_F(HttpConnectionTest, chunksMustNotBeSmallerThanTheirHeads)
{
    start();
    std::string chunks;
    for (int chunk = 0; chunk < 1000; ++chunk) {
        chunks += "1;name=value\r\n7\r\n";
    }

    EXPECT_EQ("413 " + error("the body is larger than 1024 bytes"),
              ask(post(chunks + "0\r\n\r\n", "Transfer-Encoding: chunked\r\n")));
}

TEST_F(HttpConnectionTest, aBodyHasToBeJson)
{
    start();
    const std::string head = "POST /v1/echo HTTP/1.1\r\nContent-Length: 2\r\n";

    EXPECT_EQ("415 " + error("the body is not application/json"), ask(head + "\r\n[]"));
    EXPECT_EQ("415 " + error("the body is not application/json"), ask(head + "Content-Type: text/plain\r\n\r\n[]"));
    EXPECT_EQ("415 " + error("the body is not application/json"),
              ask(head + "Content-Type: application/jsonl\r\n\r\n[]"));
    EXPECT_EQ("200 {\"body\":\"[]\"}", ask(head + "Content-Type: Application/JSON ; charset=utf-8\r\n\r\n[]"));
}

TEST_F(HttpConnectionTest, aBodyThatEndsTooEarlyIsRefused)
{
    start();
    for (const std::string& request :
         {post("[1", "Content-Length: 3\r\n"), post("3\r\n[1", "Transfer-Encoding: chunked\r\n"),
          post("2\r\n[]\r\n", "Transfer-Encoding: chunked\r\n")}) {
        RawClient client = connect();
        client.send(request);
        client.endSending();
        EXPECT_EQ("400 " + error("the body ends too early"), statusAndBody(client.rest()));
    }
}

// --- what is no HTTP, or can be understood in two ways

TEST_F(HttpConnectionTest, aRequestLineThatIsNoneIsRefused)
{
    start();

    for (const char* version : {"HTTP/2.0", "HTTP/0.9", "FTP/1.1", "x"}) {
        EXPECT_EQ("400 " + error("neither HTTP/1.0 nor HTTP/1.1"),
                  ask(std::string("GET /v1/echo ") + version + "\r\n\r\n"));
    }
    EXPECT_THAT(ask(std::string(100, 'G') + " / HTTP/1.1\r\n\r\n"), HasSubstr("not HTTP: "));
}

TEST_F(HttpConnectionTest, aHeaderThatEndsTooEarlyIsRefused)
{
    start();
    for (const char* request : {"GET /v1/echo HTTP/1.1\r\n", "POST /v1/echo HTTP/1.1\r\nHost: no",
                                "GET /v1/echo HTTP/1.1\r\nHost: node\r\n"}) {
        RawClient client = connect();
        client.send(request);
        client.endSending();
        EXPECT_EQ("400 " + error("not HTTP: the header ends too early"), statusAndBody(client.rest())) << request;
    }
}

TEST_F(HttpConnectionTest, aConnectionEndsWithARequestThatIsNone)
{
    start();
    RawClient client = connect();

    client.send("GET / x\r\n\r\n" + get("/v1/echo"));

    EXPECT_EQ("400 " + error("neither HTTP/1.0 nor HTTP/1.1"), statusAndBody(client.rest()));
}

TEST_F(HttpConnectionTest, aTargetThatCannotBeDecodedIsRefused)
{
    start();

    EXPECT_EQ("400 " + error("not a request target: /v1/%zz"), ask(get("/v1/%zz")));
    EXPECT_EQ("400 " + error("not a request target: /v1/echo?a=%4"), ask(get("/v1/echo?a=%4")));
}

TEST_F(HttpConnectionTest, aLengthThatIsNotOneNumberIsRefused)
{
    start();
    for (const std::string length : {"-1", "+2", "2x", "1,000", "0x2", "", "9999999999999999999",
                                     "2\r\nContent-Length: 2", "2\r\ncontent-length: 3"}) {
        RawClient client = connect();
        client.send(post("[]", "Content-Length: " + length + "\r\n") + get("/v1/echo"));
        const std::string answer = client.rest();
        EXPECT_EQ("400 ", answer.substr(9, 4)) << length << ": " << answer;
        EXPECT_EQ(std::string::npos, answer.find("\"body\"")) << length << ": " << answer;
    }
}

TEST_F(HttpConnectionTest, aBodyWithTwoEndsOrAnotherEncodingIsRefused)
{
    start();
    for (const char* fields : {"Transfer-Encoding: chunked\r\nContent-Length: 2\r\n", "Transfer-Encoding: gzip\r\n",
                               "Transfer-Encoding: gzip, chunked\r\n"}) {
        EXPECT_EQ("400 " + error("a Transfer-Encoding other than chunked alone"), ask(post("0\r\n\r\n", fields)));
    }
}

TEST_F(HttpConnectionTest, chunksThatAreNoneAreRefused)
{
    start();
    for (const char* chunks : {"zz\r\n", "\r\n", "-1\r\n", "123456789\r\n"}) {
        EXPECT_EQ("400 " + error("a chunk of the body has no size"),
                  ask(post(chunks, "Transfer-Encoding: chunked\r\n")));
    }
    EXPECT_EQ("400 " + error("a chunk of the body is longer than its size"),
              ask(post("2\r\n[]]\r\n0\r\n\r\n", "Transfer-Encoding: chunked\r\n")));
}

TEST_F(HttpConnectionTest, aHeaderIsAsLargeAsTheBoundAtMost)
{
    start();
    const std::string head = "GET /v1/echo HTTP/1.1\r\nA: ";
    const std::string tail = "\r\n\r\n";
    const std::size_t most = settings.headerBound - head.size() - tail.size();

    EXPECT_EQ("200 {\"body\":\"\"}", ask(head + std::string(most, 'x') + tail));
    EXPECT_EQ("HTTP/1.1 431 Request Header Fields Too Large\r\nContent-Type: application/json\r\nConnection: close\r\n"
              "Content-Length: 73\r\n\r\n" +
                  error("the request's header is larger than the node takes"),
              connect().ask(head + std::string(most + 1, 'x') + tail));
}

TEST_F(HttpConnectionTest, aTargetOrFieldThatIsTooLongIsRefused)
{
    settings.headerBound = 65536;
    start();

    EXPECT_THAT(ask(get("/" + std::string(20000, 'x'))), ::testing::StartsWith("431 "));
    EXPECT_THAT(ask("GET / HTTP/1.1\r\nA: " + std::string(20000, 'x') + "\r\n\r\n"), ::testing::StartsWith("431 "));
}

// --- slow and wrong

TEST_F(HttpConnectionTest, aSlowHeaderAndASlowBodyAreRefused)
{
    settings.requestTime = std::chrono::seconds(1);
    start();
    RawClient slowHeader = connect();
    RawClient slowBody = connect();
    slowHeader.send("GET /v1/ec");
    slowBody.send(post("[1", "Content-Length: 3\r\n"));

    EXPECT_EQ("408 " + error("the request did not arrive in time"), statusAndBody(slowHeader.rest()));
    EXPECT_EQ("408 " + error("the request did not arrive in time"), statusAndBody(slowBody.rest()));
    EXPECT_EQ(2U, listener->getCounters().refusedRequests);
}

TEST_F(HttpConnectionTest, aHandlerThatThrowsIsAnsweredAndLogged)
{
    routes.add("GET", "/v1/throw", Permission::read,
               [](const HttpRequest&, const std::string&) -> HttpResponse { throw std::runtime_error("too bad"); });
    routes.add("GET", "/v1/poco", Permission::read,
               [](const HttpRequest&, const std::string&) -> HttpResponse { throw Poco::IOException("broken pipe"); });
    start();
    RawClient client = connect();

    EXPECT_EQ("500 " + error("too bad"), statusAndBody(client.ask(get("/v1/throw"))));
    EXPECT_EQ("500 " + error("I/O error: broken pipe"), statusAndBody(client.ask(get("/v1/poco"))));
    EXPECT_EQ("200 {\"body\":\"\"}", statusAndBody(client.ask(get("/v1/echo"))));
    EXPECT_THAT(log.lines(), ElementsAre("3 The request GET /v1/throw failed: too bad",
                                         "3 The request GET /v1/poco failed: I/O error: broken pipe"));
}

TEST_F(HttpConnectionTest, aStreamThatThrowsEnds)
{
    routes.add("GET", "/v1/throw", Permission::read, [](const HttpRequest&, const std::string&) {
        HttpResponse response;
        response.stream = [](EventSink& sink) {
            sink.send("one", "", "1");
            throw std::runtime_error("too bad");
        };
        return response;
    });
    start();
    RawClient client = connect();
    client.send(get("/v1/throw"));

    EXPECT_THAT(client.rest(), HasSubstr("event: one\ndata: 1\n\n"));
    EXPECT_THAT(log.lines(), ElementsAre("3 The stream /v1/throw failed: too bad"));
    EXPECT_EQ("200 {\"body\":\"\"}", ask(get("/v1/echo")));
}

TEST_F(HttpConnectionTest, aStreamWhoseReaderHasStoppedIsEndedAndCounted)
{
    settings.requestTime = std::chrono::seconds(1);
    std::promise<void> cutOff;
    routes.add("GET", "/v1/flood", Permission::read, [&](const HttpRequest&, const std::string&) {
        HttpResponse response;
        response.stream = [&](EventSink& sink) {
            while (sink.send("drop", "", std::string(10000, 'x'))) {}
            cutOff.set_value();
        };
        return response;
    });
    start();
    RawClient client = connect();
    client.send(get("/v1/flood"));

    cutOff.get_future().wait();
    listener->stop();

    EXPECT_EQ(1U, listener->getCounters().stalledStreams);
}

TEST_F(HttpConnectionTest, aStreamWhoseReaderHasLeftIsNoStalledOne)
{
    start();
    RawClient client = connect();
    client.send(get("/v1/stream"));
    client.until("hello");

    client.close();
    listener->stop();

    EXPECT_EQ(0U, listener->getCounters().stalledStreams);
}

TEST_F(HttpConnectionTest, theCallersOwnUserMayDoEverything)
{
    start();

    EXPECT_EQ("200 \"a b\"", ask("PUT /v1/items/a%20b HTTP/1.1\r\n\r\n"));
}

}  // namespace ZorvNode

#include "HostileRequests.hpp"

#include <vector>

namespace ZorvTest {

namespace {

using RandomT = std::mt19937;

/// A raise that would stand in the list of alarms if any part of it was taken.
const std::string raise = R"({"raise":{"dn":"ManagedElement=1,Hostile=1","majorType":32473,"minorType":101,)"
                          R"("severity":"MAJOR","text":"hostile","info":[["name","value"]],"eventTime":1}})";

std::size_t below(RandomT& random, std::size_t bound)
{
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

std::string request(const std::string& line, const std::string& fields, const std::string& body)
{
    return line + " HTTP/1.1\r\nHost: node\r\n" + fields + "\r\n" + body;
}

std::string post(const std::string& target, const std::string& body)
{
    return request("POST " + target,
                   "Content-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) + "\r\n", body);
}

std::string publish(const std::string& body)
{
    return post("/v1/notifications", body);
}

std::string chunked(const std::string& chunks)
{
    return request("POST /v1/notifications", "Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n",
                   chunks);
}

/// A piece that hardly any reader likes.
std::string unkind(RandomT& random)
{
    static const std::vector<std::string> pieces = {"%s%n%s%n",
                                                    std::string(1, '\0'),
                                                    "\xff\xfe",
                                                    "\xc0\xaf",
                                                    "\xed\xa0\x80",
                                                    "\r\n\r\n",
                                                    "99999999999999",
                                                    "-1",
                                                    "1e999",
                                                    "\\u0000",
                                                    "\\ud800",
                                                    "../../etc/passwd",
                                                    "{{{{",
                                                    "]]]]",
                                                    "\"",
                                                    "';--",
                                                    "${HOME}",
                                                    "\x1b[31m",
                                                    "%00",
                                                    std::string(300, '('),
                                                    std::string(9, 'A'),
                                                    "\xf4\x90\x80\x80"};
    return pieces[below(random, pieces.size())];
}

std::string truncated(const std::string& text, RandomT& random)
{
    return text.substr(0, below(random, text.size()));
}

std::string withFlippedBits(std::string text, RandomT& random)
{
    for (std::size_t flips = 1 + below(random, 4); flips > 0; --flips) {
        char& byte = text[below(random, text.size())];
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << below(random, 8)));
    }
    return text;
}

std::string withPiece(std::string text, RandomT& random)
{
    const std::size_t place = below(random, text.size());
    return text.replace(place, below(random, 12), unkind(random));
}

/// The body is never a notification: what is not JSON is refused as a whole.
std::string brokenBody(RandomT& random)
{
    const std::string broken = truncated(raise, random);
    return publish(below(random, 2) == 0 ? broken : withPiece(broken + "[", random) + "[");
}

std::string brokenField(RandomT& random)
{
    const std::vector<std::string> values = {"null", "-1",   "1e999", "99999999999999999999", "4294967296",
                                             "1.5",  "true", "[]",    "{\"a\":[[[[]]]]}"};
    const std::string& value = values[below(random, values.size())];
    const std::string field = below(random, 2) == 0 ? "majorType" : "minorType";
    return publish(R"([{"raise":{"dn":"ManagedElement=1,Hostile=2","severity":"MAJOR","majorType":1,"minorType":1,")" +
                   field + "\":" + value + "}}]");
}

std::string brokenText(RandomT& random)
{
    const std::vector<std::string> texts = {"\xff", "\xc0\xaf", "\xed\xa0\x80", "\\ud800", std::string(1, '\0'),
                                            "\n",   "\\x",      "\xe2\x82"};
    return publish(R"({"raise":{"severity":"MAJOR","majorType":32473,"minorType":101,"dn":"ManagedElement=1,Hostile=)" +
                   texts[below(random, texts.size())] + "\"}}");
}

std::string deepJson(RandomT& random)
{
    const std::size_t depth = 100 + below(random, 20000);
    const bool isObject = below(random, 2) == 0;
    std::string deep;
    for (std::size_t level = 0; level < depth; ++level) {
        deep += isObject ? "{\"a\":" : "[";
    }
    return publish(deep + "1" + std::string(depth, isObject ? '}' : ']'));
}

std::string manyFields(RandomT& random)
{
    std::string fields;
    for (std::size_t number = 200 + below(random, 2000); number > 0; --number) {
        fields += "X-" + std::to_string(number) + ": " + std::string(below(random, 10), 'x') + "\r\n";
    }
    return request("GET /v1/nothing", fields, "");
}

/// Without its end even a good request is none.
std::string cutHeader(RandomT& random)
{
    const std::string line = "GET /v1/health HTTP/1.1\r\n";
    const std::string fields = "Host: node\r\nAccept: application/json\r\n";
    return line + fields.substr(0, below(random, fields.size() + 1));
}

std::string hugeHeader(RandomT& random)
{
    const std::string filling(hostileHeaderBound + below(random, hostileHeaderBound), 'h');
    switch (below(random, 3)) {
    case 0:
        return request("GET /" + filling, "", "");
    case 1:
        return request("GET /v1/nothing", filling + ": x\r\n", "");
    default:
        return request("GET /v1/nothing", "Last-Event-ID: " + filling + "\r\n", "");
    }
}

std::string hugeBody(RandomT& random)
{
    const std::size_t size = hostileBodyBound + 1 + below(random, hostileBodyBound);
    return publish(below(random, 2) == 0 ? std::string(size, ' ') : "\"" + std::string(size, 'b'));
}

std::string wrongLength(RandomT& random)
{
    const std::vector<std::string> lengths = {"-1", "99999999999999999999", "1e3", "0x10", "", "5, 5", "%n",
                                              "+7", "18446744073709551615"};
    return request(
        "POST /v1/notifications",
        "Content-Type: application/json\r\nContent-Length: " + lengths[below(random, lengths.size())] + "\r\n", raise);
}

/// Each would be the whole raise if its sizes were believed.
std::string wrongChunks(RandomT& random)
{
    const std::vector<std::string> sizes = {"-1", "fffffffff", "7fffffff", "g", "", "0x10", "1 1", "%x", "5"};
    return chunked(sizes[below(random, sizes.size())] + "\r\n" + raise + "\r\n0\r\n\r\n");
}

std::string wrongTarget(RandomT& random)
{
    const std::vector<std::string> targets = {"/v1/alarms?limit=",
                                              "/v1/alarms?after=x",
                                              "/v1/alarms?dnPrefix=&x=",
                                              "/v1/notifications?after=",
                                              "/v1/objects?depth=",
                                              "/v1/alarms/x",
                                              "/v1/logs/x",
                                              "/v1/components/x/start?",
                                              "/v1/objects?dn=x"};
    std::string target = targets[below(random, targets.size())];
    for (const char character : unkind(random)) {
        const bool isPlain = character > ' ' && character < 127;
        target += isPlain && below(random, 8) != 0 ? std::string(1, character) : "%zz";
    }
    return request("GET " + target + "%zz", "", "");
}

std::string wrongMethod(RandomT& random)
{
    const std::vector<std::string> methods = {"BREW",    "get",          "CONNECT",   "TRACE",
                                              "OPTIONS", "\x16\x03\x01", "POST POST", std::string(400, 'M')};
    return request(methods[below(random, methods.size())] + " /v1/alarms", "", "");
}

std::string wrongChange(RandomT& random)
{
    const std::vector<std::string> bodies = {
        R"({"changes":[{"set":{"dn":"ManagedElement=1","attributes":{"externalId":)" + std::string(60, '[') + "]",
        R"({"changes":[{"delete":{"dn":"%s%n"}}]})",
        R"({"changes":[{"create":{"dn":"ManagedElement=1,SystemFunctions=)" + std::string(5000, '9') + "=\"}}]}",
        R"({"changes":{"a":1}})",
        R"({"changes":[1,2,3]})",
        R"({"changes":[{"set":{"dn":"ManagedElement=1","attributes":{"externalId":{"a":1}}}}]})"};
    return post("/v1/objects", bodies[below(random, bodies.size())]);
}

/// Bytes at random behind one that begins no request.
std::string noise(RandomT& random)
{
    std::string bytes = "\x01";
    for (std::size_t size = 1 + below(random, 600); size > 0; --size) {
        bytes += static_cast<char>(below(random, 256));
    }
    return bytes + "\r\n\r\n";
}

/// A whole request that does no harm where a mutation hits what does not matter.
std::string anyMutation(RandomT& random)
{
    const std::vector<std::string> requests = {
        request("GET /v1/nothing", "Connection: close\r\n", ""), post("/v1/nothing", raise),
        post("/v1/components/Nobody/stop", "{}"),
        request("PUT /v1/levels", "Content-Type: text/plain\r\nContent-Length: 2\r\n", "{}")};
    const std::string& text = requests[below(random, requests.size())];
    switch (below(random, 3)) {
    case 0:
        return truncated(text, random);
    case 1:
        return withFlippedBits(text, random);
    default:
        return withPiece(text, random);
    }
}

using MakerT = std::string (*)(RandomT&);

constexpr MakerT makers[] = {brokenBody,  brokenField, brokenText,  deepJson,    manyFields,
                             cutHeader,   hugeHeader,  hugeBody,    wrongLength, wrongChunks,
                             wrongTarget, wrongMethod, wrongChange, noise,       anyMutation};

}  // namespace

std::string hostileRequest(std::size_t number, std::mt19937& random)
{
    return makers[number % std::size(makers)](random);
}

}  // namespace ZorvTest

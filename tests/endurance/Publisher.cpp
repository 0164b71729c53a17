#include "Publisher.hpp"

#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/NullStream.h>
#include <Poco/StreamCopier.h>

#include <thread>
#include <utility>

namespace ZorvTest {

namespace {

constexpr int ports = 40;  // "Port=1" is part of "Port=10": a clear that is taken twice would be seen
constexpr int largestBatch = 10;
constexpr std::chrono::milliseconds pause(20);

/// False when the node takes nothing for the moment.
bool post(const std::string& socket, const std::string& name, const std::string& body)
{
    Poco::Net::HTTPClientSession session(
        Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket)));
    Poco::Net::HTTPRequest request("POST", "/v1/notifications", Poco::Net::HTTPMessage::HTTP_1_1);
    request.setContentType("application/json");
    request.set("Publication-ID", name);
    request.setContentLength(static_cast<std::streamsize>(body.size()));
    session.sendRequest(request) << body;
    Poco::Net::HTTPResponse response;
    Poco::NullOutputStream nowhere;
    Poco::StreamCopier::copyStream(session.receiveResponse(response), nowhere);
    return response.getStatus() == Poco::Net::HTTPResponse::HTTP_OK;
}

}  // namespace

Publisher::Publisher(std::string socketPath, int publisherNumber, int alarmType, std::uint64_t seed)
    : socket(std::move(socketPath)),
      number(publisherNumber),
      minorType(alarmType),
      random(static_cast<unsigned>(seed) + static_cast<unsigned>(publisherNumber))
{
}

void Publisher::run()
{
    try {
        for (;;) {
            finish();
            makeBatch();
        }
    } catch (const Poco::Exception&) {
        return;
    }
}

void Publisher::finish()
{
    if (pending.empty()) {
        return;
    }
    const std::string json = batchJson();
    const std::string name = "publisher-" + std::to_string(number) + "/" + std::to_string(time);
    while (!post(socket, name, json)) {
        std::this_thread::sleep_for(pause);
    }
    answered += pending.size();
    pending.clear();
}

void Publisher::makeBatch()
{
    const int size = 1 + static_cast<int>(random() % largestBatch);
    for (int index = 0; index < size; ++index) {
        const std::string dn =
            "ManagedElement=1,Slot=" + std::to_string(number) + ",Port=" + std::to_string(random() % ports);
        bool& isActive = active[dn];
        isActive = !isActive;
        pending.push_back({dn, isActive, ++time * 10 + static_cast<std::uint64_t>(number)});
    }
}

std::string Publisher::batchJson() const
{
    std::string json;
    for (const Operation& operation : pending) {
        json += (json.empty() ? "[" : ",") +
                std::string(operation.isRaise ? R"({"raise":{"severity":"MINOR",)" : R"({"clear":{)") + R"("dn":")" +
                operation.dn + R"(","majorType":32473,"minorType":)" + std::to_string(minorType) + R"(,"eventTime":)" +
                std::to_string(operation.time) + "}}";
    }
    return json + "]";
}

std::vector<std::string> Publisher::activeDns() const
{
    std::vector<std::string> dns;
    for (const auto& [dn, isActive] : active) {
        if (isActive) {
            dns.push_back(dn);
        }
    }
    return dns;
}

}  // namespace ZorvTest

#include "StormPublisher.hpp"

#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/StreamCopier.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <utility>

namespace ZorvTest {

namespace {

constexpr int batchSize = 100;
constexpr int lastingAlarms = 500;  // no name is part of another one
constexpr int togglingAlarms = 8;
constexpr int firstLasting = 1000;
constexpr int firstToggling = 2000;
constexpr int lastingType = 101;
constexpr int togglingType = 103;
constexpr int unknownType = 99999;
constexpr std::uint64_t firstTime = 1700000000000000000;
constexpr std::chrono::milliseconds pause(20);
const std::string accepted = R"({"accepted":)" + std::to_string(batchSize) + R"(,"rejected":[]})";

}  // namespace

StormPublisher::StormPublisher(std::string socketPath, int publisherNumber, std::uint64_t seed)
    : socket(std::move(socketPath)),
      number(publisherNumber),
      random(seed + static_cast<std::uint64_t>(publisherNumber))
{
}

void StormPublisher::run(std::uint64_t notifications)
{
    Poco::Net::HTTPClientSession session(
        Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket)));
    session.setKeepAlive(true);
    while (acknowledged < notifications) {
        const std::string batch = makeBatch();
        Answer answer = Answer::busy;
        while ((answer = send(session, batch)) == Answer::busy) {
            ++refusals;
            std::this_thread::sleep_for(pause);
        }
        if (answer == Answer::wrong) {
            return;
        }
        acknowledged += batchSize;
    }
}

StormPublisher::Answer StormPublisher::send(Poco::Net::HTTPClientSession& session, const std::string& batch)
{
    Poco::Net::HTTPRequest request("POST", "/v1/notifications", Poco::Net::HTTPMessage::HTTP_1_1);
    request.setContentType("application/json");
    request.setContentLength(static_cast<std::streamsize>(batch.size()));
    session.sendRequest(request) << batch;
    Poco::Net::HTTPResponse response;
    std::string answer;
    Poco::StreamCopier::copyToString(session.receiveResponse(response), answer);
    if (response.getStatus() == Poco::Net::HTTPResponse::HTTP_SERVICE_UNAVAILABLE) {
        return Answer::busy;
    }
    EXPECT_EQ(accepted, answer);
    return answer == accepted ? Answer::accepted : Answer::wrong;
}

std::string StormPublisher::makeBatch()
{
    std::string batch = "[";
    for (int item = 0; item < batchSize; ++item) {
        batch += (item == 0 ? "" : ",") + makeNotification();
    }
    return batch + "]";
}

std::string StormPublisher::makeNotification()
{
    const std::string parent = "ManagedElement=1,Slot=" + std::to_string(number);
    const std::uint64_t kind = random() % 10;
    if (kind < 2) {
        return notification("raise", parent, unknownType);
    }
    if (kind < 6) {
        return change(parent + ",Port=" + std::to_string(firstToggling + static_cast<int>(random() % togglingAlarms)),
                      true);
    }
    return change(parent + ",Port=" + std::to_string(firstLasting + static_cast<int>(random() % lastingAlarms)), false);
}

/// A toggling alarm is raised and cleared in turn; a lasting one is changed a few times before it is cleared.
std::string StormPublisher::change(const std::string& dn, bool isToggling)
{
    bool& isActive = active[dn];
    isActive = !isActive || (!isToggling && random() % 4 != 0);
    return notification(isActive ? "raise" : "clear", dn, isToggling ? togglingType : lastingType);
}

std::string StormPublisher::notification(const char* action, const std::string& dn, int minorType)
{
    ++time;
    std::string json = "{\"" + std::string(action) + R"(":{"dn":")" + dn + R"(","majorType":32473,"minorType":)" +
                       std::to_string(minorType) + R"(,"eventTime":)" + std::to_string(firstTime + time);
    if (action == std::string("raise")) {
        json += R"(,"severity":"MAJOR","text":"no light )" + std::to_string(time) + '"';
    }
    return json + "}}";
}

void StormPublisher::addActiveTo(std::set<std::string>& dns) const
{
    for (const auto& [dn, isActive] : active) {
        if (isActive) {
            dns.insert(dn);
        }
    }
}

}  // namespace ZorvTest

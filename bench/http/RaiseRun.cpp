#include "RaiseRun.hpp"

#include <algorithm>
#include <stdexcept>
#include <thread>

namespace ZorvBench {

namespace {

constexpr int serviceUnavailable = 503;
constexpr std::chrono::milliseconds untilAskedAgain(1);
constexpr std::chrono::milliseconds untilCountedAgain(5);
constexpr std::chrono::minutes longestHandling(2);

std::vector<std::string> prepare(const AlarmServer& server, int alarms, int batch)
{
    std::vector<std::string> requests;
    for (int first = 0; first < alarms; first += batch) {
        requests.push_back(batch == 1 ? server.raiseOne(first)
                                      : server.raiseMany(first, std::min(batch, alarms - first)));
    }
    return requests;
}

}  // namespace

RaiseRun::RaiseRun(const AlarmServer& theServer, const Address& address, int theAlarms, int batch)
    : server(theServer),
      connection(address),
      alarms(theAlarms),
      requests(prepare(theServer, theAlarms, batch))
{
    latencies.reserve(requests.size());
}

void RaiseRun::perform()
{
    const bool counts = !server.countActive().empty();
    const int activeBefore = counts ? countActive() : 0;
    const auto begun = ClockT::now();
    sendAll();
    const SecondsT acknowledged = ClockT::now() - begun;
    say("raises", alarms / acknowledged.count(), "/s");
    sayLatencies("request", latencies);
    say("busy", busy, "answers");
    if (counts) {
        awaitActive(activeBefore + alarms);
        say("active", alarms / SecondsT(ClockT::now() - begun).count(), "/s");
    }
}

void RaiseRun::sendAll()
{
    for (const std::string& request : requests) {
        const auto begun = ClockT::now();
        sendOne(request);
        latencies.emplace_back(ClockT::now() - begun);
    }
}

void RaiseRun::sendOne(const std::string& request)
{
    int status = connection.exchange(request);
    while (status == serviceUnavailable) {
        ++busy;
        std::this_thread::sleep_for(untilAskedAgain);
        status = connection.exchange(request);
    }
    if (status != 200) {
        throw std::runtime_error("status " + std::to_string(status) + ": " + connection.body());
    }
}

void RaiseRun::awaitActive(int number)
{
    const auto latest = ClockT::now() + longestHandling;
    for (int active = countActive(); active < number; active = countActive()) {
        if (ClockT::now() > latest) {
            throw std::runtime_error(std::to_string(active) + " alarms are active instead of " +
                                     std::to_string(number));
        }
        std::this_thread::sleep_for(untilCountedAgain);
    }
}

int RaiseRun::countActive()
{
    connection.exchange(server.countActive());
    return server.activeIn(connection.body());
}

}  // namespace ZorvBench

#include "Load.hpp"

#include <algorithm>
#include <stdexcept>
#include <thread>

namespace ZorvBench {

namespace {

constexpr std::uint64_t versions = 2;
constexpr std::uint64_t window = 5000;  // on their way at a time
constexpr std::uint64_t batch = 100;
constexpr std::chrono::microseconds pause(200);
constexpr std::chrono::seconds patience(60);

}  // namespace

Load::Load(LoadedNode& loadedNode)
    : producer(loadedNode->router),
      consumers{NorthboundConsumer(loadedNode->router), NorthboundConsumer(loadedNode->router)}
{
}

void Load::prepare(const std::string& kind, std::uint64_t number)
{
    Sent sent;
    sent.minorType = kind == "alert" ? 901 : kind == "unknown" ? 9999 : 101;
    for (std::uint64_t i = 0; i < number; ++i) {
        sent.number = prepared++;
        producer.prepare(sent);
    }
}

double Load::send(std::uint64_t number, const std::function<void()>& between)
{
    const auto begun = ClockT::now();
    const std::uint64_t before = expected;
    const std::uint64_t each = versions * std::size(consumers);
    for (std::uint64_t i = 0; i < number; ++i) {
        while (i % batch == 0 && i > window && getDelivered() < before + (i - window) * each) {
            std::this_thread::sleep_for(pause);
        }
        producer.send();
        if (between && i % batch == 0) {
            between();
        }
    }
    awaitDelivered(number);
    return SecondsT(ClockT::now() - begun).count();
}

double Load::sendAtOnce(std::uint64_t number, std::uint64_t reports)
{
    const auto begun = ClockT::now();
    for (std::uint64_t i = 0; i < number; ++i) {
        producer.send();
    }
    awaitDelivered(reports);
    return SecondsT(ClockT::now() - begun).count();
}

std::vector<SecondsT> Load::raisePaced(std::uint64_t number, double rate)
{
    std::vector<ClockT::time_point> arrived(number);
    std::vector<ClockT::time_point> sent(number);
    const std::uint64_t first = prepared;
    prepare("alarm", number);
    consumers[0].noteArrivals(&arrived);
    const auto begun = ClockT::now();
    for (std::uint64_t i = 0; i < number; ++i) {
        std::this_thread::sleep_until(
            begun + std::chrono::duration_cast<ClockT::duration>(SecondsT(static_cast<double>(i) / rate)));
        sent[i] = ClockT::now();
        producer.send();
    }
    awaitDelivered(number);
    consumers[0].noteArrivals(nullptr);
    std::vector<SecondsT> latencies;
    for (std::uint64_t i = 0; i < number; ++i) {
        latencies.emplace_back(arrived[(RaisingProducer::firstTime + first + i) % number] - sent[i]);
    }
    return latencies;
}

/// Waits until both consumers have so many notifications more, of both versions.
void Load::awaitDelivered(std::uint64_t number)
{
    expected += number * versions * std::size(consumers);
    const auto latest = ClockT::now() + patience;
    while (getDelivered() < expected) {
        if (ClockT::now() > latest) {
            throw std::runtime_error("notifications do not arrive");
        }
        std::this_thread::sleep_for(pause);
    }
}

std::uint64_t Load::getDelivered() const
{
    return consumers[0].getNumber() + consumers[1].getNumber();
}

}  // namespace ZorvBench

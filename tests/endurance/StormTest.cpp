/// A storm: applications publish as fast as the node takes it, more than it can handle at once. Nothing acknowledged is
/// lost, no clear is dropped, heartbeats come, memory stays within what the configuration allows, and a reader that was
/// cut short knows.
///
/// The size of the storm is settable: ZORV_TEST_STORM=1000000, its course too: ZORV_TEST_SEED.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <list>

#include "FromEnvironment.hpp"
#include "RunningNode.hpp"
#include "StormPublisher.hpp"
#include "StreamReader.hpp"
#include "json/Json.hpp"

namespace ZorvTest {

namespace {

using ::testing::IsEmpty;
using NamesT = std::set<std::string>;

constexpr int publishers = 4;
constexpr std::uint64_t inboxBound = STORM_INBOX;
constexpr std::uint64_t streamHistory = 1000;
constexpr std::uint64_t alarms = 2100;   // at most, of all publishers
constexpr double heartbeatInterval = 1;  // s
constexpr double workerRound = 1;        // s; it looks at the clock that often
constexpr std::chrono::seconds patience(60);
constexpr std::chrono::milliseconds pause(20);

/// What a notification takes in kB where it stays for a while: in the inbox, on its way and in the worker's batch; on its
/// way northbound; in a history; in the list of active alarms.
constexpr std::uint64_t perAccepted = 2;
constexpr std::uint64_t perEvent = 2;
constexpr std::uint64_t perKept = 2;
constexpr std::uint64_t perAlarm = 3;
constexpr std::uint64_t perConnection = 500;

constexpr std::uint64_t mostMemory = inboxBound * perAccepted + inboxBound * perEvent + 2 * streamHistory * perKept +
                                     alarms * perAlarm + 10 * perConnection;

NamesT difference(const NamesT& all, const NamesT& without)
{
    NamesT rest;
    std::set_difference(all.begin(), all.end(), without.begin(), without.end(), std::inserter(rest, rest.end()));
    return rest;
}

}  // namespace

class StormTest : public ::testing::Test {
protected:
    StormTest()
    {
        files.writeConfiguration(FM_LIBRARY,
                                 "<api><streamHistory>" + std::to_string(streamHistory) +
                                     "</streamHistory><requestSeconds>3600</requestSeconds></api>\n"
                                     "<log><level>warning</level></log>\n<eventRouter><queueBound>" +
                                     std::to_string(inboxBound) + "</queueBound><inboxBound>" +
                                     std::to_string(inboxBound) + "</inboxBound></eventRouter>\n",
                                 "<alarmToggleTriggerCount>3</alarmToggleTriggerCount>"
                                 "<alarmToggleWindowSize>2</alarmToggleWindowSize>"
                                 "<alarmToggleSilentTimeout>1</alarmToggleSilentTimeout>");
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
        node = std::make_unique<RunningNode>(files);
        node->request("POST", "/v1/objects",
                      R"({"changes":[{"set":{"dn":"ManagedElement=1,SystemFunctions=1,Fm=1",)"
                      R"("attributes":{"heartbeatInterval":1}}}]})");
        for (int number = 1; number <= publishers; ++number) {
            all.emplace_back(files.socket(), number, seed);
        }
    }

    void publishAll()
    {
        std::vector<std::thread> threads;
        for (StormPublisher& publisher : all) {
            threads.emplace_back([this, &publisher] { publisher.run(storm / publishers); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    ZorvInput::JsonDocumentT read(const std::string& target) const
    {
        ZorvInput::JsonDocumentT answer;
        ZorvInput::parseJson(node->request("GET", target), 16, answer);
        return answer;
    }

    std::uint64_t counter(const char* name) const { return read("/v1/counters")[name].GetUint64(); }

    NamesT readAlarms() const
    {
        NamesT names;
        const ZorvInput::JsonDocumentT answer = read("/v1/alarms?limit=10000");
        for (const auto& alarm : answer["alarms"].GetArray()) {
            EXPECT_TRUE(names.insert(alarm["source"].GetString()).second) << alarm["source"].GetString();
        }
        return names;
    }

    NamesT expectedAlarms() const
    {
        NamesT names;
        for (const StormPublisher& publisher : all) {
            publisher.addActiveTo(names);
        }
        return names;
    }

    /// Alarms that toggled stay a second longer.
    NamesT awaitAlarms(const NamesT& expected) const
    {
        const auto latest = std::chrono::steady_clock::now() + patience;
        NamesT present = readAlarms();
        while (present != expected && std::chrono::steady_clock::now() < latest) {
            std::this_thread::sleep_for(pause);
            present = readAlarms();
        }
        return present;
    }

    std::uint64_t acknowledged() const
    {
        std::uint64_t sum = 0;
        for (const StormPublisher& publisher : all) {
            sum += publisher.getNumberAcknowledged();
        }
        return sum;
    }

    std::uint64_t refusals() const
    {
        std::uint64_t sum = 0;
        for (const StormPublisher& publisher : all) {
            sum += publisher.getNumberOfRefusals();
        }
        return sum;
    }

    /// Resident memory in kB, the most there ever was.
    std::uint64_t peakMemory() const
    {
        std::ifstream status("/proc/" + std::to_string(read("/v1/node")["processId"].GetInt64()) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.compare(0, 6, "VmHWM:") == 0) {
                return std::stoull(line.substr(6));
            }
        }
        return 0;
    }

    const std::uint64_t seed = fromEnvironment("ZORV_TEST_SEED", 1);
    const std::uint64_t storm = fromEnvironment("ZORV_TEST_STORM", STORM);
    NodeFiles files;
    std::unique_ptr<RunningNode> node;
    std::list<StormPublisher> all;
};

TEST_F(StormTest, nothingIsLostAndWhoeverIsCutShortKnows)
{
    StreamReader fast(files.socket(), {});
    StreamReader slow(files.socket(), {std::nullopt, true, true});
    const std::uint64_t memoryBefore = peakMemory();
    const auto begun = std::chrono::steady_clock::now();

    publishAll();

    const NamesT expected = expectedAlarms();
    const NamesT present = awaitAlarms(expected);
    const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - begun;
    const std::uint64_t memory = peakMemory();
    EXPECT_THAT(difference(expected, present), IsEmpty()) << "lost";
    EXPECT_THAT(difference(present, expected), IsEmpty()) << "a clear was dropped";
    EXPECT_EQ(acknowledged(), counter("notificationsPublished"));
    EXPECT_EQ(refusals(), counter("notificationsRefusedBusy"));
    EXPECT_LT(memory, memoryBefore + mostMemory + KEPT_MEMORY);
    EXPECT_EQ("resync", slow.finish().lastEvent);
    EXPECT_EQ(0, slow.finish().unexplained);
    EXPECT_EQ(1, counter("streamsCutOff"));
    node->settle();
    const std::uint64_t lost = counter("eventsLost");
    node->stop();

    const StreamFigures& figures = fast.finish();
    EXPECT_EQ(0, figures.unexplained);
    EXPECT_EQ(lost > 0, figures.resyncs > 0);
    EXPECT_LT(figures.longestSilence.count(), heartbeatInterval + workerRound + HEARTBEAT_DELAY);
    std::cout << "ZORV_TEST_SEED=" << seed << " notifications=" << acknowledged() << " seconds=" << duration.count()
              << " refusals=" << refusals() << " peakMegabytes=" << memory / 1024 << " before=" << memoryBefore / 1024
              << " longestHeartbeatGap=" << figures.longestSilence.count() << " heartbeats=" << figures.heartbeats
              << " alarms=" << figures.alarms << " missed=" << figures.missed << " resyncs=" << figures.resyncs
              << " eventsLost=" << lost << std::endl;
}

}  // namespace ZorvTest

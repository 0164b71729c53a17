/// Many clients at the same time, each with connections of its own: applications that raise alarms, operators that read
/// them, gateways that follow them, and one that never reads what it asked for.

#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <gmock/gmock.h>
#include <signal.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

#include "AlarmFollower.hpp"
#include "RunningNode.hpp"
#include "json/Json.hpp"

namespace ZorvTest {

namespace {

constexpr int publishers = MANY_CLIENTS / 2;
constexpr int readers = MANY_CLIENTS / 4;
constexpr int followers = MANY_CLIENTS - publishers - readers;
constexpr int batches = 10;     // of each publisher
constexpr int batchSize = 4;    // raises; the last one of each batch is cleared again
constexpr int answersRead = 5;  // of each reader
constexpr int firstNumber = 1000;
constexpr std::size_t notifications = std::size_t(publishers) * batches * (batchSize + 1);
constexpr std::chrono::seconds longest(30);
constexpr std::chrono::milliseconds pause(10);

using NamesT = std::set<std::string>;

std::string nameOf(int publisher, int batch, int item)
{
    return "ManagedElement=1,Slot=" + std::to_string(firstNumber + publisher) +
           ",Port=" + std::to_string(firstNumber + batch * batchSize + item);
}

std::string notification(const std::string& action, const std::string& dn)
{
    return "{\"" + action + R"(":{"dn":")" + dn + R"(","majorType":32473,"minorType":101,"eventTime":1)" +
           (action == "raise" ? R"(,"severity":"MAJOR"}})" : "}}");
}

std::string batchOf(int publisher, int batch)
{
    std::string json;
    for (int item = 0; item < batchSize; ++item) {
        json += (json.empty() ? "[" : ",") + notification("raise", nameOf(publisher, batch, item));
    }
    return json + "," + notification("clear", nameOf(publisher, batch, batchSize - 1)) + "]";
}

NamesT expectedAlarms()
{
    NamesT names;
    for (int publisher = 0; publisher < publishers; ++publisher) {
        for (int batch = 0; batch < batches; ++batch) {
            for (int item = 0; item < batchSize - 1; ++item) {
                names.insert(nameOf(publisher, batch, item));
            }
        }
    }
    return names;
}

/// Asks for a stream and never reads it.
class DeafReader {
public:
    explicit DeafReader(const std::string& socket)
        : session(Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket)))
    {
        Poco::Net::HTTPRequest request("GET", "/v1/notifications?after=oldest", Poco::Net::HTTPMessage::HTTP_1_1);
        session.sendRequest(request).flush();
    }

private:
    Poco::Net::HTTPClientSession session;
};

}  // namespace

class ManyClientsTest : public ::testing::Test {
protected:
    ManyClientsTest()
    {
        files.writeConfiguration(FM_LIBRARY);
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
        node = std::make_unique<RunningNode>(files);
    }

    void publish(int publisher)
    {
        const std::string answer = R"({"accepted":)" + std::to_string(batchSize + 1) + R"(,"rejected":[]})";
        for (int batch = 0; batch < batches; ++batch) {
            acknowledged += node->request("POST", "/v1/notifications", batchOf(publisher, batch)) == answer ? 1 : 0;
        }
    }

    NamesT readAlarms() const
    {
        ZorvInput::JsonDocumentT answer;
        ZorvInput::parseJson(node->request("GET", "/v1/alarms?limit=10000"), 16, answer);
        NamesT names;
        for (const auto& alarm : answer["alarms"].GetArray()) {
            EXPECT_TRUE(names.insert(alarm["source"].GetString()).second) << alarm["source"].GetString();
        }
        EXPECT_EQ(names.size(), answer["total"].GetUint64());
        return names;
    }

    void runPublishersAndReaders()
    {
        std::vector<std::thread> threads;
        for (int number = 0; number < publishers; ++number) {
            threads.emplace_back([this, number] { publish(number); });
        }
        for (int number = 0; number < readers; ++number) {
            threads.emplace_back([this] {
                for (int answer = 0; answer < answersRead; ++answer) {
                    readAlarms();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    /// A stream may still be on its way when all has been published.
    static void awaitAll(const std::vector<std::unique_ptr<AlarmFollower>>& all)
    {
        const auto latest = std::chrono::steady_clock::now() + longest;
        for (const auto& follower : all) {
            while (follower->getNumberSeen() < notifications && std::chrono::steady_clock::now() < latest) {
                std::this_thread::sleep_for(pause);
            }
        }
    }

    /// With everybody connected.
    void stopNode()
    {
        const auto begun = std::chrono::steady_clock::now();
        const ProcessResult end = node->stop();
        const std::chrono::duration<double, std::milli> duration = std::chrono::steady_clock::now() - begun;
        EXPECT_EQ("", end.err);
        EXPECT_EQ(0, end.exitCode);
        RecordProperty("millisecondsToStop", static_cast<int>(duration.count()));
    }

    NodeFiles files;
    std::unique_ptr<RunningNode> node;
    std::atomic<int> acknowledged{0};
};

TEST_F(ManyClientsTest, eachGetsAllThatItIsToGet)
{
    std::vector<std::unique_ptr<AlarmFollower>> all;
    for (int number = 0; number < followers; ++number) {
        all.push_back(std::make_unique<AlarmFollower>(files.socket()));
    }
    const DeafReader deaf(files.socket());

    runPublishersAndReaders();
    node->settle();
    awaitAll(all);

    EXPECT_EQ(publishers * batches, acknowledged);
    EXPECT_EQ(expectedAlarms(), readAlarms());
    stopNode();
    std::vector<std::uint64_t> numbers;
    for (std::uint64_t number = 1; number <= notifications; ++number) {
        numbers.push_back(number);
    }
    for (const auto& follower : all) {
        std::vector<std::uint64_t> seen;
        for (const SeenAlarm& alarm : follower->getAlarms()) {
            seen.push_back(alarm.seqNo);
        }
        EXPECT_EQ(numbers, seen);
    }
}

}  // namespace ZorvTest

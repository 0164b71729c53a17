/// Northbound consumers that hang, throw or leave inside their callback: the others get everything, alarm handling does not
/// wait, and what is lost of a consumer's events is counted.

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <future>
#include <stdexcept>
#include <thread>

#include "TemporaryDirectory.hpp"
#include "ZorvOamApiFmNotification_3.h"
#include "runtime/Node.hpp"

namespace ZorvTest {

namespace {

constexpr std::size_t bound = 100;
constexpr std::size_t rounds = 3;  // the last one is more than a queue that nobody empties has room for
constexpr std::chrono::seconds patience(60);
constexpr std::chrono::milliseconds pause(10);

ZorvNode::NodeConfiguration makeConfiguration(const TemporaryDirectory& directory)
{
    const std::string text = std::to_string(bound);
    directory.write("node.xml", "<ZorvNode><library>" FM_LIBRARY "</library><model>" EXAMPLE
                                "/alarm-model.xml</model><eventRouter><queueBound>" +
                                    text + "</queueBound><inboxBound>" + text +
                                    "</inboxBound></eventRouter><replicatedLists><store>memory</store>"
                                    "</replicatedLists><ZorvFmComponent/></ZorvNode>");
    std::filesystem::create_directories(directory.path("run/log"));
    return ZorvNode::readNodeConfiguration(directory.path("node.xml"));
}

/// Does with each event what the test says, and counts them.
class Consumer : public ZorvNode::RouterConsumer {
public:
    using ActT = std::function<void(unsigned long id)>;

    explicit Consumer(ActT act) : action(std::move(act)) {}

    ZorvReturnT onEvent(unsigned long id, const char*, YaltNameValuePair**, void*) override
    {
        ++events;
        action(id);
        return ZORV_RETURN_OK;
    }

    std::size_t getNumber() const { return events; }

private:
    const ActT action;
    std::atomic<std::size_t> events{0};
};

}  // namespace

class BadConsumerTest : public ::testing::Test {
protected:
    std::shared_ptr<Consumer> add(Consumer::ActT action)
    {
        auto consumer = std::make_shared<Consumer>(std::move(action));
        unsigned long id = 0;
        node.router.registerConsumer(consumer, id);
        node.router.addSubscription(id, ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, nullptr);
        return consumer;
    }

    /// As many as the inbox takes at a time, again and again.
    void publish()
    {
        for (std::size_t round = 0; round < rounds; ++round) {
            std::vector<ZorvInput::FmNotification> batch;
            for (std::size_t number = 0; number < bound; ++number) {
                ZorvInput::FmNotification raise;
                raise.dn = "ManagedElement=1,Port=" + std::to_string(1000 + round * bound + number);
                raise.majorType = 32473;
                raise.minorType = 101;
                raise.severity = 4;
                batch.push_back(raise);
            }
            await([&] { return isTaken(batch); });
        }
    }

    bool isTaken(const std::vector<ZorvInput::FmNotification>& batch)
    {
        try {
            node.source.publish(batch);
            return true;
        } catch (const ZorvNode::SourceBusy&) {
            return false;
        }
    }

    static void await(const std::function<bool()>& condition)
    {
        const auto latest = std::chrono::steady_clock::now() + patience;
        while (!condition() && std::chrono::steady_clock::now() < latest) {
            std::this_thread::sleep_for(pause);
        }
    }

    const TemporaryDirectory directory;
    const ZorvNode::NodeConfiguration configuration = makeConfiguration(directory);
    ZorvNode::Node node{configuration, ZorvNode::readModel(configuration.model)};
};

TEST_F(BadConsumerTest, harmNobodyElse)
{
    std::promise<void> letGo;
    const std::shared_future<void> gate = letGo.get_future().share();
    const auto hanging = add([gate](unsigned long) { gate.wait(); });
    const auto throwing = add([](unsigned long) { throw std::runtime_error("no"); });
    const auto leaving = add([this](unsigned long id) { node.router.unregisterConsumer(id); });
    const auto good = add([](unsigned long) {});
    node.start();

    publish();
    await([&] { return good->getNumber() == rounds * bound && throwing->getNumber() == rounds * bound; });

    EXPECT_EQ(rounds * bound, good->getNumber());
    EXPECT_EQ(rounds * bound, throwing->getNumber());
    EXPECT_EQ(rounds * bound, node.router.getStatistics().threw);
    EXPECT_EQ(1U, leaving->getNumber());
    EXPECT_EQ(1U, hanging->getNumber());
    EXPECT_EQ((rounds - 1) * bound - 1, node.router.getStatistics().lost);
    letGo.set_value();
    node.stop();
}

}  // namespace ZorvTest

#include "scenario/ScenarioPlayer.hpp"

#include <gmock/gmock.h>

#include "RecordingConsumer.hpp"
#include "TemporaryDirectory.hpp"
#include "scenario/ScenarioReader.hpp"
#include "services/managedobjects/CmEventPublisher.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;

namespace {

const char* const model = "<ZorvModel><class name='Node'><attribute name='name' type='string'/>"
                          "<attribute name='size' type='uint8' max='9'/></class><object dn='Node=1'/></ZorvModel>";

}  // namespace

class ScenarioPlayerTest : public ::testing::Test {
protected:
    PlaySummary play(const std::string& lines)
    {
        return player.play(readScenario(directory.write("s.jsonl", lines)), 1000000);
    }

    std::string failureOf(const std::string& lines)
    {
        try {
            play(lines);
        } catch (const PlayError& e) {
            return std::string(e.what()).substr(directory.path("s.jsonl").size());
        }
        return "played";
    }

    ZorvTest::TemporaryDirectory directory;
    EventRouter router{{}, [](std::int32_t, const std::string&) {}};
    InterfacePortal portal;
    MoStore store{readModel(directory.write("m.xml", model))};
    TransactionService transactions{10};
    CmEventPublisher cmEvents{router};
    ManagedObjectService objects{store, transactions, portal, cmEvents};
    ManagementClient management{transactions, objects};
    FmNotificationSource source{router, 0};
    ScenarioPlayer player{router, source, management, store, [this] { return router.getStatistics().accepted.load(); }};
};

TEST_F(ScenarioPlayerTest, notificationsArriveInTheOrderOfTheFileWhateverTheirEventType)
{
    const auto seen = std::make_shared<RecordingConsumer>([](const std::string&, const void* value) {
        const std::string dn = *static_cast<const char* const*>(value);              // every version begins with the DN
        std::this_thread::sleep_for(std::chrono::milliseconds(dn == "a" ? 20 : 0));  // a slow first one
        return dn;
    });
    for (const char* type : {YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
                             YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1}) {
        unsigned long id = 0;
        router.registerConsumer(seen, id);
        router.addSubscription(id, type, nullptr);
    }

    const PlaySummary summary = play(R"({"at":0,"raise":{"dn":"a","majorType":1,"minorType":1,"severity":1}}
{"at":1,"clear":{"dn":"b","majorType":1,"minorType":1},"framework":"zorv"}
{"at":1,"alert":{"dn":"c","majorType":1,"minorType":1,"severity":1},"version":1}
{"at":3600,"raise":{"dn":"d","majorType":1,"minorType":1,"severity":1}})");

    EXPECT_THAT(seen->events(router), ElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(4U, summary.actions);
    EXPECT_EQ(2U, summary.raises);
    EXPECT_EQ(1U, summary.clears);
    EXPECT_EQ(1U, summary.alerts);
    EXPECT_FALSE(summary.interrupted);
}

TEST_F(ScenarioPlayerTest, objectsAreWrittenCreatedAndDeleted)
{
    play(R"({"at":0,"create":{"dn":"Node=2","attributes":{"size":3}}}
{"at":0,"set":{"dn":"Node=1","attributes":{"name":"r7","size":null}}}
{"at":0,"create":{"dn":"Node=3","attributes":{}}}
{"at":0,"delete":{"dn":"Node=3"}})");

    const auto tree = store.snapshot().tree;
    EXPECT_EQ(3U, std::get<std::uint64_t>(tree->find("Node=2")->attributes.at("size").values.front()));
    EXPECT_EQ("r7", std::get<std::string>(tree->find("Node=1")->attributes.at("name").values.front()));
    EXPECT_FALSE(tree->exists("Node=3"));
}

TEST_F(ScenarioPlayerTest, aRefusedWriteEndsThePlayWithItsLine)
{
    EXPECT_EQ(
        ":2: value out of range 0 to 9 for attribute size, \"10\"",
        failureOf(
            "{\"at\":0,\"suppress\":\"on\"}\n{\"at\":0,\"set\":{\"dn\":\"Node=1\",\"attributes\":{\"size\":10}}}"));
    EXPECT_EQ(":1: wrong kind of value for attribute name, \"7\"",
              failureOf(R"({"at":0,"set":{"dn":"Node=1","attributes":{"name":7}}})"));
    EXPECT_EQ(":1: class Node has no attribute, \"colour\"",
              failureOf(R"({"at":0,"set":{"dn":"Node=1","attributes":{"colour":7}}})"));
    EXPECT_EQ(":1: no such object, \"Node=9\"", failureOf(R"({"at":0,"delete":{"dn":"Node=9"}})"));
    EXPECT_EQ(":1: unknown class, \"Slot\"", failureOf(R"({"at":0,"set":{"dn":"Slot=9","attributes":{}}})"));
}

TEST_F(ScenarioPlayerTest, anInterruptedPlayEndsBeforeItsNextAction)
{
    player.interrupt();

    const PlaySummary summary = play(R"({"at":0,"suppress":"on"})");

    EXPECT_EQ(0U, summary.actions);
    EXPECT_TRUE(summary.interrupted);
}

}  // namespace ZorvNode

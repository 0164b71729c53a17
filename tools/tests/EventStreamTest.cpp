#include "EventStream.hpp"

#include <gmock/gmock.h>

#include <chrono>

#include "NodeConnection.hpp"
#include "ScriptedNode.hpp"

namespace ZorvCtl {

using ::testing::ElementsAre;

namespace {

constexpr std::chrono::seconds longEnough(10);
constexpr std::chrono::milliseconds shortly(50);

}  // namespace

class EventStreamTest : public ::testing::Test {
protected:
    std::unique_ptr<EventStream> open(const std::string& text, bool staysOpen)
    {
        node.stream("GET /s", text, staysOpen);
        return connection.follow(Target("/s"), "");
    }

    ZorvTest::ScriptedNode node;
    Interruption interruption;
    NodeConnection connection{node.socket(), interruption};
};

TEST_F(EventStreamTest, eventsArriveWithNameIdAndData)
{
    const auto stream =
        open(":\n\nevent: a\nid: 1.2\ndata: x\n\n\n\ndata:y\r\ndata:  z\r\n\r\nevent\n\nignored: 1\n\n", false);
    std::vector<std::string> seen;

    for (Event event; stream->next(event, longEnough) == EventStream::Next::event; event = {}) {
        seen.push_back(event.name + "|" + event.id + "|" + event.data);
    }

    EXPECT_THAT(seen, ElementsAre("a|1.2|x", "||y\n z"));
}

TEST_F(EventStreamTest, anEventThatWasCutOffIsNone)
{
    const auto stream = open("event: a\ndata: x\n", false);
    Event event;

    EXPECT_EQ(EventStream::Next::ended, stream->next(event, longEnough));
}

TEST_F(EventStreamTest, aStreamThatBringsNothingIsQuiet)
{
    const auto stream = open("", true);
    Event event;

    EXPECT_EQ(EventStream::Next::quiet, stream->next(event, shortly));
}

TEST_F(EventStreamTest, anInterruptionEndsAStream)
{
    const auto stream = open("", true);
    Event event;
    interruption.interrupt();

    EXPECT_EQ(EventStream::Next::ended, stream->next(event, longEnough));
}

TEST_F(EventStreamTest, aStreamThatNobodyReadsCanBeClosed)
{
    std::string many;
    for (int number = 0; number < 3000; ++number) {
        many += "data: " + std::to_string(number) + "\n\n";
    }
    const auto stream = open(many, true);
    Event event;

    EXPECT_EQ(EventStream::Next::event, stream->next(event, longEnough));
    EXPECT_EQ("0", event.data);
}

TEST_F(EventStreamTest, allOfALongStreamArrivesInItsOrder)
{
    std::string many;
    for (int number = 0; number < 3000; ++number) {
        many += "data: " + std::to_string(number) + "\n\n";
    }
    const auto stream = open(many, false);
    Event event;
    int number = 0;

    for (; stream->next(event, longEnough) == EventStream::Next::event; event = {}) {
        ASSERT_EQ(std::to_string(number++), event.data);
    }

    EXPECT_EQ(3000, number);
}

}  // namespace ZorvCtl

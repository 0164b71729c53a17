#include "api/http/EventWriter.hpp"

#include <gmock/gmock.h>

#include <sstream>

namespace ZorvNode {

class EventWriterTest : public ::testing::Test {
protected:
    std::ostringstream out;
    OpenConnections connections{1};
};

TEST_F(EventWriterTest, eventsAreWrittenInTheirForm)
{
    EventWriter writer(out, connections);

    EXPECT_EQ(":\n\n", out.str());
    EXPECT_TRUE(writer.send("alarm", "7.3", "{\"a\":1}"));
    EXPECT_TRUE(writer.send("line", "", "{}"));
    EXPECT_TRUE(writer.sendNothing());
    EXPECT_EQ(":\n\nevent: alarm\nid: 7.3\ndata: {\"a\":1}\n\nevent: line\ndata: {}\n\n:\n\n", out.str());
}

TEST_F(EventWriterTest, itEndsWithItsReader)
{
    EventWriter writer(out, connections);

    out.setstate(std::ios::badbit);

    EXPECT_FALSE(writer.isOpen());
    EXPECT_FALSE(writer.sendNothing());
    EXPECT_FALSE(writer.send("alarm", "", "{}"));
}

TEST_F(EventWriterTest, itEndsWithTheServer)
{
    EventWriter writer(out, connections);
    EXPECT_TRUE(writer.isOpen());

    connections.end(std::chrono::milliseconds(0));

    EXPECT_FALSE(writer.isOpen());
    EXPECT_FALSE(writer.send("alarm", "", "{}"));
}

}  // namespace ZorvNode

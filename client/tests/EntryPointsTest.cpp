/// The functions of the shared library, as an application calls them.
#include "NodeScript.hpp"
#include "zorv_client.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

extern "C" ZorvClientResultT raiseFromC(const char* socketPath, uint64_t* sent);

namespace ZorvClientTest {

using ::testing::ElementsAre;

struct EntryPointsTest : ::testing::Test {
    EntryPointsTest()
    {
        notification.dn = "Equipment=1";
        notification.severity = ZORV_CLIENT_MINOR;
        notification.eventTime = 7;
        const ZorvClientOptionsT options{node.path().c_str(), 0, 0, nullptr, nullptr};
        EXPECT_EQ(zorvClientOpen(&options, &client), ZORV_CLIENT_OK);
    }
    ~EntryPointsTest() override { zorvClientClose(client, 0); }

    NodeScript node;
    ZorvClientT* client = nullptr;
    ZorvClientNotificationT notification{};
};

TEST_F(EntryPointsTest, raiseClearAndAlertReachTheNode)
{
    EXPECT_EQ(zorvClientRaise(client, &notification), ZORV_CLIENT_OK);
    EXPECT_EQ(zorvClientClear(client, &notification), ZORV_CLIENT_OK);
    EXPECT_EQ(zorvClientAlert(client, &notification), ZORV_CLIENT_OK);
    node.start();
    EXPECT_EQ(zorvClientFlush(client, 10000), ZORV_CLIENT_OK);

    std::string all;
    for (const std::string& body : node.bodies()) {
        all += body;
    }
    EXPECT_EQ(all, R"([{"raise":{"dn":"Equipment=1","majorType":0,"minorType":0,"severity":"MINOR","eventTime":7}},)"
                   R"({"clear":{"dn":"Equipment=1","majorType":0,"minorType":0,"eventTime":7}},)"
                   R"({"alert":{"dn":"Equipment=1","majorType":0,"minorType":0,"severity":"MINOR","eventTime":7}}])");
}

TEST_F(EntryPointsTest, worksFromC)
{
    node.start();
    std::uint64_t sent = 0;
    EXPECT_EQ(raiseFromC(node.path().c_str(), &sent), ZORV_CLIENT_OK);

    EXPECT_EQ(sent, 1u);
    EXPECT_THAT(node.bodies(), ElementsAre(R"([{"raise":{"dn":"Equipment=1,Slot=2,Port=4","text":"no light",)"
                                           R"("info":[["interface","eth4"]],"majorType":32473,"minorType":9,)"
                                           R"("severity":"MAJOR","eventTime":5}}])"));
}

TEST_F(EntryPointsTest, nullPointersAreRefused)
{
    ZorvClientCountersT counters{};
    EXPECT_EQ(zorvClientOpen(nullptr, nullptr), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientRaise(nullptr, &notification), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientRaise(client, nullptr), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientClear(nullptr, &notification), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientClear(client, nullptr), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientAlert(nullptr, &notification), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientAlert(client, nullptr), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientFlush(nullptr, 0), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientCounters(nullptr, &counters), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientCounters(client, nullptr), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(zorvClientClose(nullptr, 0), ZORV_CLIENT_OK);
}

TEST_F(EntryPointsTest, aClientThatCannotBeMadeIsNull)
{
    ZorvClientT* other = client;
    const ZorvClientOptionsT options{nullptr, 1, 0, nullptr, nullptr};
    EXPECT_EQ(zorvClientOpen(&options, &other), ZORV_CLIENT_BAD_ARGUMENT);
    EXPECT_EQ(other, nullptr);
}

TEST_F(EntryPointsTest, aRefusedCallIsNeitherQueuedNorCounted)
{
    notification.dn = "\xff";
    EXPECT_EQ(zorvClientRaise(client, &notification), ZORV_CLIENT_BAD_TEXT);

    ZorvClientCountersT counters{1, 1, 1, 1, 1, 1};
    EXPECT_EQ(zorvClientCounters(client, &counters), ZORV_CLIENT_OK);
    EXPECT_EQ(counters.queued + counters.sent + counters.rejected + counters.dropped + counters.droppedClears +
                  counters.resent,
              0u);
}

TEST_F(EntryPointsTest, flushOfAnEmptyQueueNeedsNoNode)
{
    EXPECT_EQ(zorvClientFlush(client, 0), ZORV_CLIENT_OK);
    EXPECT_EQ(zorvClientClose(client, 0), ZORV_CLIENT_OK);
    client = nullptr;
}

TEST_F(EntryPointsTest, eachResultHasItsText)
{
    std::set<std::string> texts;
    for (int result = ZORV_CLIENT_WRONG_THREAD - 1; result <= ZORV_CLIENT_OK; ++result) {
        texts.insert(zorvClientResultText(static_cast<ZorvClientResultT>(result)));
    }
    EXPECT_EQ(texts.size(), 10u);
    EXPECT_EQ(texts.count("unknown result"), 1u);
}

}  // namespace ZorvClientTest

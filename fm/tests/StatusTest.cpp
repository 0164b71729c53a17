#include "Status.hpp"

#include <cstring>
#include <string>

#include "FmTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr const char* listName = "FmStatusSection";

std::string toText(const StatusSection& section)
{
    return std::to_string(section.lastStatefulSeqNo) + " " + std::to_string(section.lastStatelessSeqNo) + " " +
           std::to_string(section.lastStatefulTimestamp) + " " + std::to_string(section.lastStatelessTimestamp) + " " +
           std::to_string(section.lastNotificationCheck);
}

std::string toBytes(std::initializer_list<std::uint64_t> numbers)
{
    std::string bytes;
    for (const std::uint64_t number : numbers) {
        char raw[sizeof number];
        std::memcpy(raw, &number, sizeof number);
        bytes.append(raw, sizeof raw);
    }
    return bytes;
}

class StatusTest : public FmTest {
protected:
    /// The node has run before.
    void plant(std::initializer_list<std::uint64_t> numbers) { middleware.lists.plant(listName, toBytes(numbers), 40); }

    std::string stored() const
    {
        const std::vector<std::string> items = middleware.lists.bytes(listName);
        EXPECT_EQ(1u, items.size());
        return items.empty() ? "" : items.front();
    }

    Status status;
};

TEST_F(StatusTest, beginsWithNothing)
{
    EXPECT_EQ("0 0 0 0 0", toText(status.get()));
    EXPECT_EQ(1u, status.getNextStatefulSeqNo());
    EXPECT_EQ(1u, status.getNextStatelessSeqNo());
    EXPECT_FALSE(status.isColdStart());
}

// --- Starting

TEST_F(StatusTest, onAFreshNodeTheListIsCreatedAndEmpty)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});
    status.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> Try to get interface ZorvMwSpiReplicatedList",
                            "getInterface - ZorvMwSpiReplicatedList 1 -> 0", "trace 8 FM  << ",
                            "listCreate FmStatusSection 40 -> 0", "listIsEmpty FmStatusSection -> 0 true",
                            "log 6 listIsEmpty of list FmStatusSection returned 0",
                            "log 4 FmStatusSection list existed but was empty. Preparing for a cold start."));
    EXPECT_TRUE(status.isColdStart());
    EXPECT_EQ(1u, status.getNextStatefulSeqNo());
}

TEST_F(StatusTest, aListThatCannotTellDoesNotExist)
{
    middleware.lists.failNext("listIsEmpty", -2);
    status.initialize();

    EXPECT_THAT(journal(), ElementsAre("listCreate FmStatusSection 40 -> 0", "listIsEmpty FmStatusSection -> -2",
                                       "log 6 listIsEmpty of list FmStatusSection returned -2",
                                       "log 6 FmStatusSection list did not exist. Preparing for a cold start."));
    EXPECT_TRUE(status.isColdStart());
    EXPECT_EQ("0 0 0 0 0", toText(status.get()));
    EXPECT_EQ(1u, status.getNextStatefulSeqNo());
}

TEST_F(StatusTest, anExistingListIsRead)
{
    plant({3, 2, 1003, 1002, 1005});
    status.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmStatusSection 40 -> -3", "listIsEmpty FmStatusSection -> 0 false",
                            "log 6 listIsEmpty of list FmStatusSection returned 0",
                            "listGetFrontRef FmStatusSection -> 0", "listGetNextItemFront FmStatusSection -> 0",
                            "listGetFinalize FmStatusSection -> 0"));
    EXPECT_FALSE(status.isColdStart());
    EXPECT_EQ("3 2 1003 1002 1005", toText(status.get()));
    EXPECT_EQ(4u, status.getNextStatefulSeqNo());
    EXPECT_EQ(3u, status.getNextStatelessSeqNo());
}

TEST_F(StatusTest, aRestartFindsWhatWasCounted)
{
    status.initialize();
    for (int i = 0; i < 3; ++i) {
        status.updateStateful(1000);
    }
    for (int i = 0; i < 2; ++i) {
        status.updateStateless(2000);
    }
    Status next;
    next.initialize();

    EXPECT_FALSE(next.isColdStart());
    EXPECT_EQ(4u, next.getNextStatefulSeqNo());
    EXPECT_EQ(3u, next.getNextStatelessSeqNo());
    EXPECT_EQ("3 2 1000 2000 2000", toText(next.get()));
}

TEST_F(StatusTest, aColdStartIsOverWithTheNextStart)
{
    status.initialize();
    ASSERT_TRUE(status.isColdStart());
    status.updateNotificationCheck(5);
    status.initialize();

    EXPECT_FALSE(status.isColdStart());
    EXPECT_EQ("0 0 0 0 5", toText(status.get()));
}

TEST_F(StatusTest, theEndsOfTheNumbersAreRead)
{
    const std::uint64_t maximum = UINT64_MAX;
    plant({maximum, maximum, maximum, maximum, maximum});
    status.initialize();

    EXPECT_EQ(toBytes({maximum, maximum, maximum, maximum, maximum}), stored());
    EXPECT_EQ(maximum, status.get().lastNotificationCheck);
}

TEST_F(StatusTest, failuresOfTheCreationAreTold)
{
    middleware.lists.failNext("listCreate", -10);
    status.initialize();
    EXPECT_THAT(journal(), ElementsAre("listCreate FmStatusSection 40 -> -10",
                                       "log 3 Replicated List FmStatusSection reports no resources ( -10 )",
                                       "listIsEmpty FmStatusSection -> -2",
                                       "log 6 listIsEmpty of list FmStatusSection returned -2",
                                       "log 6 FmStatusSection list did not exist. Preparing for a cold start."));

    middleware.lists.failNext("listCreate", -1);
    status.initialize();
    EXPECT_THAT(journal(), ElementsAre("listCreate FmStatusSection 40 -> -1",
                                       "log 3 Failed to create replicated list FmStatusSection :  -1",
                                       "listIsEmpty FmStatusSection -> -2",
                                       "log 6 listIsEmpty of list FmStatusSection returned -2",
                                       "log 6 FmStatusSection list did not exist. Preparing for a cold start."));
}

TEST_F(StatusTest, failuresOfTheReadingAreToldAndLeaveTheRecord)
{
    plant({3, 2, 1003, 1002, 1005});
    middleware.lists.failNext("listGetFrontRef", -1);
    status.initialize();
    EXPECT_THAT(journal(), ElementsAre("listCreate FmStatusSection 40 -> -3", "listIsEmpty FmStatusSection -> 0 false",
                                       "log 6 listIsEmpty of list FmStatusSection returned 0",
                                       "listGetFrontRef FmStatusSection -> -1",
                                       "log 3 Response from replicated listGetFrontRef: -1"));
    EXPECT_FALSE(status.isColdStart());
    EXPECT_EQ("0 0 0 0 0", toText(status.get()));

    middleware.lists.failNext("listGetNextItemFront", -1);
    status.initialize();
    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmStatusSection 40 -> -3", "listIsEmpty FmStatusSection -> 0 false",
                            "log 6 listIsEmpty of list FmStatusSection returned 0",
                            "listGetFrontRef FmStatusSection -> 0", "listGetNextItemFront FmStatusSection -> -1",
                            "log 3 Response from replicated listGetNextItemFront: -1",
                            "listGetFinalize FmStatusSection -> 0"));
    EXPECT_FALSE(status.isColdStart());
    EXPECT_EQ("0 0 0 0 0", toText(status.get()));
}

TEST_F(StatusTest, aFailedFinalizeIsToldAndTheRecordCounts)
{
    plant({3, 2, 1003, 1002, 1005});
    middleware.lists.failNext("listGetFinalize", -1);
    status.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmStatusSection 40 -> -3", "listIsEmpty FmStatusSection -> 0 false",
                            "log 6 listIsEmpty of list FmStatusSection returned 0",
                            "listGetFrontRef FmStatusSection -> 0", "listGetNextItemFront FmStatusSection -> 0",
                            "listGetFinalize FmStatusSection -> -1",
                            "log 3 Response from replicated listGetFinalize: -1"));
    EXPECT_EQ("3 2 1003 1002 1005", toText(status.get()));
}

// --- Recording

class StatusUpdateTest : public StatusTest {
protected:
    StatusUpdateTest()
    {
        plant({10, 20, 30, 40, 50});
        status.initialize();
        journal();
    }

    /// The journal of a save that replaces the item, and of nothing else.
    void expectReplaced()
    {
        EXPECT_THAT(
            journal(),
            ElementsAre("listIsEmpty FmStatusSection -> 0 false", "listGetFrontRef FmStatusSection -> 0",
                        "listGetNextItemFront FmStatusSection -> 0", "listReplaceItem FmStatusSection item1 -> 0",
                        "log 6 Updated status item in FmStatusSection list.", "listGetFinalize FmStatusSection -> 0"));
    }
};

TEST_F(StatusUpdateTest, aStatefulNotificationIsRecorded)
{
    status.updateStateful(7);

    EXPECT_EQ("11 20 7 40 7", toText(status.get()));
    EXPECT_EQ(toBytes({11, 20, 7, 40, 7}), stored());
    expectReplaced();
}

TEST_F(StatusUpdateTest, aStatelessNotificationIsRecorded)
{
    status.updateStateless(7);

    EXPECT_EQ("10 21 30 7 7", toText(status.get()));
    EXPECT_EQ(toBytes({10, 21, 30, 7, 7}), stored());
    expectReplaced();
}

TEST_F(StatusUpdateTest, aNotificationCheckChangesNoNumber)
{
    status.updateNotificationCheck(7);

    EXPECT_EQ("10 20 30 40 7", toText(status.get()));
    EXPECT_EQ(toBytes({10, 20, 30, 40, 7}), stored());
    EXPECT_EQ(11u, status.getNextStatefulSeqNo());
    EXPECT_EQ(21u, status.getNextStatelessSeqNo());
    expectReplaced();
}

TEST_F(StatusUpdateTest, askingForTheNextNumberChangesNothing)
{
    EXPECT_EQ(11u, status.getNextStatefulSeqNo());
    EXPECT_EQ(11u, status.getNextStatefulSeqNo());
    EXPECT_EQ(21u, status.getNextStatelessSeqNo());
    EXPECT_EQ("10 20 30 40 50", toText(status.get()));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(StatusUpdateTest, savingAloneStoresTheRecordAsItIs)
{
    status.save();

    EXPECT_EQ(toBytes({10, 20, 30, 40, 50}), stored());
    expectReplaced();
}

TEST_F(StatusUpdateTest, whatGetRefersToFollows)
{
    const StatusSection& section = status.get();
    status.updateStateful(7);

    EXPECT_EQ("11 20 7 40 7", toText(section));
}

// --- The first save

TEST_F(StatusTest, theFirstSavePushesTheItemAndTheNextReplacesIt)
{
    status.initialize();
    journal();
    status.updateStateful(7);
    EXPECT_THAT(
        journal(),
        ElementsAre("listIsEmpty FmStatusSection -> 0 true", "log 6 Put initial status item into FmStatusSection list.",
                    "listPushBack FmStatusSection -> 0",
                    "log 6 Successfully executed listPushBack to FmStatusSection: Returned listItemName=item1"));
    EXPECT_EQ(toBytes({1, 0, 7, 0, 7}), stored());

    status.updateStateful(8);
    EXPECT_EQ(toBytes({2, 0, 8, 0, 8}), stored());
}

TEST_F(StatusTest, aFailedPushIsToldAndTriedAgain)
{
    status.initialize();
    journal();
    middleware.lists.failNext("listPushBack", -10);
    status.updateStateful(7);
    EXPECT_THAT(journal(), ElementsAre("listIsEmpty FmStatusSection -> 0 true",
                                       "log 6 Put initial status item into FmStatusSection list.",
                                       "listPushBack FmStatusSection -> -10",
                                       "log 3 Response from replicated listPushBack to FmStatusSection: -10"));
    EXPECT_EQ(2u, status.getNextStatefulSeqNo());

    status.updateStateful(8);
    EXPECT_EQ(toBytes({2, 0, 8, 0, 8}), stored());
}

TEST_F(StatusUpdateTest, aListThatCannotTellIsTakenForEmpty)
{
    middleware.lists.failNext("listIsEmpty", -1);
    status.updateStateful(7);

    EXPECT_THAT(
        journal(),
        ElementsAre("listIsEmpty FmStatusSection -> -1",
                    "log 3 Response from replicated listIsEmpty of FmStatusSection: -1",
                    "log 6 Put initial status item into FmStatusSection list.", "listPushBack FmStatusSection -> 0",
                    "log 6 Successfully executed listPushBack to FmStatusSection: Returned listItemName=item2"));
}

// --- Failures of a replacing save

TEST_F(StatusUpdateTest, aFailedFrontIsToldAndMemoryIsRight)
{
    middleware.lists.failNext("listGetFrontRef", -1);
    status.updateStateful(7);

    EXPECT_THAT(journal(),
                ElementsAre("listIsEmpty FmStatusSection -> 0 false", "listGetFrontRef FmStatusSection -> -1",
                            "log 3 Response from replicated listGetFrontRef of FmStatusSection: -1"));
    EXPECT_EQ("11 20 7 40 7", toText(status.get()));
    EXPECT_EQ(toBytes({10, 20, 30, 40, 50}), stored());

    status.updateStateful(8);
    EXPECT_EQ(toBytes({12, 20, 8, 40, 8}), stored());
}

TEST_F(StatusUpdateTest, aFailedNextIsToldAndTheIterationClosed)
{
    middleware.lists.failNext("listGetNextItemFront", -1);
    status.updateStateful(7);

    EXPECT_THAT(journal(), ElementsAre("listIsEmpty FmStatusSection -> 0 false", "listGetFrontRef FmStatusSection -> 0",
                                       "listGetNextItemFront FmStatusSection -> -1",
                                       "log 3 Response from replicated listGetNextItemFront of FmStatusSection: -1",
                                       "listGetFinalize FmStatusSection -> 0"));
    EXPECT_EQ(toBytes({10, 20, 30, 40, 50}), stored());
}

TEST_F(StatusUpdateTest, aFailedReplaceIsToldAndTheIterationClosed)
{
    middleware.lists.failNext("listReplaceItem", -1);
    status.updateStateful(7);

    EXPECT_THAT(journal(),
                ElementsAre("listIsEmpty FmStatusSection -> 0 false", "listGetFrontRef FmStatusSection -> 0",
                            "listGetNextItemFront FmStatusSection -> 0", "listReplaceItem FmStatusSection item1 -> -1",
                            "log 3 Response from replicated listReplaceItem of FmStatusSection: -1",
                            "listGetFinalize FmStatusSection -> 0"));
    EXPECT_EQ("11 20 7 40 7", toText(status.get()));
    EXPECT_EQ(toBytes({10, 20, 30, 40, 50}), stored());
}

TEST_F(StatusUpdateTest, aFailedFinalizeIsToldAndTheItemReplaced)
{
    middleware.lists.failNext("listGetFinalize", -1);
    status.updateStateful(7);

    EXPECT_THAT(journal(),
                ElementsAre("listIsEmpty FmStatusSection -> 0 false", "listGetFrontRef FmStatusSection -> 0",
                            "listGetNextItemFront FmStatusSection -> 0", "listReplaceItem FmStatusSection item1 -> 0",
                            "log 6 Updated status item in FmStatusSection list.",
                            "listGetFinalize FmStatusSection -> -1",
                            "log 3 Response from replicated listGetFinalize of FmStatusSection: -1"));
    EXPECT_EQ(toBytes({11, 20, 7, 40, 7}), stored());
}

// --- Without the service

TEST_F(StatusTest, anAbsentServiceIsAFailingOne)
{
    middleware.portal.withdraw("ZorvMwSpiReplicatedList");
    status.initialize();
    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to create replicated list FmStatusSection :  -1",
                                       "log 6 listIsEmpty of list FmStatusSection returned -1",
                                       "log 6 FmStatusSection list did not exist. Preparing for a cold start."));
    EXPECT_TRUE(status.isColdStart());

    status.updateStateful(7);
    EXPECT_THAT(journal(), ElementsAre("log 3 Response from replicated listIsEmpty of FmStatusSection: -1",
                                       "log 6 Put initial status item into FmStatusSection list.",
                                       "log 3 Response from replicated listPushBack to FmStatusSection: -1"));
    EXPECT_EQ("1 0 7 0 7", toText(status.get()));
}

TEST_F(StatusTest, beforeItsStartItCountsInMemory)
{
    status.updateStateless(7);

    EXPECT_THAT(journal(), ElementsAre("log 3 Response from replicated listIsEmpty of FmStatusSection: -1",
                                       "log 6 Put initial status item into FmStatusSection list.",
                                       "log 3 Response from replicated listPushBack to FmStatusSection: -1"));
    EXPECT_EQ("0 1 0 7 7", toText(status.get()));
}

}  // namespace
}  // namespace ZorvFm

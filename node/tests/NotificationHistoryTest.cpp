#include "api/NotificationHistory.hpp"

#include <gmock/gmock.h>

#include <thread>

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using FoundT = NotificationHistory::Found;
using PositionT = NotificationHistory::PositionT;

namespace {

NorthboundEvent alarm(bool isStateful, std::uint64_t seqNo)
{
    return {3, "alarm", (isStateful ? "s" : "l") + std::to_string(seqNo), isStateful, seqNo, 0, 0};
}

NorthboundEvent alarm(std::uint64_t seqNo)
{
    return alarm(true, seqNo);
}

NorthboundEvent alert(std::uint64_t seqNo)
{
    return alarm(false, seqNo);
}

NorthboundEvent heartbeat(std::uint64_t stateful, std::uint64_t stateless)
{
    return {3, "heartbeat", "h", false, 0, stateful, stateless};
}

const NorthboundEvent rebuilt = {3, "rebuilt", "r", false, 0, 0, 0};

}  // namespace

class NotificationHistoryTest : public ::testing::Test {
protected:
    void add(std::initializer_list<NorthboundEvent> events)
    {
        for (const NorthboundEvent& event : events) {
            history.add(event);
        }
    }

    /// "JSON PLACE" of all that follows; a resync by its name.
    std::vector<std::string> from(PositionT position) const
    {
        std::vector<std::string> found;
        NotificationHistory::EntryT entry;
        while (history.next(position++, std::chrono::milliseconds(0), entry) == FoundT::entry) {
            found.push_back((entry->name == "resync" ? entry->name + entry->json : entry->json) + " " +
                            entry->place.toText());
        }
        return found;
    }

    std::vector<std::string> behind(const std::string& place) const
    {
        const auto position = history.behind(*NotificationPlace::fromText(place));
        return position ? from(*position) : std::vector<std::string>{"unknown"};
    }

    NotificationHistory history{5};
};

// --- places

TEST_F(NotificationHistoryTest, aPlaceIsTwoNumbersWithADot)
{
    EXPECT_EQ("18446744073709551615.0", NotificationPlace::fromText("18446744073709551615.0")->toText());
    for (const char* text : {"", ".", "1", "1.", ".1", "1.2.3", "-1.2", "1.-2", "1,2", " 1.2", "1.2 ", "a.b",
                             "18446744073709551616.0", "0.18446744073709551616"}) {
        EXPECT_FALSE(NotificationPlace::fromText(text)) << text;
    }
}

TEST_F(NotificationHistoryTest, eachEntryCarriesTheLastNumbersOfBothKinds)
{
    add({heartbeat(7, 3), alarm(8), alert(4), rebuilt, alarm(9)});

    EXPECT_THAT(from(0), ElementsAre("h 7.3", "s8 8.3", "l4 8.4", "r 8.4", "s9 9.4"));
    EXPECT_EQ("9.4", history.lastPlace().toText());
}

// --- gaps

TEST_F(NotificationHistoryTest, whateverComesFirstIsNoGap)
{
    add({alarm(700), alert(300), alarm(701), heartbeat(701, 300)});

    EXPECT_THAT(from(0), ElementsAre("s700 700.0", "l300 700.300", "s701 701.300", "h 701.300"));
}

TEST_F(NotificationHistoryTest, aJumpInEitherNumberStandsAsResync)
{
    add({heartbeat(1, 1), alarm(3), alert(5)});

    EXPECT_THAT(from(0), ElementsAre("h 1.1", "resync{} 2.1", "s3 3.1", "resync{} 3.4", "l5 3.5"));
}

TEST_F(NotificationHistoryTest, aHeartbeatTellsOfWhatIsMissingBeforeIt)
{
    add({alarm(1), alert(1), heartbeat(1, 1), heartbeat(2, 1)});

    EXPECT_THAT(from(0), ElementsAre("s1 1.0", "l1 1.1", "h 1.1", "resync{} 2.1", "h 2.1"));
}

TEST_F(NotificationHistoryTest, numbersThatBeginAnewAreAGap)
{
    add({heartbeat(9, 9), alarm(1)});

    EXPECT_THAT(from(0), ElementsAre("h 9.9", "resync{} 0.9", "s1 1.9"));
}

// --- going on from a place

TEST_F(NotificationHistoryTest, aReaderGoesOnBehindAPlaceThatItHasSeen)
{
    add({heartbeat(1, 1), alarm(2), alert(2), alarm(3)});

    EXPECT_THAT(behind("1.1"), ElementsAre("s2 2.1", "l2 2.2", "s3 3.2"));
    EXPECT_THAT(behind("2.1"), ElementsAre("l2 2.2", "s3 3.2"));
    EXPECT_THAT(behind("2.2"), ElementsAre("s3 3.2"));
    EXPECT_THAT(behind("3.2"), IsEmpty());
}

TEST_F(NotificationHistoryTest, aPlaceThatIsTooOldOrNeverWasIsUnknown)
{
    add({heartbeat(4, 4), alarm(5)});

    EXPECT_THAT(behind("3.4"), ElementsAre("unknown"));
    EXPECT_THAT(behind("4.3"), ElementsAre("unknown"));
    EXPECT_THAT(behind("6.4"), ElementsAre("unknown"));
    EXPECT_THAT(behind("5.5"), ElementsAre("unknown"));
}

TEST_F(NotificationHistoryTest, noPlaceIsKnownBeforeBothNumbersAre)
{
    EXPECT_THAT(behind("0.0"), ElementsAre("unknown"));
    add({alarm(1), alarm(2)});
    EXPECT_THAT(behind("1.0"), ElementsAre("unknown"));
    add({heartbeat(2, 7)});
    EXPECT_THAT(behind("1.0"), ElementsAre("unknown"));
    EXPECT_THAT(behind("2.7"), IsEmpty());
}

TEST_F(NotificationHistoryTest, whatMadeRoomIsNotKnownAnyMore)
{
    add({heartbeat(1, 1), alarm(2), alarm(3), alarm(4), alarm(5), alarm(6)});

    EXPECT_THAT(behind("1.1"), ElementsAre("s2 2.1", "s3 3.1", "s4 4.1", "s5 5.1", "s6 6.1"));
    add({alarm(7)});
    EXPECT_THAT(behind("1.1"), ElementsAre("unknown"));
    EXPECT_THAT(behind("2.1"), ElementsAre("s3 3.1", "s4 4.1", "s5 5.1", "s6 6.1", "s7 7.1"));
}

// --- reading

TEST_F(NotificationHistoryTest, aReaderThatFallsBehindMissesWhatMadeRoom)
{
    add({heartbeat(0, 0), alarm(1), alarm(2), alarm(3), alarm(4), alarm(5), alarm(6)});
    NotificationHistory::EntryT entry;

    EXPECT_EQ(2U, history.oldest());
    EXPECT_EQ(7U, history.end());
    EXPECT_EQ(FoundT::missed, history.next(1, std::chrono::milliseconds(0), entry));
    EXPECT_EQ(FoundT::entry, history.next(2, std::chrono::milliseconds(0), entry));
    EXPECT_EQ("s2", entry->json);
    EXPECT_EQ(FoundT::nothing, history.next(7, std::chrono::milliseconds(0), entry));
}

TEST_F(NotificationHistoryTest, aReaderWaitsForTheNext)
{
    NotificationHistory::EntryT entry;
    std::thread writer([this] { history.add(alarm(1)); });

    EXPECT_EQ(FoundT::entry, history.next(0, std::chrono::seconds(20), entry));

    writer.join();
    EXPECT_EQ("s1", entry->json);
}

}  // namespace ZorvNode

#include "SourceFixture.hpp"
#include "TemporaryDirectory.hpp"
#include "stores/Schema.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A source whose inbox is in a database.
class DurableInboxTest : public SourceFixture {
protected:
    void open()
    {
        database.emplace(file, storeSchema(), DatabaseSettings{}, log.sink());
        source.emplace(router, InboxBounds{10}, &*database, log.sink());
    }

    /// As a node that goes and comes.
    void reopen()
    {
        source.reset();
        database.reset();
        open();
    }

    std::vector<std::string> rows()
    {
        std::vector<std::string> found;
        Statement(*database, "SELECT number, notification FROM inbox ORDER BY number").each([&](const Row& row) {
            found.push_back(std::to_string(row.number(0)) + " " + row.text(1));
        });
        return found;
    }

    static std::string row(int number, int time)
    {
        const std::string text = std::to_string(time);
        return std::to_string(number) + R"( {"raise":{"dn":"Port=)" + text +
               R"(","majorType":0,"minorType":0,"severity":"MAJOR","eventTime":)" + text + R"(},"version":2})";
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string file = directory.write("x.db", "");
    std::optional<Database> database;
    std::optional<FmNotificationSource> source;
};

TEST_F(DurableInboxTest, whatWasAcceptedIsSentAfterTheNextStart)
{
    open();
    publish(*source, {1, 2});
    EXPECT_THAT(rows(), ElementsAre(row(1, 1), row(2, 2)));

    reopen();
    EXPECT_EQ(2U, source->getNumberWaiting());
    subscribeFrom(consumer, "0");
    publish(*source, {3});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3"));
    EXPECT_THAT(rows(), ElementsAre(row(1, 1), row(2, 2), row(3, 3)));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(DurableInboxTest, aNotificationComesBackWithAllItsFields)
{
    const auto fields = std::make_shared<RecordingConsumer>([](const std::string& eventType, const void* value) {
        const auto& it = *static_cast<const YaltOamSpiNotificationFmStruct_4*>(value);
        return eventType + " " + it.dn + " " + std::to_string(it.majorType) + " " + std::to_string(it.minorType) + " " +
               std::to_string(it.eventTime) + " " + it.additionalText + " " + std::to_string(it.severity) + " " +
               it.additionalInfo.entries[0].name + "=" + it.additionalInfo.entries[0].value;
    });
    open();
    source->publish({{FmFramework::yalt, 4, "Port=1", 32473, 9, 77, "loss", -4, {{"a", "b"}}},
                     {FmFramework::yalt, 4, "Port=1", 32473, 9, 78, "", 0, {{"c", ""}}}});

    reopen();
    subscribe(fields, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4, YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_4,
              "0");

    const std::string type = YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4;
    EXPECT_THAT(fields->events(router),
                ElementsAre(type + " Port=1 32473 9 77 loss -4 a=b", type + " ^Port=1$ 32473 9 78  0 c="));
}

TEST_F(DurableInboxTest, whatIsHandledIsGoneFromTheDatabase)
{
    open();
    subscribe(consumer);
    publish(*source, {1, 2, 3, 4});
    consumer->events(router);

    source->noteHandled({3, source->getLastTaken().life});

    EXPECT_THAT(rows(), ElementsAre(row(4, 4)));
}

TEST_F(DurableInboxTest, whileTheDatabaseFailsWhatIsAcceptedStaysInMemory)
{
    open();
    subscribe(consumer);
    EXPECT_TRUE(source->publish({at(1)}));
    database->execute("CREATE TRIGGER failing BEFORE INSERT ON inbox WHEN new.number = 3 "
                      "BEGIN SELECT RAISE(ABORT, 'no room'); END");

    EXPECT_FALSE(source->publish({at(2), at(3), at(4)}));
    EXPECT_FALSE(source->publish({at(5)}));

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4", "Port=5"));
    EXPECT_EQ(5U, source->getNumberInInbox());
    EXPECT_THAT(rows(), ElementsAre(row(1, 1)));
    EXPECT_THAT(log.lines(), ElementsAre("3 writing the store fails: " + file + ": no room"));
}

TEST_F(DurableInboxTest, whatWasAcceptedMeanwhileIsRecordedWhenThatIsPossibleAgain)
{
    open();
    subscribe(consumer);
    publish(*source, {1, 2});
    consumer->events(router);
    database->execute("CREATE TRIGGER failing BEFORE INSERT ON inbox BEGIN SELECT RAISE(ABORT, 'no room'); END");
    publish(*source, {3, 4});
    source->publish({at(5)}, PublicationId{"a", 7});
    consumer->events(router);
    source->noteHandled({3, source->getLastTaken().life});

    source->catchUp();
    EXPECT_THAT(rows(), ElementsAre(row(1, 1), row(2, 2)));
    EXPECT_FALSE(source->publish({at(6)}));
    database->execute("DROP TRIGGER failing");
    source->catchUp();

    EXPECT_THAT(rows(), ElementsAre(row(4, 4), row(5, 5), row(6, 6)));
    EXPECT_TRUE(source->publish({at(7)}));
    reopen();
    EXPECT_TRUE(source->publish({at(5)}, PublicationId{"a", 7}));
    EXPECT_EQ(1U, source->getStatistics().repeated);
    EXPECT_EQ(4U, source->getNumberInInbox());
}

TEST_F(DurableInboxTest, whatIsHandledWhileTheDatabaseFailsIsGoneFromItLater)
{
    open();
    subscribe(consumer);
    publish(*source, {1});
    consumer->events(router);
    database->execute("CREATE TRIGGER failing BEFORE DELETE ON inbox BEGIN SELECT RAISE(ABORT, 'no way'); END");

    source->noteHandled({1, source->getLastTaken().life});

    EXPECT_THAT(log.lines(), ElementsAre("3 writing the store fails: " + file + ": no way"));
    EXPECT_EQ(0U, source->getNumberInInbox());
    EXPECT_THAT(rows(), ElementsAre(row(1, 1)));
    database->execute("DROP TRIGGER failing");
    source->catchUp();
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(DurableInboxTest, aBrokenRowIsPassedOverWithALogLine)
{
    open();
    publish(*source, {1, 2, 3});
    database->execute("UPDATE inbox SET notification = '{' WHERE number = 1");
    database->execute(R"(UPDATE inbox SET notification = '{"raise":{}}' WHERE number = 2)");
    database->execute("INSERT INTO inbox VALUES (4, '[]')");

    reopen();
    EXPECT_EQ(1U, source->getNumberWaiting());
    subscribeFrom(consumer, "0");
    publish(*source, {5});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=3", "Port=5"));
    EXPECT_THAT(
        log.lines(),
        ElementsAre("3 " + file + ": inbox 1 is passed over: not JSON: at byte 1: Missing a name for object member",
                    "3 " + file + ": inbox 2 is passed over: raise.dn: missing",
                    "3 " + file + ": inbox 4 is passed over: not an object"));
    EXPECT_EQ(row(5, 5), rows().back());
}

}  // namespace ZorvNode

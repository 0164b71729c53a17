#include "ingress/KnownClients.hpp"

#include "SourceFixture.hpp"
#include "TemporaryDirectory.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

PublicationId id(const std::string& text)
{
    return PublicationId::fromText(text).value();
}

}  // namespace

// --- names

TEST(PublicationIdTest, aNameAndANumber)
{
    const PublicationId read = id("a-Z09/9223372036854775807");

    EXPECT_EQ("a-Z09", read.client);
    EXPECT_EQ(9223372036854775807U, read.number);
}

TEST(PublicationIdTest, whatIsNoNameIsNone)
{
    for (const std::string& text :
         {std::string(""), std::string("a"), std::string("/1"), std::string("a/"), std::string("a/-1"),
          std::string("a/1 "), std::string("a/9223372036854775808"), std::string("a b/1"), std::string("\xc3\xa4/1"),
          std::string(65, 'a') + "/1", std::string("a/1/2")}) {
        EXPECT_FALSE(PublicationId::fromText(text)) << text;
    }
}

// --- clients

TEST(KnownClientsTest, aPublicationIsKnownWithThoseBeforeIt)
{
    KnownClients clients(nullptr, 10);

    EXPECT_FALSE(clients.hasAccepted(id("a/1")));
    clients.note(id("a/5"));

    EXPECT_TRUE(clients.hasAccepted(id("a/4")));
    EXPECT_TRUE(clients.hasAccepted(id("a/5")));
    EXPECT_FALSE(clients.hasAccepted(id("a/6")));
    EXPECT_FALSE(clients.hasAccepted(id("b/5")));
}

TEST(KnownClientsTest, theOneNotHeardOfForLongestIsForgottenFirst)
{
    KnownClients clients(nullptr, 2);
    clients.note(id("a/1"));
    clients.note(id("b/1"));
    clients.note(id("a/2"));
    clients.note(id("c/1"));

    EXPECT_TRUE(clients.hasAccepted(id("a/2")));
    EXPECT_FALSE(clients.hasAccepted(id("b/1")));
    EXPECT_TRUE(clients.hasAccepted(id("c/1")));
}

// --- the source

class RepeatedPublicationTest : public SourceFixture {
protected:
    void open()
    {
        source.reset();
        database.reset();
        database.emplace(file, storeSchema(), DatabaseSettings(), log.sink());
        source.emplace(router, InboxBounds{3}, &*database, log.sink());
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string file = directory.write("x.db", "");
    std::optional<Database> database;
    std::optional<FmNotificationSource> source;
};

TEST_F(RepeatedPublicationTest, isNotSentAgain)
{
    open();
    subscribe(consumer);
    source->publish({at(1)}, id("a/1"));
    source->publish({at(1)}, id("a/1"));
    source->publish({at(2)}, id("a/2"));
    source->publish({at(3)});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3"));
    EXPECT_EQ(1U, source->getStatistics().repeated);
    EXPECT_EQ(3U, source->getStatistics().accepted);
}

TEST_F(RepeatedPublicationTest, isKnownAfterTheNextStartAndWhenTheInboxIsEmpty)
{
    open();
    source->publish({at(1)}, id("a/1"));
    source->publish({at(2)}, id("a/2"));
    database->execute("DELETE FROM inbox");

    open();
    subscribe(consumer);
    source->publish({at(1)}, id("a/1"));
    source->publish({at(2)}, id("a/2"));

    EXPECT_THAT(consumer->events(router), IsEmpty());
    EXPECT_EQ(2U, source->getStatistics().repeated);
}

TEST_F(RepeatedPublicationTest, oneThatWasRefusedIsTakenTheNextTime)
{
    open();
    source->publish({at(1), at(2), at(3)}, id("a/1"));
    EXPECT_THROW(source->publish({at(4)}, id("a/2")), SourceBusy);
    subscribe(consumer, type2, filter2, "0");
    consumer->events(router);
    source->noteHandled({3, source->getLastTaken().life});

    source->publish({at(4)}, id("a/2"));

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4"));
}

TEST_F(RepeatedPublicationTest, oneThatCouldNotBeWrittenIsKnownAllTheSame)
{
    open();
    subscribe(consumer);
    database->execute("CREATE TRIGGER failing BEFORE INSERT ON clients BEGIN SELECT RAISE(ABORT, 'no room'); END");
    EXPECT_FALSE(source->publish({at(1)}, id("a/1")));

    EXPECT_FALSE(source->publish({at(1)}, id("a/1")));

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1"));
    EXPECT_EQ(1U, source->getNumberInInbox());
}

}  // namespace ZorvNode

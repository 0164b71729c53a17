#include <gmock/gmock.h>

#include "EventRouterContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;

TEST_P(EventRouterContractTest, filtersArriveByteForByteAtProducerAndConsumer)
{
    const std::string bytes = "%s \"<&\\\n\t\x01\x7f\xc3\xa9\xff";
    const std::string large(5000, 'x');
    announce();

    const unsigned long consumer = subscriber({{bytes, large}, {"", bytes}, {large, ""}});
    notify(consumer, 1);
    const auto delivered = journal.await(3);
    unsubscribe(consumer, {{bytes, large}, {"", bytes}, {large, ""}});

    const std::string text = " " + bytes + "=" + large + ", =" + bytes + ", " + large + "=";
    EXPECT_THAT(delivered, ElementsAre("p1 add c1 T" + text, "c1 event T" + text + " 1", "p1 done T 1"));
    EXPECT_EQ("p1 remove c1 T" + text, journal.lines().back());
}

TEST_P(EventRouterContractTest, aNullFilterIsOneWithoutEntries)
{
    announce();
    const unsigned long consumer = registerConsumer();

    EXPECT_EQ(0, spi->addSubscription(consumer, "T", nullptr));
    EXPECT_EQ(0, notify(consumer, 1));
    journal.await(3);
    EXPECT_EQ(0, spi->removeSubscription(consumer, "T", nullptr));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T", "c1 event T 1", "p1 done T 1", "p1 remove c1 T"));
}

TEST_P(EventRouterContractTest, nullTextsInAFilterReadAsEmpty)
{
    announce();
    const unsigned long consumer = registerConsumer();
    YaltNameValuePair entry = {nullptr, nullptr};
    YaltNameValuePair* filter[] = {&entry, nullptr};

    EXPECT_EQ(0, spi->addSubscription(consumer, "T", filter));
    EXPECT_EQ(0, unsubscribe(consumer, {{"", ""}}));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T =", "p1 remove c1 T ="));
}

TEST_P(EventRouterContractTest, aFilterStaysReadableForItsProducerUntilTheSubscriptionEnds)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});
    subscriber();

    YaltNameValuePair** const filter = ledger.latestFilter(1, consumer);

    EXPECT_STREQ("a", filter[0]->name);
    EXPECT_STREQ("b", filter[0]->value);
    EXPECT_EQ(nullptr, filter[1]);
}

}  // namespace ZorvTest

#include "CmEventConsumer.hpp"

#include <csignal>
#include <stdexcept>

#include "CommonTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;

namespace Zorv {
namespace {

class CmSubscriber {
public:
    void notify(const YaltOamSpiCmEvent_Notification_1T& event)
    {
        received.push_back(event.txHandle);
        if (fails) {
            throw std::runtime_error("no");
        }
    }

    std::vector<unsigned long> received;
    bool fails = false;
};

using Consumer = CmEventConsumer<CmSubscriber, 1>;

class CmEventConsumerTest : public CommonTest {
protected:
    void start() { consumer->start({"^ManagedElement=[^,]+$", "Fm=.*"}, &CmSubscriber::notify, &subscriber); }

    std::vector<int32_t> fire(unsigned long txHandle)
    {
        YaltOamSpiCmEvent_Notification_1T event{txHandle, nullptr, 0};
        return middleware.router.fire("YaltOamSpiCmEvent_Notification_1", &event);
    }

    CmSubscriber subscriber;
    std::optional<Consumer> consumer{std::in_place};
};

TEST_F(CmEventConsumerTest, theExpressionsBecomeFilterEntriesInTheirOrder)
{
    start();
    consumer->stop();

    const std::string filter = "YaltOamSpiCmEvent_FilterTypeRegExp_1=^ManagedElement=[^,]+$, "
                               "YaltOamSpiCmEvent_FilterTypeRegExp_1=Fm=.*";
    EXPECT_THAT(journal(), ElementsAre("registerConsumer -> 0",
                                       "addSubscription YaltOamSpiCmEvent_Notification_1 " + filter + " -> 0",
                                       "removeSubscription YaltOamSpiCmEvent_Notification_1 " + filter + " -> 0",
                                       "unregisterConsumer 1 -> 0"));
}

TEST_F(CmEventConsumerTest, withoutExpressionsTheFilterIsEmpty)
{
    consumer->start({}, &CmSubscriber::notify, &subscriber);

    EXPECT_THAT(middleware.router.subscriptions(), ElementsAre("YaltOamSpiCmEvent_Notification_1 "));
}

TEST_F(CmEventConsumerTest, eventsReachTheSubscriberAsNotifications)
{
    start();

    EXPECT_THAT(fire(17), ElementsAre(0));
    EXPECT_THAT(fire(18), ElementsAre(0));

    EXPECT_THAT(subscriber.received, ElementsAre(17, 18));
}

TEST_F(CmEventConsumerTest, nothingArrivesAfterStop)
{
    start();
    consumer->stop();

    EXPECT_THAT(fire(17), IsEmpty());
}

TEST_F(CmEventConsumerTest, exceptionsAreKeptFromTheRouter)
{
    start();
    journal();
    subscriber.fails = true;

    EXPECT_THAT(fire(17), ElementsAre(0));

    EXPECT_THAT(journal(), ElementsAre("log 4 Exception thrown from event consumer :no"));
}

using CmEventConsumerDeathTest = CmEventConsumerTest;

TEST_F(CmEventConsumerDeathTest, aSecondObjectOfOneInstantiation)
{
    EXPECT_EXIT(Consumer second, KilledBySignal(SIGABRT), "common/inc/EventConsumer.*`_instance == __null'");
}

}  // namespace
}  // namespace Zorv

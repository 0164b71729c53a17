// Classes that a component implements: it joins the transactions that use them, and its answers are the answers.

#include <gmock/gmock.h>

#include "AlarmComponent.hpp"
#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string alarmDn = "Node=1,Alarm=1";

}  // namespace

// --- Joining

TEST_P(FullObjectContractTest, aComponentJoinsOnceBeforeTheFirstUseOfItsClass)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();

    EXPECT_EQ("true", exists(tx, alarmDn));
    EXPECT_EQ("false", exists(tx, "Node=1,Alarm=3"));
    EXPECT_EQ(0, commit(tx));

    EXPECT_THAT(journal.lines(), ElementsAre("join", "existsMo Node=1,Alarm=1", "existsMo Node=1,Alarm=3", "prepare",
                                             "commit", "finish"));
}

TEST_P(FullObjectContractTest, aComponentJoinsEachTransactionThatUsesItsClass)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());
    const unsigned long first = begin();
    const unsigned long second = begin();

    exists(first, alarmDn);
    exists(second, alarmDn);
    journal.take();
    abort(second);

    EXPECT_THAT(journal.take(), ElementsAre("abort", "finish"));
    commit(first);
    EXPECT_THAT(journal.take(), ElementsAre("prepare", "commit", "finish"));
}

TEST_P(FullObjectContractTest, aComponentWhoseClassIsNotUsedHearsNothing)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();

    set(tx, "Node=1", 1);
    ports(tx);
    commit(tx);

    EXPECT_THAT(journal.lines(), IsEmpty());
}

TEST_P(FullObjectContractTest, aRefusedJoinMakesTheTransactionFail)
{
    AlarmComponent component(journal, participants);
    component.reaction = [](const std::string& operation) { return operation == "join" ? -10 : 0; };
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();
    set(tx, "Node=1,Port=1", 42);

    EXPECT_EQ("-1", exists(tx, alarmDn));
    EXPECT_EQ("-1", get(tx, alarmDn, "text"));
    EXPECT_EQ(-1, commit(tx));

    EXPECT_THAT(journal.lines(), ElementsAre("join"));
    EXPECT_EQ("uint32 7", committed("Node=1,Port=1", "number"));
}

TEST_P(FullObjectContractTest, aJoinThatThrowsIsARefusal)
{
    AlarmComponent component(journal, participants);
    component.reaction = [](const std::string&) -> ZorvReturnT { throw std::runtime_error("no memory"); };
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();

    EXPECT_EQ("-1", exists(tx, alarmDn));
    EXPECT_EQ(-1, commit(tx));
}

TEST_P(FullObjectContractTest, aClassWhoseComponentIsNotThereIsRefused)
{
    const unsigned long tx = begin();

    EXPECT_EQ("-1", exists(tx, alarmDn));
    EXPECT_EQ("-1", get(tx, alarmDn, "text"));
    EXPECT_THAT(children(tx, "Node=1", "Alarm"), ElementsAre("-1"));
}

TEST_P(FullObjectContractTest, aTransactionWhoseTimeIsUpInACallIsAbortedAfterIt)
{
    AlarmComponent component(journal, participants);
    component.reaction = [this](const std::string& operation) {
        if (operation == "existsMo") {
            full.passTime(std::chrono::seconds(60));
            journal.write("time is up");
        }
        return 0;
    };
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();

    EXPECT_EQ("true", exists(tx, alarmDn));

    EXPECT_THAT(journal.lines(), ElementsAre("join", "existsMo Node=1,Alarm=1", "time is up", "abort", "finish"));
    EXPECT_EQ(-2, commit(tx));
}

// --- Passing on

TEST_P(FullObjectContractTest, iterationsOverAComponentsObjectsArePassedOn)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());

    EXPECT_THAT(children(begin(), "Node=1", "Alarm"), ElementsAre("Alarm=1", "Alarm=2"));

    EXPECT_THAT(journal.lines(), ElementsAre("join", "newMoIterator Node=1 Alarm", "nextMo 5", "nextMo 5", "nextMo 5",
                                             "finalizeMoIterator 5"));
}

TEST_P(FullObjectContractTest, aComponentsObjectsAreCounted)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());

    EXPECT_EQ("2", count(begin(), "Node=1", "Alarm"));
}

TEST_P(FullObjectContractTest, readsOfAComponentsObjectsArePassedOnAndReleasedThere)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();

    EXPECT_EQ("string 'fire'", get(tx, alarmDn, "text"));
    EXPECT_THAT(get(tx, alarmDn, NamesT{"text"}), ElementsAre("string 'fire'"));

    EXPECT_THAT(journal.lines(), ElementsAre("join", "getMoAttribute Node=1,Alarm=1 text", "release",
                                             "getMoAttributes Node=1,Alarm=1 text", "release all"));
}

TEST_P(FullObjectContractTest, writesOfAComponentsObjectsArePassedOn)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();

    EXPECT_EQ(0, set(tx, alarmDn, "text", MoValue::text("water")));
    EXPECT_EQ(0, create(tx, "Node=1", "Alarm", "3", {{"text", MoValue::text("smoke")}}));
    EXPECT_EQ(0, remove(tx, alarmDn));

    EXPECT_THAT(journal.lines(), ElementsAre("join", "setMoAttribute Node=1,Alarm=1 text", "createMo Node=1 Alarm=3 1",
                                             "deleteMo Node=1,Alarm=1"));
}

TEST_P(FullObjectContractTest, actionsOfAComponentsObjectsArePassedOn)
{
    const AlarmComponent component(journal, participants);
    full.install(AlarmComponent::descriptor());
    YaltOamSpiMoAttributeResult_3T result{};

    ASSERT_EQ(0, objects->action(begin(), alarmDn.c_str(), "acknowledge", nullptr, 0, &result));

    EXPECT_STREQ("fire", result.attribute->values[0].stringValue);
    EXPECT_EQ(0, result.releaseAttrResultCB(&result));
    EXPECT_THAT(journal.lines(), ElementsAre("join", "action Node=1,Alarm=1 acknowledge 0", "release"));
}

TEST_P(FullObjectContractTest, aComponentsRefusalIsTheAnswer)
{
    AlarmComponent component(journal, participants);
    ZorvReturnT refusal = 0;
    component.reaction = [&refusal](const std::string& operation) { return operation == "join" ? 0 : refusal; };
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();
    YaltOamSpiMoAttributeResult_3T result{};

    for (const ZorvReturnT code : {-1, -2, -3, -10}) {
        refusal = code;
        EXPECT_EQ(std::to_string(code), exists(tx, alarmDn));
        EXPECT_EQ(std::to_string(code), get(tx, alarmDn, "text"));
        EXPECT_THAT(get(tx, alarmDn, NamesT{"text"}), ElementsAre(std::to_string(code)));
        EXPECT_THAT(children(tx, "Node=1", "Alarm"), ElementsAre(std::to_string(code)));
        EXPECT_EQ(code, set(tx, alarmDn, "text", MoValue::text("water")));
        EXPECT_EQ(code, create(tx, "Node=1", "Alarm", "3"));
        EXPECT_EQ(code, remove(tx, alarmDn));
        EXPECT_EQ(code, objects->action(tx, alarmDn.c_str(), "acknowledge", nullptr, 0, &result));
    }
}

TEST_P(FullObjectContractTest, aComponentThatThrowsHasFailedAndTheTransactionGoesOn)
{
    AlarmComponent component(journal, participants);
    component.reaction = [](const std::string& operation) { return operation == "existsMo" ? throw 7 : 0; };
    full.install(AlarmComponent::descriptor());
    const unsigned long tx = begin();

    EXPECT_EQ("-1", exists(tx, alarmDn));

    EXPECT_EQ("string 'fire'", get(tx, alarmDn, "text"));
    EXPECT_EQ(0, commit(tx));
}

}  // namespace ZorvTest

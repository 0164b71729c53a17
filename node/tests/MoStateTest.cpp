#include "services/managedobjects/MoState.hpp"

#include <gmock/gmock.h>

#include <random>

#include "FromEnvironment.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;

namespace {

MoInstanceT object(const std::string& dn, std::uint64_t count = 0)
{
    MoInstance instance;
    instance.dn = dn;
    instance.attributes["count"].values.emplace_back(count);
    return std::make_shared<const MoInstance>(std::move(instance));
}

std::string portNamed(std::size_t number)
{
    return "Node=1,Port=" + std::to_string(number);
}

MoTree nodeWithPorts(std::size_t ports)
{
    MoTree tree;
    tree.put(object("Node=1"));
    for (std::size_t number = 1; number <= ports; ++number) {
        tree.put(object(portNamed(number)));
    }
    return tree;
}

std::uint64_t countOf(const MoState& state, const std::string& dn)
{
    return std::get<std::uint64_t>(state.find(dn)->attributes.at("count").values.front());
}

}  // namespace

TEST(MoStateTest, beginsWithTheObjectsOfTheTree)
{
    const MoState state(nodeWithPorts(2));

    EXPECT_TRUE(state.exists(""));
    EXPECT_TRUE(state.exists("Node=1,Port=2"));
    EXPECT_FALSE(state.exists("Node=1,Port=3"));
    EXPECT_EQ(nullptr, state.find("Node=1,Port=3"));
    EXPECT_THAT(state.childrenOf("Node=1", "Port"), ElementsAre("Node=1,Port=1", "Node=1,Port=2"));
}

TEST(MoStateTest, aChangedObjectKeepsItsPlace)
{
    MoState state(nodeWithPorts(2));

    state.put(object("Node=1,Port=1", 7));

    EXPECT_EQ(7U, countOf(state, "Node=1,Port=1"));
    EXPECT_THAT(state.childrenOf("Node=1", "Port"), ElementsAre("Node=1,Port=1", "Node=1,Port=2"));
    EXPECT_THAT(state.subtreeOf(""), ElementsAre("", "Node=1", "Node=1,Port=1", "Node=1,Port=2"));
}

TEST(MoStateTest, aCopyStaysAsItWas)
{
    MoState state(nodeWithPorts(2));
    state.put(object("Node=1,Port=1", 7));
    const MoState before = state;

    state.put(object("Node=1,Port=1", 8));
    state.put(object("Node=1,Port=2", 9));
    state.put(object("Node=1,Port=3"));
    state.remove("Node=1,Port=2");

    EXPECT_EQ(7U, countOf(before, "Node=1,Port=1"));
    EXPECT_EQ(0U, countOf(before, "Node=1,Port=2"));
    EXPECT_THAT(before.childrenOf("Node=1", "Port"), ElementsAre("Node=1,Port=1", "Node=1,Port=2"));
}

TEST(MoStateTest, whatHasChangedIsThereWhenObjectsComeAndGo)
{
    MoState state(nodeWithPorts(3));
    state.put(object("Node=1,Port=1", 7));
    state.put(object("Node=1,Port=4"));
    state.put(object("Node=1,Port=2", 8));
    state.remove("Node=1,Port=3");

    EXPECT_EQ(7U, countOf(state, "Node=1,Port=1"));
    EXPECT_EQ(8U, countOf(state, "Node=1,Port=2"));
    EXPECT_THAT(state.childrenOf("Node=1", "Port"), ElementsAre("Node=1,Port=1", "Node=1,Port=2", "Node=1,Port=4"));
}

TEST(MoStateTest, anObjectThatIsRemovedTakesWhatHasChangedBelowItAlong)
{
    MoState state(nodeWithPorts(2));
    state.put(object("Node=1,Port=1", 7));
    state.put(object("Node=1", 8));

    state.remove("Node=1");

    EXPECT_EQ(nullptr, state.find("Node=1"));
    EXPECT_EQ(nullptr, state.find("Node=1,Port=1"));
    EXPECT_THAT(state.subtreeOf(""), ElementsAre(""));
}

TEST(MoStateTest, answersLikeATreeOnRandomHistories)
{
    const auto seed = ZorvTest::fromEnvironment("ZORV_TEST_SEED", std::random_device{}());
    SCOPED_TRACE("ZORV_TEST_SEED=" + std::to_string(seed));
    std::mt19937 dice(static_cast<unsigned>(seed));
    constexpr std::size_t ports = 60;
    MoTree plain = nodeWithPorts(ports);
    MoState state(plain);
    for (std::uint64_t step = 0; step < 2000; ++step) {
        const std::string dn = portNamed(1 + dice() % ports);
        if (dice() % 50 == 0) {
            plain.remove(dn);
            state.remove(dn);
        } else {
            const MoInstanceT changed = object(dn, step);
            plain.put(changed);
            state.put(changed);
        }
        for (std::size_t number = 1; number <= ports; ++number) {
            ASSERT_EQ(plain.find(portNamed(number)), state.find(portNamed(number))) << step;
        }
        ASSERT_EQ(plain.childrenOf("Node=1", "Port"), state.childrenOf("Node=1", "Port")) << step;
    }
}

}  // namespace ZorvNode

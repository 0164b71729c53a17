// What the model allows.

#include <gmock/gmock.h>

#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(FullObjectContractTest, anUnknownClassHasNoIteration)
{
    const unsigned long tx = begin();

    EXPECT_THAT(children(tx, "Node=1", "Slot"), ElementsAre("-1"));
    EXPECT_THAT(children(tx, "Node=1", ""), ElementsAre("-1"));
    EXPECT_EQ("-1", count(tx, "Node=1", "Slot"));
}

TEST_P(FullObjectContractTest, anUnknownParentHasNoIteration)
{
    const unsigned long tx = begin();

    EXPECT_THAT(children(tx, "Node=2", "Port"), ElementsAre("-2"));
    EXPECT_EQ("-2", count(tx, "Node=2", "Port"));
}

TEST_P(FullObjectContractTest, aValueOutOfRangeIsRefusedAndChangesNothing)
{
    const unsigned long tx = begin();

    EXPECT_EQ(-1, set(tx, "Node=1,Port=1", 101));
    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "enum", MoValue::enumeration(3)));
    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "int8", {YALT_MO_ATTRIBUTE_INT8, {{128, {}, {}}}}));
    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "uint16", {YALT_MO_ATTRIBUTE_UINT16, {{65536, {}, {}}}}));
    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "string", MoValue::texts({"one", "two"})));

    EXPECT_EQ("uint32 7", get(tx, "Node=1,Port=1", "number"));
    EXPECT_EQ("int8 -128", get(tx, "Node=1,Sample=1", "int8"));
    EXPECT_EQ(0, set(tx, "Node=1,Port=1", 100));
}

TEST_P(FullObjectContractTest, aStructureHasTheMembersOfTheModel)
{
    const unsigned long tx = begin();
    const MoValue name = MoValue::text("a");
    const MoValue number = MoValue::int32(1);

    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "struct", MoValue::structure({{"name", name}})));
    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "struct", MoValue::structure({{"number", number}, {"name", name}})));
    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "struct", MoValue::structure({{"name", name}, {"size", number}})));
    EXPECT_EQ(-1, set(tx, "Node=1,Sample=1", "struct", MoValue::structure({{"name", name}, {"number", name}})));

    EXPECT_EQ("struct {name='a' number=-5}", get(tx, "Node=1,Sample=1", "struct"));
}

TEST_P(FullObjectContractTest, aReadOnlyAttributeIsRefusedToManagementAndGrantedToTheSystem)
{
    const unsigned long management = full.beginManagement();
    EXPECT_EQ(-1, set(management, "Node=1,Port=1", "state", MoValue::text("up")));
    EXPECT_EQ(-1, create(management, "Node=1", "Port", "3", {{"state", MoValue::text("up")}}));
    EXPECT_EQ("string none", get(management, "Node=1,Port=1", "state"));
    EXPECT_EQ(0, commit(management));

    const unsigned long system = begin();
    EXPECT_EQ(0, set(system, "Node=1,Port=1", "state", MoValue::text("up")));
    EXPECT_EQ(0, commit(system));

    EXPECT_EQ("string 'up'", committed("Node=1,Port=1", "state"));
}

TEST_P(FullObjectContractTest, aCreatedObjectHasTheDefaultsOfTheModel)
{
    const unsigned long tx = begin();

    EXPECT_EQ(0, create(tx, "Node=1", "Port", "3"));

    EXPECT_THAT(get(tx, "Node=1,Port=3", NamesT{"number", "state"}), ElementsAre("uint32 7", "string none"));
}

TEST_P(FullObjectContractTest, anObjectIsCreatedWhereAndHowTheModelSays)
{
    const unsigned long tx = begin();

    EXPECT_EQ(-1, create(tx, "Node=1", "Slot", "1"));
    EXPECT_EQ(-1, create(tx, "", "Port", "1"));
    EXPECT_EQ(-1, create(tx, "Node=1,Port=1", "Port", "1"));
    EXPECT_EQ(-1, create(tx, "Node=1", "Port", ""));
    EXPECT_EQ(-1, create(tx, "Node=1", "Port", "a,Port=b"));
    EXPECT_EQ(-1, create(tx, "Node=1", "Port", "3", {{"number", MoValue::uint32(101)}}));
    EXPECT_EQ(-1, create(tx, "Node=1", "Port", "3", {{"number", MoValue::text("1")}}));
    EXPECT_EQ(-2, create(tx, "Node=1", "Port", "3", {{"colour", MoValue::text("red")}}));

    EXPECT_THAT(ports(tx), ElementsAre("Port=1", "Port=2"));
    EXPECT_THAT(children(tx, "", "Port"), IsEmpty());
}

}  // namespace ZorvTest

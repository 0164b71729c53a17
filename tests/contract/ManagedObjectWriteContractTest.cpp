#include <gmock/gmock.h>

#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;

namespace {

ZorvFakes::MoValue numberOf(std::int32_t type, std::uint64_t number)
{
    return {type, {{number, {}, {}}}};
}

}  // namespace

// --- Attributes

TEST_P(ManagedObjectContractTest, everyTypeOfValueIsWritten)
{
    const AttributesT values = {
        {"int8", numberOf(YALT_MO_ATTRIBUTE_INT8, 127)},
        {"int16", numberOf(YALT_MO_ATTRIBUTE_INT16, 32767)},
        {"int32", MoValue::int32(INT32_MAX)},
        {"int64", numberOf(YALT_MO_ATTRIBUTE_INT64, INT64_MAX)},
        {"uint8", numberOf(YALT_MO_ATTRIBUTE_UINT8, 0)},
        {"uint16", numberOf(YALT_MO_ATTRIBUTE_UINT16, 1)},
        {"uint32", MoValue::uint32(2)},
        {"uint64", MoValue::uint64(3)},
        {"bool", MoValue::boolean(false)},
        {"string", MoValue::text("%s \xE2\x82\xAC\n")},
        {"reference", MoValue::reference("Node=1")},
        {"enum", MoValue::enumeration(2)},
        {"struct", MoValue::structure({{"name", MoValue::text("")}, {"number", MoValue::int32(6)}})},
        {"nothing", MoValue::structure({{"name", MoValue::text("x")}, {"number", MoValue::int32(-6)}})},
    };
    const unsigned long tx = begin();
    NamesT names;
    for (const auto& [name, value] : values) {
        EXPECT_EQ(0, set(tx, "Node=1,Sample=1", name, value)) << name;
        names.push_back(name);
    }
    const auto expected =
        ElementsAre("int8 127", "int16 32767", "int32 2147483647", "int64 9223372036854775807", "uint8 0", "uint16 1",
                    "uint32 2", "uint64 3", "bool false", "string '%s \xE2\x82\xAC\n'", "reference 'Node=1'", "enum 2",
                    "struct {name='' number=6}", "struct {name='x' number=-6}");

    EXPECT_THAT(get(tx, "Node=1,Sample=1", names), expected);
    EXPECT_EQ(0, commit(tx));

    EXPECT_THAT(get(begin(), "Node=1,Sample=1", names), expected);
}

TEST_P(ManagedObjectContractTest, sequencesAreWrittenWhole)
{
    const unsigned long tx = begin();
    MoValue pairs = MoValue::structure({{"name", MoValue::text("y")}, {"number", MoValue::int32(8)}});
    pairs.values.push_back(pairs.values.front());
    pairs.values.back().members[0].value = MoValue::text("z");

    EXPECT_EQ(0, set(tx, "Node=1", "names", MoValue::texts({"c", "a", "b"})));
    EXPECT_EQ(0, set(tx, "Node=1,Sample=1", "structs", pairs));

    EXPECT_EQ("string ['c', 'a', 'b']", get(tx, "Node=1", "names"));
    EXPECT_EQ("struct [{name='y' number=8}, {name='z' number=8}]", get(tx, "Node=1,Sample=1", "structs"));
}

TEST_P(ManagedObjectContractTest, aValueCanBeTakenAway)
{
    const unsigned long tx = begin();

    EXPECT_EQ(0, set(tx, "Node=1", "names", MoValue::none(YALT_MO_ATTRIBUTE_STRING)));
    EXPECT_EQ(0, set(tx, "Node=1,Sample=1", "uint64", MoValue::none(YALT_MO_ATTRIBUTE_UINT64)));
    EXPECT_EQ(0, commit(tx));

    EXPECT_EQ("string none", committed("Node=1", "names"));
    EXPECT_EQ("uint64 none", committed("Node=1,Sample=1", "uint64"));
}

TEST_P(ManagedObjectContractTest, theLastWriteOfATransactionCounts)
{
    const unsigned long tx = begin();

    EXPECT_EQ(0, set(tx, "Node=1", 1));
    EXPECT_EQ(0, set(tx, "Node=1", 2));
    EXPECT_EQ("uint32 2", get(tx, "Node=1", "number"));
    EXPECT_EQ(0, commit(tx));

    EXPECT_EQ("uint32 2", committed("Node=1", "number"));
}

TEST_P(ManagedObjectContractTest, writesToWhatIsNotThereAreNotFound)
{
    const unsigned long tx = begin();

    EXPECT_EQ(-2, set(tx, "Node=2", 1));
    EXPECT_EQ(-2, set(tx, "Node=1,Slot=1", 1));
    EXPECT_EQ(-2, set(tx, "Node=1", "colour", MoValue::uint32(1)));
}

TEST_P(ManagedObjectContractTest, aValueOfAnotherTypeIsRefusedAndChangesNothing)
{
    const unsigned long tx = begin();

    EXPECT_EQ(-1, set(tx, "Node=1,Port=1", "number", MoValue::text("7")));
    EXPECT_EQ(-1, set(tx, "Node=1,Port=1", "number", MoValue::uint64(8)));
    EXPECT_EQ(-1, set(tx, "Node=1,Port=1", "number", MoValue::none(YALT_MO_ATTRIBUTE_STRING)));

    EXPECT_EQ("uint32 7", get(tx, "Node=1,Port=1", "number"));
}

TEST_P(ManagedObjectContractTest, whatIsGivenIsCopied)
{
    const unsigned long tx = begin();
    std::string text = "before";
    YaltOamSpiMoAttributeValue_3T value{};
    value.stringValue = text.c_str();
    const YaltOamSpiMoAttribute_3T attribute = {YALT_MO_ATTRIBUTE_STRING, 1, &value};
    const YaltOamSpiMoNamedAttribute_3T named = {"names", attribute};
    std::string name = "names";
    objects->setMoAttribute(tx, "Node=1", name.c_str(), &attribute);
    objects->createMo(tx, "", "Node", "2", &named, 1);

    text.replace(0, 6, "behind");
    name = "x";

    EXPECT_EQ("string 'before'", get(tx, "Node=1", "names"));
    EXPECT_EQ("string 'before'", get(tx, "Node=2", "names"));
}

// --- Creating and deleting

TEST_P(ManagedObjectContractTest, aCreatedObjectHasItsInitialValues)
{
    const unsigned long tx = begin();

    EXPECT_EQ(0, create(tx, "Node=1", "Port", "3", {{"number", MoValue::uint32(33)}}));

    EXPECT_EQ("uint32 33", get(tx, "Node=1,Port=3", "number"));
    EXPECT_EQ("true", exists(tx, "Node=1,Port=3"));
    EXPECT_EQ("3", count(tx, "Node=1", "Port"));
    EXPECT_THAT(ports(tx), ElementsAre("Port=1", "Port=2", "Port=3"));
}

TEST_P(ManagedObjectContractTest, aCreatedObjectIsWrittenAndHasChildren)
{
    const unsigned long tx = begin();

    EXPECT_EQ(0, create(tx, "", "Node", "2", {{"number", MoValue::uint32(1)}}));
    EXPECT_EQ(0, create(tx, "Node=2", "Port", "1"));
    EXPECT_EQ(0, set(tx, "Node=2", 2));
    EXPECT_EQ(0, commit(tx));

    EXPECT_EQ("uint32 2", committed("Node=2", "number"));
    EXPECT_EQ("true", exists(begin(), "Node=2,Port=1"));
}

TEST_P(ManagedObjectContractTest, anObjectIsCreatedOnce)
{
    const unsigned long tx = begin();

    EXPECT_EQ(-3, create(tx, "Node=1", "Port", "1", {{"number", MoValue::uint32(8)}}));
    EXPECT_EQ(0, create(tx, "Node=1", "Port", "3"));
    EXPECT_EQ(-3, create(tx, "Node=1", "Port", "3"));

    EXPECT_EQ("uint32 7", get(tx, "Node=1,Port=1", "number"));
    EXPECT_EQ("3", count(tx, "Node=1", "Port"));
}

TEST_P(ManagedObjectContractTest, anObjectIsNotCreatedWithoutItsParent)
{
    const unsigned long tx = begin();

    EXPECT_EQ(-2, create(tx, "Node=2", "Port", "1"));

    EXPECT_EQ("false", exists(tx, "Node=2,Port=1"));
}

TEST_P(ManagedObjectContractTest, deleteTakesAllChildrenAlong)
{
    const unsigned long tx = begin();

    EXPECT_EQ(0, remove(tx, "Node=1"));

    EXPECT_EQ("false", exists(tx, "Node=1"));
    EXPECT_EQ("false", exists(tx, "Node=1,Port=1"));
    EXPECT_EQ("-2", get(tx, "Node=1,Port=2", "number"));
    EXPECT_EQ("0", count(tx, "", "Node"));
    EXPECT_EQ(-2, remove(tx, "Node=1"));
    EXPECT_EQ(-2, set(tx, "Node=1,Port=1", 1));
}

TEST_P(ManagedObjectContractTest, deleteLeavesOthersAlone)
{
    const unsigned long tx = begin();
    create(tx, "Node=1", "Port", "11");

    EXPECT_EQ(0, remove(tx, "Node=1,Port=1"));

    EXPECT_THAT(ports(tx), ElementsAre("Port=2", "Port=11"));
    EXPECT_EQ(-2, remove(tx, "Node=1,Port=1"));
}

TEST_P(ManagedObjectContractTest, aDeletedObjectMayBeCreatedAnew)
{
    const unsigned long tx = begin();
    remove(tx, "Node=1,Port=1");

    EXPECT_EQ(0, create(tx, "Node=1", "Port", "1", {{"number", MoValue::uint32(1)}}));
    EXPECT_EQ(0, commit(tx));

    EXPECT_EQ("uint32 1", committed("Node=1,Port=1", "number"));
    EXPECT_THAT(committedPorts(), ElementsAre("Port=2", "Port=1"));
}

}  // namespace ZorvTest

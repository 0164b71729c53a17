#include <gmock/gmock.h>

#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Iterations

TEST_P(ManagedObjectContractTest, anIterationGivesTheLastPartOfEachChildOfTheClassInOrder)
{
    const unsigned long tx = begin();

    EXPECT_THAT(children(tx, "Node=1", "Port"), ElementsAre("Port=1", "Port=2"));
    EXPECT_THAT(children(tx, "Node=1", "Sample"), ElementsAre("Sample=1"));
}

TEST_P(ManagedObjectContractTest, theEmptyParentIsTheRoot)
{
    const unsigned long tx = begin();

    EXPECT_THAT(children(tx, "", "Node"), ElementsAre("Node=1"));
    EXPECT_EQ("1", count(tx, "", "Node"));
}

TEST_P(ManagedObjectContractTest, onlyDirectChildrenAreMetAndCounted)
{
    const unsigned long tx = begin();

    EXPECT_THAT(children(tx, "", "Port"), IsEmpty());
    EXPECT_EQ("0", count(tx, "", "Port"));
    EXPECT_THAT(children(tx, "Node=1,Port=1", "Port"), IsEmpty());
}

TEST_P(ManagedObjectContractTest, anIterationStaysAtItsEnd)
{
    const unsigned long tx = begin();
    std::uint64_t iterator = 0;
    const char* name = nullptr;
    objects->newMoIterator(tx, "Node=1", "Sample", &iterator);
    objects->nextMo(iterator, &name);

    EXPECT_EQ(-2, objects->nextMo(iterator, &name));
    EXPECT_EQ(-2, objects->nextMo(iterator, &name));

    EXPECT_STREQ("Sample=1", name);
    EXPECT_EQ(0, objects->finalizeMoIterator(iterator));
}

TEST_P(ManagedObjectContractTest, iterationsDoNotDisturbEachOther)
{
    const unsigned long tx = begin();
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    const char* name = nullptr;
    objects->newMoIterator(tx, "Node=1", "Port", &first);
    objects->newMoIterator(tx, "Node=1", "Port", &second);
    objects->nextMo(first, &name);

    EXPECT_EQ(0, objects->nextMo(second, &name));
    EXPECT_STREQ("Port=1", name);
    EXPECT_EQ(0, objects->finalizeMoIterator(second));
    EXPECT_EQ(0, objects->nextMo(first, &name));
    EXPECT_STREQ("Port=2", name);

    EXPECT_EQ(0, objects->finalizeMoIterator(first));
}

TEST_P(ManagedObjectContractTest, namesLiveUntilTheTransactionEnds)
{
    const unsigned long tx = begin();
    std::uint64_t iterator = 0;
    const char* first = nullptr;
    const char* second = nullptr;
    objects->newMoIterator(tx, "Node=1", "Port", &iterator);
    objects->nextMo(iterator, &first);
    objects->nextMo(iterator, &second);
    objects->finalizeMoIterator(iterator);
    remove(tx, "Node=1");
    ports(tx);

    EXPECT_STREQ("Port=1", first);
    EXPECT_STREQ("Port=2", second);
}

TEST_P(ManagedObjectContractTest, aClosedIterationIsNotFound)
{
    const unsigned long tx = begin();
    std::uint64_t iterator = 0;
    const char* name = nullptr;
    objects->newMoIterator(tx, "Node=1", "Port", &iterator);

    EXPECT_EQ(0, objects->finalizeMoIterator(iterator));

    EXPECT_EQ(-2, objects->nextMo(iterator, &name));
    EXPECT_EQ(-2, objects->finalizeMoIterator(iterator));
}

TEST_P(ManagedObjectContractTest, anIterationEndsWithItsTransaction)
{
    const unsigned long tx = begin();
    std::uint64_t iterator = 0;
    const char* name = nullptr;
    objects->newMoIterator(tx, "Node=1", "Port", &iterator);

    commit(tx);

    EXPECT_EQ(-2, objects->nextMo(iterator, &name));
}

TEST_P(ManagedObjectContractTest, anIteratorThatNobodyOpenedIsNotFound)
{
    const char* name = nullptr;

    EXPECT_EQ(-2, objects->nextMo(4711, &name));
    EXPECT_EQ(-2, objects->finalizeMoIterator(4711));

    EXPECT_EQ(nullptr, name);
}

// --- Existence

TEST_P(ManagedObjectContractTest, existsTellsWhatIsThere)
{
    const unsigned long tx = begin();

    EXPECT_EQ("true", exists(tx, "Node=1"));
    EXPECT_EQ("true", exists(tx, "Node=1,Port=2"));
    EXPECT_EQ("false", exists(tx, "Node=1,Port=3"));
    EXPECT_EQ("false", exists(tx, "Port=1"));
    EXPECT_EQ("false", exists(tx, "Node=1,Slot=1"));
    EXPECT_EQ("false", exists(tx, "Node"));
    EXPECT_EQ("false", exists(tx, "Node=1,"));
}

TEST_P(ManagedObjectContractTest, childrenOfOneClassAreCounted)
{
    const unsigned long tx = begin();

    EXPECT_EQ("2", count(tx, "Node=1", "Port"));
    EXPECT_EQ("1", count(tx, "Node=1", "Sample"));
    EXPECT_EQ("0", count(tx, "Node=1,Port=1", "Port"));
}

// --- Attributes

TEST_P(ManagedObjectContractTest, everyTypeOfValueIsRead)
{
    const unsigned long tx = begin();
    const NamesT names = {"int8",   "int16",  "int32",     "int64", "uint8",  "uint16", "uint32",
                          "uint64", "string", "reference", "bool",  "struct", "enum"};

    EXPECT_THAT(get(tx, "Node=1,Sample=1", names),
                ElementsAre("int8 -128", "int16 -32768", "int32 -2147483648", "int64 -9223372036854775808", "uint8 255",
                            "uint16 65535", "uint32 4294967295", "uint64 18446744073709551615",
                            "string '100% L\xC3\xBC"
                            "fter'",
                            "reference 'Node=1,Port=1'", "bool true", "struct {name='a' number=-5}", "enum -1"));
}

TEST_P(ManagedObjectContractTest, aSequenceIsReadInItsOrder)
{
    const unsigned long tx = begin();

    EXPECT_EQ("string ['one', 'two']", get(tx, "Node=1", "names"));
    EXPECT_EQ("int16 [3, -1]", get(tx, "Node=1,Sample=1", "numbers"));
    EXPECT_EQ("struct [{name='a' number=1}, {name='b' number=2}]", get(tx, "Node=1,Sample=1", "structs"));
}

TEST_P(ManagedObjectContractTest, anAttributeWithoutAValueHasItsTypeAndNoValues)
{
    const unsigned long tx = begin();
    YaltOamSpiMoAttributeResult_3T result{};

    ASSERT_EQ(0, objects->getMoAttribute(tx, "Node=1", "number", &result));

    EXPECT_EQ(YALT_MO_ATTRIBUTE_UINT32, result.attribute->type);
    EXPECT_EQ(0U, result.attribute->numberOfValues);
    EXPECT_EQ(nullptr, result.attribute->values);
    EXPECT_EQ(0, result.releaseAttrResultCB(&result));
    EXPECT_EQ("struct none", get(tx, "Node=1,Sample=1", "nothing"));
}

TEST_P(ManagedObjectContractTest, unknownObjectsAndAttributesAreNotFound)
{
    const unsigned long tx = begin();

    EXPECT_EQ("-2", get(tx, "Node=2", "number"));
    EXPECT_EQ("-2", get(tx, "Node=1,Slot=1", "number"));
    EXPECT_EQ("-2", get(tx, "", "number"));
    EXPECT_EQ("-2", get(tx, "Node=1", "colour"));
    EXPECT_EQ("-2", get(tx, "Node=1", ""));
}

TEST_P(ManagedObjectContractTest, severalAttributesComeInTheOrderAsked)
{
    const unsigned long tx = begin();

    EXPECT_THAT(get(tx, "Node=1", NamesT{"number", "names", "number"}),
                ElementsAre("uint32 none", "string ['one', 'two']", "uint32 none"));
    EXPECT_THAT(get(tx, "Node=1", NamesT{}), IsEmpty());
}

TEST_P(ManagedObjectContractTest, severalAttributesFailWithTheFirstThatFails)
{
    const unsigned long tx = begin();

    EXPECT_THAT(get(tx, "Node=1", NamesT{"number", "colour", "names"}), ElementsAre("-2"));
    EXPECT_THAT(get(tx, "Node=2", NamesT{"number"}), ElementsAre("-2"));
}

TEST_P(ManagedObjectContractTest, resultsLiveUntilTheyAreReleasedEachByItself)
{
    const unsigned long tx = begin();
    const char* const names[] = {"number", "names", nullptr};
    const char* const noNames[] = {nullptr};
    YaltOamSpiMoAttributeResult_3T one{};
    YaltOamSpiMoAttributesResult_3T several{};
    YaltOamSpiMoAttributesResult_3T nothing{};
    YaltOamSpiMoAttributesResult_3T nothingElse{};
    ASSERT_EQ(0, objects->getMoAttribute(tx, "Node=1", "names", &one));
    ASSERT_EQ(0, objects->getMoAttributes(tx, "Node=1", names, &several));
    ASSERT_EQ(0, objects->getMoAttributes(tx, "Node=1", noNames, &nothing));
    ASSERT_EQ(0, objects->getMoAttributes(tx, "Node=1", noNames, &nothingElse));

    set(tx, "Node=1", "names", MoValue::text("three"));
    remove(tx, "Node=1");
    EXPECT_EQ(0, nothing.releaseAttributesResultCB(&nothing));
    EXPECT_STREQ("two", several.attributes[1].values[1].stringValue);
    EXPECT_EQ(0, several.releaseAttributesResultCB(&several));
    EXPECT_STREQ("one", one.attribute->values[0].stringValue);
    EXPECT_EQ(0, one.releaseAttrResultCB(&one));
    EXPECT_EQ(0, nothingElse.releaseAttributesResultCB(&nothingElse));
}

TEST_P(ManagedObjectContractTest, aResultThatNobodyReleasedGoesWithItsTransaction)
{
    const unsigned long tx = begin();
    YaltOamSpiMoAttributeResult_3T result{};
    objects->getMoAttribute(tx, "Node=1", "names", &result);

    EXPECT_EQ(0, commit(tx));

    EXPECT_EQ("string ['one', 'two']", committed("Node=1", "names"));
}

TEST_P(ManagedObjectContractTest, noActionIsKnown)
{
    const unsigned long tx = begin();
    YaltOamSpiMoAttributeResult_3T result{};

    EXPECT_EQ(-2, objects->action(tx, "Node=1", "restart", nullptr, 0, &result));
    EXPECT_EQ(-2, objects->action(tx, "Node=2", "restart", nullptr, 0, &result));

    EXPECT_EQ(nullptr, result.attribute);
}

}  // namespace ZorvTest

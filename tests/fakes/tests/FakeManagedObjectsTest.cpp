#include "FakeManagedObjects.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace ZorvFakes {
namespace {

class FakeManagedObjectsTest : public testing::Test {
protected:
    FakeManagedObjectsTest() { objects.plant("Port=1", {{"number", MoValue::uint32(5)}}); }

    std::string read(unsigned long txHandle, const char* dn, const char* attribute)
    {
        YaltOamSpiMoAttributeResult_3T result{};
        const int32_t code = spi.getMoAttribute(txHandle, dn, attribute, &result);
        if (code != 0) {
            return std::to_string(code);
        }
        std::string text = MoValue::fromC(*result.attribute).toString();
        EXPECT_EQ(0, result.releaseAttrResultCB(&result));
        return text;
    }

    int32_t write(unsigned long txHandle, const char* dn, const char* attribute, const MoValue& value)
    {
        const MoCForm form(value);
        const YaltOamSpiMoAttribute_3T attributeForm = form.get();
        return spi.setMoAttribute(txHandle, dn, attribute, &attributeForm);
    }

    Journal journal;
    FakeTransactions transactions{journal};
    FakeManagedObjects objects{journal, transactions};
    const YaltOamSpiManagedObject_3T& spi = *FakeManagedObjects::table();
    const unsigned long tx = transactions.open();
};

TEST_F(FakeManagedObjectsTest, valuesOfEveryKindComeBackAsTheyWerePlanted)
{
    const std::vector<std::pair<MoValue, std::string>> values = {
        {MoValue::uint32(4294967295), "4294967295"},
        {MoValue::uint64(18446744073709551615U), "18446744073709551615"},
        {MoValue::int32(-5), "-5"},
        {MoValue::boolean(true), "true"},
        {MoValue::boolean(false), "false"},
        {MoValue::enumeration(-3), "-3"},
        {MoValue::text("a"), "'a'"},
        {MoValue::texts({"a", "b"}), "['a', 'b']"},
        {MoValue::reference("Port=2"), "'Port=2'"},
        {MoValue::none(YALT_MO_ATTRIBUTE_STRING), "none"},
        {MoValue::structure({{"name", MoValue::text("n")}, {"count", MoValue::uint32(2)}}), "{name='n' count=2}"}};
    for (const auto& [value, text] : values) {
        objects.plant("Port=1", {{"any", value}});

        EXPECT_EQ(text, read(tx, "Port=1", "any"));
    }
}

TEST_F(FakeManagedObjectsTest, nothingIsReadOutsideATransaction)
{
    bool exists = false;
    uint64_t number = 0;
    EXPECT_EQ("-2", read(99, "Port=1", "number"));
    EXPECT_EQ(-2, spi.existsMo(99, "Port=1", &exists));
    EXPECT_EQ(-2, spi.newMoIterator(99, "", "Port", &number));
    EXPECT_EQ(-2, spi.countMoChildren(99, "", "Port", &number));
    EXPECT_EQ(-2, write(99, "Port=1", "number", MoValue::uint32(6)));
}

TEST_F(FakeManagedObjectsTest, writesAreSeenInsideAtOnceAndOutsideAfterTheCommit)
{
    const unsigned long other = transactions.open();
    EXPECT_EQ(0, write(tx, "Port=1", "number", MoValue::uint32(6)));
    EXPECT_EQ("6", read(tx, "Port=1", "number"));
    EXPECT_EQ("5", read(other, "Port=1", "number"));

    EXPECT_EQ(0, transactions.commitTransaction(tx));

    EXPECT_EQ("6", read(other, "Port=1", "number"));
    EXPECT_EQ("6", objects.value("Port=1", "number")->toString());
}

TEST_F(FakeManagedObjectsTest, anAbortForgetsTheWrites)
{
    write(tx, "Port=1", "number", MoValue::uint32(6));
    transactions.abortTransaction(tx);

    EXPECT_EQ("5", objects.value("Port=1", "number")->toString());
}

TEST_F(FakeManagedObjectsTest, writesOfTheWrongTypeOrPlaceAreRefused)
{
    EXPECT_EQ(-1, write(tx, "Port=1", "number", MoValue::uint64(6)));
    EXPECT_EQ(-2, write(tx, "Port=1", "unknown", MoValue::uint32(6)));
    EXPECT_EQ(-2, write(tx, "Port=2", "number", MoValue::uint32(6)));
}

TEST_F(FakeManagedObjectsTest, instancesAreCreatedAndDeletedInTransactions)
{
    bool exists = false;
    const MoCForm seven(MoValue::uint32(7));
    const YaltOamSpiMoNamedAttribute_3T attribute{"number", seven.get()};
    EXPECT_EQ(0, spi.createMo(tx, "Port=1", "Link", "a", &attribute, 1));
    EXPECT_EQ(-3, spi.createMo(tx, "Port=1", "Link", "a", nullptr, 0));
    EXPECT_EQ(-2, spi.createMo(tx, "Port=9", "Link", "a", nullptr, 0));
    EXPECT_EQ("7", read(tx, "Port=1,Link=a", "number"));
    EXPECT_FALSE(objects.value("Port=1,Link=a", "number").has_value());

    EXPECT_EQ(0, spi.deleteMo(tx, "Port=1"));
    EXPECT_EQ(-2, spi.deleteMo(tx, "Port=1"));
    EXPECT_EQ(0, spi.existsMo(tx, "Port=1,Link=a", &exists));
    EXPECT_FALSE(exists);
    EXPECT_EQ(-2, spi.action(tx, "Port=1", "reset", nullptr, 0, nullptr));
    transactions.commitTransaction(tx);
    EXPECT_FALSE(objects.value("Port=1", "number").has_value());
}

TEST_F(FakeManagedObjectsTest, iterationsGiveTheChildrenOfOneClass)
{
    objects.plant("Port=2");
    objects.plant("Port=2,Link=1");
    objects.plant("Portal=1");
    uint64_t iterator = 0;
    uint64_t count = 0;
    const char* name = nullptr;
    journal.take();

    EXPECT_EQ(0, spi.newMoIterator(tx, "", "Port", &iterator));
    EXPECT_EQ(0, spi.nextMo(iterator, &name));
    EXPECT_STREQ("Port=1", name);
    EXPECT_EQ(0, spi.nextMo(iterator, &name));
    EXPECT_STREQ("Port=2", name);
    EXPECT_EQ(-2, spi.nextMo(iterator, &name));
    EXPECT_EQ(1U, objects.openIterators());
    EXPECT_EQ(0, spi.finalizeMoIterator(iterator));
    EXPECT_EQ(-2, spi.finalizeMoIterator(iterator));
    EXPECT_EQ(0, spi.countMoChildren(tx, "Port=2", "Link", &count));

    EXPECT_EQ(1U, count);
    EXPECT_THAT(journal.take(), ElementsAre("newMoIterator  Port -> 0", "nextMo -> 0 Port=1", "nextMo -> 0 Port=2",
                                            "nextMo -> -2", "finalizeMoIterator -> 0", "finalizeMoIterator -> -2",
                                            "countMoChildren Port=2 Link -> 0 1"));
}

TEST_F(FakeManagedObjectsTest, severalAttributesComeInTheOrderAsked)
{
    objects.plant("Port=1", {{"text", MoValue::text("t")}});
    const char* names[] = {"text", "number", nullptr};
    const char* wrong[] = {"text", "unknown", nullptr};
    YaltOamSpiMoAttributesResult_3T result{};

    EXPECT_EQ(-2, spi.getMoAttributes(tx, "Port=1", wrong, &result));
    EXPECT_EQ(0, spi.getMoAttributes(tx, "Port=1", names, &result));

    ASSERT_EQ(2U, result.numberOfAttributes);
    EXPECT_EQ("'t'", MoValue::fromC(result.attributes[0]).toString());
    EXPECT_EQ("5", MoValue::fromC(result.attributes[1]).toString());
    EXPECT_EQ(0, result.releaseAttributesResultCB(&result));
}

TEST_F(FakeManagedObjectsTest, resultsNotReleasedOrReleasedTwiceAreCounted)
{
    YaltOamSpiMoAttributeResult_3T kept{};
    YaltOamSpiMoAttributeResult_3T released{};
    spi.getMoAttribute(tx, "Port=1", "number", &kept);
    spi.getMoAttribute(tx, "Port=1", "number", &released);
    EXPECT_EQ(0, released.releaseAttrResultCB(&released));
    EXPECT_EQ(-1, released.releaseAttrResultCB(&released));
    transactions.commitTransaction(tx);

    EXPECT_EQ(1U, objects.unreleased());
    EXPECT_EQ(1U, objects.wrongReleases());
}

TEST_F(FakeManagedObjectsTest, theEndOfATransactionEndsItsIterations)
{
    uint64_t iterator = 0;
    spi.newMoIterator(tx, "", "Port", &iterator);
    transactions.abortTransaction(tx);

    EXPECT_EQ(0U, objects.openIterators());
}

TEST_F(FakeManagedObjectsTest, failuresAreNamedByObjectAndAttribute)
{
    objects.plant("Port=2", {{"number", MoValue::uint32(6)}});
    objects.failAlways("getMoAttribute Port=1 number", -1);

    EXPECT_EQ("-1", read(tx, "Port=1", "number"));
    EXPECT_EQ("6", read(tx, "Port=2", "number"));
}

TEST_F(FakeManagedObjectsTest, instancesAndAttributesCanBeTakenAway)
{
    objects.plant("Port=1,Link=1", {{"number", MoValue::uint32(6)}});
    objects.removeAttribute("Port=1", "number");
    EXPECT_EQ("-2", read(tx, "Port=1", "number"));
    EXPECT_EQ("6", read(tx, "Port=1,Link=1", "number"));

    objects.remove("Port=1");
    EXPECT_EQ("-2", read(tx, "Port=1,Link=1", "number"));
}

// --- Transactions

std::vector<std::string> resourceCalls;
int32_t prepareResult = 0;

template <char operation>
int32_t onResource(unsigned long txHandle)
{
    resourceCalls.push_back(operation + std::to_string(txHandle));
    return operation == 'p' ? prepareResult : 0;
}

class FakeTransactionsTest : public FakeManagedObjectsTest {
protected:
    FakeTransactionsTest()
    {
        resourceCalls.clear();
        prepareResult = 0;
        EXPECT_EQ(0, FakeTransactions::participantTable()->registerParticipant(tx, &resource));
        EXPECT_EQ(0, FakeTransactions::participantTable()->registerParticipant(tx, &resource));
        journal.take();
    }

    const YaltOamSpiTransactionalResource_1T resource{&onResource<'j'>, &onResource<'p'>, &onResource<'c'>,
                                                      &onResource<'a'>, &onResource<'f'>};
    const ZorvOamSpiTransactionMaster_1T& master = *FakeTransactions::masterTable();
};

TEST_F(FakeTransactionsTest, participantsPrepareCommitAndFinish)
{
    EXPECT_EQ(0, master.commitTransaction(tx));
    EXPECT_EQ(-2, master.commitTransaction(tx));

    EXPECT_THAT(resourceCalls, ElementsAre("p1", "c1", "f1"));
    EXPECT_EQ(1U, transactions.committed());
    EXPECT_EQ(-2, FakeTransactions::participantTable()->registerParticipant(tx, &resource));
}

TEST_F(FakeTransactionsTest, oneThatCannotPrepareAbortsAll)
{
    prepareResult = -1;
    write(tx, "Port=1", "number", MoValue::uint32(6));

    EXPECT_EQ(-1, master.commitTransaction(tx));

    EXPECT_THAT(resourceCalls, ElementsAre("p1", "a1", "f1"));
    EXPECT_EQ("5", objects.value("Port=1", "number")->toString());
    EXPECT_EQ(1U, transactions.aborted());
}

TEST_F(FakeTransactionsTest, anAbortIsToldToTheParticipants)
{
    EXPECT_EQ(0, master.abortTransaction(tx));
    EXPECT_EQ(-2, master.abortTransaction(tx));

    EXPECT_THAT(resourceCalls, ElementsAre("a1", "f1"));
}

TEST_F(FakeTransactionsTest, aCommitThatFailsByPlanEndsTheTransaction)
{
    transactions.failNext("commitTransaction", -1);

    EXPECT_EQ(-1, master.commitTransaction(tx));

    EXPECT_FALSE(transactions.isOpen(tx));
    EXPECT_THAT(resourceCalls, ElementsAre("a1", "f1"));
}

TEST_F(FakeTransactionsTest, timeoutsOutsideTheBoundsAreRefused)
{
    unsigned long handle = 0;
    EXPECT_EQ(-1, master.createTransaction(0, 0, &handle));
    EXPECT_EQ(-1, master.createTransaction(0, 86401, &handle));
    EXPECT_EQ(0, master.createTransaction(1, 86400, &handle));

    EXPECT_TRUE(transactions.isOpen(handle));
    EXPECT_EQ(2U, transactions.begun());
    EXPECT_THAT(journal.take(), ElementsAre("createTransaction 0 0 -> -1", "createTransaction 0 86401 -> -1",
                                            "createTransaction 1 86400 -> 0"));
}

}  // namespace
}  // namespace ZorvFakes

#include "MoAccessor.hpp"

#include "CommonTest.hpp"
#include "ZorvException.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::MoValue;
using ZorvFakes::Topic;

namespace Zorv {
namespace {

constexpr const char* fmDn = "ManagedElement=1,SystemFunctions=1,Fm=1";

/// The text of the exception that the operation throws.
template <class OperationT>
std::string reasonOf(OperationT operation)
{
    try {
        operation();
    } catch (const ZorvException& e) {
        return e.what();
    }
    return "nothing was thrown";
}

class MoAccessorTest : public CommonTest {
protected:
    MoAccessorTest()
    {
        middleware.objects.plant("Port=1", {{"number", MoValue::uint32(4294967295)},
                                            {"big", MoValue::uint64(18446744073709551615U)},
                                            {"flag", MoValue::boolean(true)},
                                            {"kind", MoValue::enumeration(-3)},
                                            {"text", MoValue::text("%s%n")},
                                            {"emptyText", MoValue::text("")},
                                            {"noNumber", MoValue::none(YALT_MO_ATTRIBUTE_UINT32)},
                                            {"noKind", MoValue::none(YALT_MO_ATTRIBUTE_ENUM)},
                                            {"noText", MoValue::none(YALT_MO_ATTRIBUTE_STRING)},
                                            {"texts", MoValue::texts({"a", "b"})},
                                            {"other", MoValue::reference("Port=2")}});
    }

    ~MoAccessorTest() override
    {
        accessor.reset();
        EXPECT_EQ(0U, middleware.objects.unreleased());
        EXPECT_EQ(0U, middleware.objects.wrongReleases());
        EXPECT_EQ(0U, middleware.objects.openIterators());
        EXPECT_EQ(middleware.transactions.begun(),
                  middleware.transactions.committed() + middleware.transactions.aborted());
    }

    std::optional<MoAccessor> accessor{std::in_place, ZORV_LOCK_POLICY_OPTIMISTIC, 60U};
};

// --- The transaction around it

TEST_F(MoAccessorTest, anUnusedAccessorCostsNothing)
{
    EXPECT_EQ(0, accessor->commit());
    accessor->close();
    accessor.reset();

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(MoAccessorTest, theTransactionBeginsWithTheFirstAccess)
{
    accessor->getAttr<uint32_t>("Port=1", "number");
    accessor->getAttr<bool>("Port=1", "flag");

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "getMoAttribute Port=1 number -> 0",
                                       "getMoAttribute Port=1 flag -> 0"));
}

TEST_F(MoAccessorTest, closeEndsItWithoutEffect)
{
    EXPECT_EQ(0, accessor->setAttr("Port=1", "number", uint32_t{5}));
    accessor->close();
    accessor->close();

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "setMoAttribute Port=1 number 5 -> 0",
                                       "abortTransaction -> 0"));
    EXPECT_EQ("4294967295", middleware.objects.value("Port=1", "number")->toString());
}

TEST_F(MoAccessorTest, theDestructorEndsItWithoutEffect)
{
    accessor->setAttr("Port=1", "number", uint32_t{5});
    accessor.reset();

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "setMoAttribute Port=1 number 5 -> 0",
                                       "abortTransaction -> 0"));
}

TEST_F(MoAccessorTest, commitMakesTheWritesTakeEffect)
{
    accessor->setAttr("Port=1", "number", uint32_t{5});
    EXPECT_EQ(0, accessor->commit());

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "setMoAttribute Port=1 number 5 -> 0",
                                       "commitTransaction -> 0"));
    EXPECT_EQ("5", middleware.objects.value("Port=1", "number")->toString());
}

TEST_F(MoAccessorTest, aFailedCommitAnswersWithItsCode)
{
    middleware.transactions.failNext("commitTransaction", ZORV_RETURN_FAILED);
    accessor->setAttr("Port=1", "number", uint32_t{5});

    EXPECT_EQ(-1, accessor->commit());

    EXPECT_EQ("4294967295", middleware.objects.value("Port=1", "number")->toString());
}

TEST_F(MoAccessorTest, anAccessAfterTheEndBeginsAnew)
{
    accessor->setAttr("Port=1", "number", uint32_t{5});
    accessor->commit();
    journal();

    EXPECT_EQ(5U, accessor->getAttr<uint32_t>("Port=1", "number"));

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "getMoAttribute Port=1 number -> 0"));
}

TEST_F(MoAccessorTest, theFirstAccessThrowsWithoutATransaction)
{
    middleware.transactions.failNext("createTransaction", ZORV_RETURN_NO_RESOURCES);
    EXPECT_EQ("Failed to create transaction, reason (-10 )!",
              reasonOf([&] { accessor->getAttr<uint32_t>("Port=1", "number"); }));

    EXPECT_EQ(4294967295U, accessor->getAttr<uint32_t>("Port=1", "number"));
}

TEST_F(MoAccessorTest, theFirstAccessThrowsWithoutTheServices)
{
    middleware.portal.withdraw("ZorvOamSpiTransactionMaster");
    EXPECT_EQ("Transaction service is missing", reasonOf([&] { accessor->setAttr("Port=1", "number", uint32_t{5}); }));

    middleware.portal.withdraw("ZorvOamSpiManagedObject");
    std::list<std::string> children;
    EXPECT_EQ("Managed object service is missing", reasonOf([&] { accessor->getChildren("", "Port", children); }));
    EXPECT_THAT(journal(), IsEmpty());
}

// --- Typed reads

TEST_F(MoAccessorTest, readsEachType)
{
    EXPECT_EQ(4294967295U, accessor->getAttr<uint32_t>("Port=1", "number"));
    EXPECT_EQ(18446744073709551615U, accessor->getAttr<uint64_t>("Port=1", "big"));
    EXPECT_TRUE(accessor->getAttr<bool>("Port=1", "flag"));
    EXPECT_EQ(-3, accessor->getAttr<Enumeration>("Port=1", "kind").value);
    EXPECT_EQ("%s%n", accessor->getAttr<std::string>("Port=1", "text"));
    EXPECT_EQ("", accessor->getAttr<std::string>("Port=1", "emptyText"));
}

TEST_F(MoAccessorTest, readsOptionalValues)
{
    EXPECT_EQ(4294967295U, accessor->getOptionalAttr<uint32_t>("Port=1", "number"));
    EXPECT_EQ(-3, accessor->getOptionalAttr<Enumeration>("Port=1", "kind")->value);
    EXPECT_EQ("%s%n", accessor->getOptionalAttr<std::string>("Port=1", "text"));
    EXPECT_FALSE(accessor->getOptionalAttr<uint32_t>("Port=1", "noNumber").has_value());
    EXPECT_FALSE(accessor->getOptionalAttr<Enumeration>("Port=1", "noKind").has_value());
    EXPECT_FALSE(accessor->getOptionalAttr<std::string>("Port=1", "noText").has_value());
}

TEST_F(MoAccessorTest, readsAreTraced)
{
    middleware.journal.showOnly({Topic::Trace});

    accessor->getAttr<uint32_t>("Port=1", "number");
    accessor->getOptionalAttr<uint32_t>("Port=1", "noNumber");

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM MoAccessor::getAttr<> dName :Port=1 attrName :number",
                                       "trace 8 FM MoAccessor::getOptionalAttr<> dName :Port=1 attrName :noNumber"));
}

TEST_F(MoAccessorTest, aReadThatFailsThrowsWithTheCode)
{
    EXPECT_EQ("Failed to write 'unknown' from MO ( error:-2 )!",
              reasonOf([&] { accessor->getAttr<uint32_t>("Port=1", "unknown"); }));
    EXPECT_EQ("Failed to write 'number' from MO ( error:-2 )!",
              reasonOf([&] { accessor->getAttr<uint32_t>("Port=9", "number"); }));
    middleware.objects.failNext("getMoAttribute Port=1 number", ZORV_RETURN_FAILED);
    EXPECT_EQ("Failed to write 'number' from MO ( error:-1 )!",
              reasonOf([&] { accessor->getOptionalAttr<uint32_t>("Port=1", "number"); }));
}

TEST_F(MoAccessorTest, aMissingValueThrowsWhereOneIsDemanded)
{
    EXPECT_EQ("Attribute has no value set: Port=1::noNumber",
              reasonOf([&] { accessor->getAttr<uint32_t>("Port=1", "noNumber"); }));
    EXPECT_EQ("Attribute has no value set: Port=1::noText",
              reasonOf([&] { accessor->getAttr<std::string>("Port=1", "noText"); }));
}

TEST_F(MoAccessorTest, aSequenceThrows)
{
    EXPECT_EQ("Attribute is a sequence: Port=1::texts",
              reasonOf([&] { accessor->getAttr<std::string>("Port=1", "texts"); }));
    EXPECT_EQ("Attribute is a sequence: Port=1::texts",
              reasonOf([&] { accessor->getOptionalAttr<std::string>("Port=1", "texts"); }));
}

TEST_F(MoAccessorTest, anotherTypeThrows)
{
    EXPECT_EQ("Attribute has another type: Port=1::text",
              reasonOf([&] { accessor->getAttr<uint32_t>("Port=1", "text"); }));
    EXPECT_EQ("Attribute has another type: Port=1::number",
              reasonOf([&] { accessor->getAttr<std::string>("Port=1", "number"); }));
    EXPECT_EQ("Attribute has another type: Port=1::number",
              reasonOf([&] { accessor->getAttr<uint64_t>("Port=1", "number"); }));
    EXPECT_EQ("Attribute has another type: Port=1::big",
              reasonOf([&] { accessor->getOptionalAttr<uint32_t>("Port=1", "big"); }));
    EXPECT_EQ("Attribute has another type: Port=1::number",
              reasonOf([&] { accessor->getOptionalAttr<Enumeration>("Port=1", "number"); }));
    EXPECT_EQ("Attribute has another type: Port=1::kind", reasonOf([&] { accessor->getAttr<bool>("Port=1", "kind"); }));
}

// --- Typed writes

TEST_F(MoAccessorTest, writesEachType)
{
    EXPECT_EQ(0, accessor->setAttr("Port=1", "number", uint32_t{4294967295}));
    EXPECT_EQ(0, accessor->setAttr("Port=1", "big", uint64_t{18446744073709551615U}));
    EXPECT_EQ(0, accessor->setAttr("Port=1", "text", std::string("%s%n")));

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "setMoAttribute Port=1 number 4294967295 -> 0",
                                       "setMoAttribute Port=1 big 18446744073709551615 -> 0",
                                       "setMoAttribute Port=1 text '%s%n' -> 0"));
}

TEST_F(MoAccessorTest, writesAreTraced)
{
    middleware.journal.showOnly({Topic::Trace});

    accessor->setAttr("Port=1", "number", uint32_t{5});

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM MoAccessor::setAttr<> dName :Port=1 attrName :number"));
}

TEST_F(MoAccessorTest, aWriteThatFailsAnswersWithTheCodeAndIsLogged)
{
    middleware.journal.showOnly({Topic::Log});
    middleware.objects.failNext("setMoAttribute Port=1 text", ZORV_RETURN_NO_RESOURCES);

    EXPECT_EQ(-1, accessor->setAttr("Port=1", "number", uint64_t{5}));
    EXPECT_EQ(-2, accessor->setAttr("Port=9", "number", uint32_t{5}));
    EXPECT_EQ(-10, accessor->setAttr("Port=1", "text", std::string("x")));

    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to set attribute :'number' in MO :Port=1, reason (-1 )!",
                                       "log 3 Failed to set attribute :'number' in MO :Port=9, reason (-2 )!",
                                       "log 3 Failed to set attribute :'text' in MO :Port=1, reason (-10 )!"));
}

// --- Walks through the tree

TEST_F(MoAccessorTest, childrenComeInTheModelsOrderWithTheirWholeNames)
{
    middleware.fmModel.plant();
    middleware.fmModel.plantModel("second");
    middleware.fmModel.plantModel("first");
    journal();

    std::list<std::string> children{"already there"};
    accessor->getChildren(fmDn, "FmAlarmModel", children);

    EXPECT_THAT(children, ElementsAre("already there", std::string(fmDn) + ",FmAlarmModel=second",
                                      std::string(fmDn) + ",FmAlarmModel=first"));
    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0",
                                       "newMoIterator ManagedElement=1,SystemFunctions=1,Fm=1 FmAlarmModel -> 0",
                                       "nextMo -> 0 FmAlarmModel=second", "nextMo -> 0 FmAlarmModel=first",
                                       "nextMo -> -2", "finalizeMoIterator -> 0"));
}

TEST_F(MoAccessorTest, noChildrenAreNoFailure)
{
    std::list<std::string> children;
    accessor->getChildren("Port=1", "Link", children);

    EXPECT_THAT(children, IsEmpty());
}

TEST_F(MoAccessorTest, aWalkThatCannotBeginThrows)
{
    middleware.objects.failNext("newMoIterator", ZORV_RETURN_FAILED);
    std::list<std::string> children;

    EXPECT_EQ("Failed to get children 'Link' of MO :Port=1, reason (-1 )!",
              reasonOf([&] { accessor->getChildren("Port=1", "Link", children); }));
    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "newMoIterator Port=1 Link -> -1"));
}

TEST_F(MoAccessorTest, aWalkThatBreaksOffThrowsAndIsClosed)
{
    middleware.objects.plant("Port=1,Link=1");
    middleware.objects.plant("Port=1,Link=2");
    middleware.objects.failAt("nextMo", 2, ZORV_RETURN_FAILED);
    std::list<std::string> children;

    EXPECT_EQ("Failed to get children 'Link' of MO :Port=1, reason (-1 )!",
              reasonOf([&] { accessor->getChildren("Port=1", "Link", children); }));
    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "newMoIterator Port=1 Link -> 0",
                                       "nextMo -> 0 Link=1", "nextMo -> -1", "finalizeMoIterator -> 0"));
}

TEST_F(MoAccessorTest, theFirstInstanceOfAClassPathIsFound)
{
    middleware.fmModel.plant();
    std::string dn;

    EXPECT_EQ(0, accessor->getFirstMoInstance("ManagedElement,SystemFunctions,Fm", dn));

    EXPECT_EQ(fmDn, dn);
}

TEST_F(MoAccessorTest, branchesThatEndAreLeft)
{
    middleware.objects.plant("ManagedElement=1");
    middleware.objects.plant("ManagedElement=2");
    middleware.objects.plant("ManagedElement=2,SystemFunctions=1");
    middleware.objects.plant("ManagedElement=2,SystemFunctions=2");
    middleware.objects.plant("ManagedElement=2,SystemFunctions=2,Fm=7");
    std::string dn;

    EXPECT_EQ(0, accessor->getFirstMoInstance("ManagedElement,SystemFunctions,Fm", dn));

    EXPECT_EQ("ManagedElement=2,SystemFunctions=2,Fm=7", dn);
}

TEST_F(MoAccessorTest, aPathWithoutAnInstanceIsNotFound)
{
    middleware.objects.plant("ManagedElement=1");
    std::string dn = "untouched";

    EXPECT_EQ(-2, accessor->getFirstMoInstance("ManagedElement,SystemFunctions,Fm", dn));
    EXPECT_EQ(-2, accessor->getFirstMoInstance("Unknown", dn));

    EXPECT_EQ("untouched", dn);
}

TEST_F(MoAccessorTest, aPathThatCannotBeWalkedAnswersWithTheCode)
{
    middleware.objects.failNext("newMoIterator", ZORV_RETURN_FAILED);
    std::string dn = "untouched";

    EXPECT_EQ(-1, accessor->getFirstMoInstance("ManagedElement", dn));

    EXPECT_EQ("untouched", dn);
}

}  // namespace
}  // namespace Zorv

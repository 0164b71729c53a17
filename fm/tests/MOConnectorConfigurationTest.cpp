#include "ConnectorTest.hpp"
#include "FmConfig.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::MoValue;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;
using ZorvFakes::FmJournal::fmObjectFound;

namespace ZorvFm {
namespace {

class MOConnectorConfigurationTest : public ConnectorTest {
protected:
    MOConnectorConfigurationTest() { config.setHeartbeatInterval(45); }

    /// The interval after the model was read.
    unsigned int interval()
    {
        connector.updateConfiguration(config);
        return config.getHeartbeatInterval();
    }

    FmConfig config;
};

TEST_F(MOConnectorConfigurationTest, theHeartbeatIntervalIsReadFromTheFmObject)
{
    middleware.fmModel.setHeartbeatInterval(30);

    EXPECT_EQ(30U, interval());

    EXPECT_THAT(journal(), ElementsAreArray(all({{"createTransaction 1 60 -> 0"},
                                                 fmObjectFound(),
                                                 attributes(fmDn, {"heartbeatInterval"}),
                                                 {"abortTransaction -> 0"}})));
}

TEST_F(MOConnectorConfigurationTest, isTraced)
{
    findFmObject();
    middleware.journal.showOnly({Topic::Trace});

    interval();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ",
                                       "trace 8 FM MoAccessor::getOptionalAttr<> dName :" + std::string(fmDn) +
                                           " attrName :heartbeatInterval",
                                       "trace 8 FM  << "));
}

TEST_F(MOConnectorConfigurationTest, theLargestIntervalIsTaken)
{
    middleware.fmModel.setHeartbeatInterval(4294967295);

    EXPECT_EQ(4294967295U, interval());
}

TEST_F(MOConnectorConfigurationTest, zeroLeavesThePresentInterval)
{
    middleware.fmModel.setHeartbeatInterval(0);

    EXPECT_EQ(45U, interval());
}

TEST_F(MOConnectorConfigurationTest, noValueLeavesThePresentIntervalWithoutAWord)
{
    middleware.fmModel.setHeartbeatInterval(std::nullopt);
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ(45U, interval());

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(MOConnectorConfigurationTest, aReadFailureIsLoggedWithItsReasonAndLeavesThePresentInterval)
{
    findFmObject();
    middleware.objects.failNext("getMoAttribute", ZORV_RETURN_FAILED);

    EXPECT_EQ(45U, interval());

    EXPECT_THAT(journal(),
                ElementsAre("createTransaction 1 60 -> 0",
                            "getMoAttribute " + std::string(fmDn) + " heartbeatInterval -> -1",
                            "log 3 Failed to retrieve values from MO! reason Failed to write 'heartbeatInterval' from "
                            "MO ( error:-1 )!",
                            "abortTransaction -> 0"));
}

TEST_F(MOConnectorConfigurationTest, aSequenceIsAReadFailure)
{
    middleware.objects.plant(fmDn, {{"heartbeatInterval", MoValue::texts({"1", "2"})}});
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ(45U, interval());

    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to retrieve values from MO! reason Attribute is a sequence: " +
                                       std::string(fmDn) + "::heartbeatInterval"));
}

TEST_F(MOConnectorConfigurationTest, withoutAnFmObjectTheDefaultNameIsTried)
{
    middleware.objects.remove(fmDn);
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ(45U, interval());

    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to get FM base MO",
                                       "log 3 Failed to retrieve values from MO! reason Failed to write "
                                       "'heartbeatInterval' from MO ( error:-2 )!"));
}

TEST_F(MOConnectorConfigurationTest, withoutTheServicesThePresentIntervalIsLeft)
{
    middleware.portal.withdraw("ZorvOamSpiTransactionMaster");

    EXPECT_EQ(45U, interval());

    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to get FM base MO",
                                       "log 3 Failed to retrieve values from MO! reason Transaction service is "
                                       "missing"));
}

TEST_F(MOConnectorConfigurationTest, aTransactionThatIsRefusedLeavesThePresentInterval)
{
    findFmObject();
    middleware.transactions.failNext("createTransaction", ZORV_RETURN_FAILED);

    EXPECT_EQ(45U, interval());

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> -1",
                                       "log 3 Failed to retrieve values from MO! reason Failed to create transaction, "
                                       "reason (-1 )!"));
}

}  // namespace
}  // namespace ZorvFm

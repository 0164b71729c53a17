#include "MeIdTranslator.hpp"

#include <thread>
#include <vector>

#include "CommonTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::MoValue;

namespace Zorv {
namespace {

class MeIdTranslatorTest : public CommonTest {
protected:
    MeIdTranslatorTest()
    {
        middleware.fmModel.plant();
        translator.start();
    }

    ~MeIdTranslatorTest() override { translator.stop(); }

    /// What one look into the model takes, when it succeeds.
    static std::vector<std::string> oneReading(const std::string& rdn = "ManagedElement=1")
    {
        return {"createTransaction 0 60 -> 0", "getMoAttribute " + rdn + " externalId -> 0", "abortTransaction -> 0"};
    }

    MeIdTranslator& translator = MeIdTranslator::instance();
};

TEST_F(MeIdTranslatorTest, theFirstPartGetsTheExternalName)
{
    middleware.fmModel.setExternalId("router-17");

    EXPECT_EQ("ManagedElement=router-17,Slot=2,Port=4", translator.toExternalDn("ManagedElement=1,Slot=2,Port=4"));
    EXPECT_EQ("ManagedElement=router-17", translator.toExternalDn("ManagedElement=1"));
}

TEST_F(MeIdTranslatorTest, onlyTheFirstPartIsTranslated)
{
    middleware.fmModel.setExternalId("router-17");

    EXPECT_EQ("ManagedElement=router-17,ManagedElement=1",
              translator.toExternalDn("ManagedElement=1,ManagedElement=1"));
    EXPECT_EQ("Node=1,ManagedElement=1", translator.toExternalDn("Node=1,ManagedElement=1"));
}

TEST_F(MeIdTranslatorTest, namesThatBelongToNoElementPassWithoutALook)
{
    for (const char* dn : {"", "Port=4", "ManagedElementX=1,Port=4", ",", "no name at all"}) {
        EXPECT_EQ(dn, translator.toExternalDn(dn));
    }
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(MeIdTranslatorTest, withoutAnExternalNameTheDnStaysAsItIs)
{
    EXPECT_EQ("ManagedElement=1,Port=4", translator.toExternalDn("ManagedElement=1,Port=4"));

    middleware.fmModel.setExternalId("");
    translator.modelChanged();
    EXPECT_EQ("ManagedElement=1,Port=4", translator.toExternalDn("ManagedElement=1,Port=4"));
}

TEST_F(MeIdTranslatorTest, theModelIsReadOnceForAName)
{
    middleware.fmModel.setExternalId("router-17");
    translator.toExternalDn("ManagedElement=1,Port=4");
    EXPECT_EQ(oneReading(), journal());

    translator.toExternalDn("ManagedElement=1,Port=5");
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(MeIdTranslatorTest, eachElementHasItsOwnName)
{
    middleware.fmModel.setExternalId("router-17");
    middleware.objects.plant("ManagedElement=2", {{"externalId", MoValue::text("router-18")}});

    EXPECT_EQ("ManagedElement=router-18,Port=4", translator.toExternalDn("ManagedElement=2,Port=4"));
    EXPECT_EQ("ManagedElement=router-17,Port=4", translator.toExternalDn("ManagedElement=1,Port=4"));
}

TEST_F(MeIdTranslatorTest, aChangedModelIsReadAgain)
{
    middleware.fmModel.setExternalId("router-17");
    translator.toExternalDn("ManagedElement=1");
    middleware.fmModel.setExternalId("router-18");
    EXPECT_EQ("ManagedElement=router-17", translator.toExternalDn("ManagedElement=1"));

    translator.modelChanged();

    EXPECT_EQ("ManagedElement=router-18", translator.toExternalDn("ManagedElement=1"));
}

TEST_F(MeIdTranslatorTest, startAndStopForgetTheNames)
{
    middleware.fmModel.setExternalId("router-17");
    translator.toExternalDn("ManagedElement=1");
    middleware.fmModel.setExternalId("router-18");
    translator.stop();
    EXPECT_EQ("ManagedElement=router-18", translator.toExternalDn("ManagedElement=1"));

    middleware.fmModel.setExternalId("router-19");
    translator.start();
    EXPECT_EQ("ManagedElement=router-19", translator.toExternalDn("ManagedElement=1"));
}

TEST_F(MeIdTranslatorTest, anUnreadableModelPassesTheDnOnAndWarnsOnce)
{
    middleware.objects.failAlways("getMoAttribute", ZORV_RETURN_FAILED);

    EXPECT_EQ("ManagedElement=1,Port=4", translator.toExternalDn("ManagedElement=1,Port=4"));
    EXPECT_EQ("ManagedElement=1,Port=5", translator.toExternalDn("ManagedElement=1,Port=5"));

    EXPECT_THAT(journal(), ElementsAre("createTransaction 0 60 -> 0",
                                       "getMoAttribute ManagedElement=1 externalId -> -1", "abortTransaction -> 0",
                                       "log 4 Could not read the external name of ManagedElement=1, reason "
                                       "Failed to write 'externalId' from MO ( error:-1 )!"));
}

TEST_F(MeIdTranslatorTest, withoutServicesTheDnPassesOn)
{
    middleware.portal.withdraw("ZorvOamSpiManagedObject");

    EXPECT_EQ("ManagedElement=1", translator.toExternalDn("ManagedElement=1"));
    EXPECT_THAT(journal(), ElementsAre("log 4 Could not read the external name of ManagedElement=1, reason "
                                       "Managed object service is missing"));
}

TEST_F(MeIdTranslatorTest, anyNumberOfForeignNamesKeepsTheMemoryBounded)
{
    middleware.fmModel.setExternalId("router-17");
    middleware.journal.showOnly({});
    translator.toExternalDn("ManagedElement=1");
    for (int i = 2; i < 1002; ++i) {
        translator.toExternalDn("ManagedElement=" + std::to_string(i));
    }

    middleware.journal.showOnly({ZorvFakes::Topic::Transaction, ZorvFakes::Topic::Model});
    EXPECT_EQ("ManagedElement=router-17", translator.toExternalDn("ManagedElement=1"));
    EXPECT_EQ(oneReading(), journal());
}

TEST_F(MeIdTranslatorTest, threadsMayTranslateWhileTheModelChanges)
{
    middleware.fmModel.setExternalId("router-17");
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this] {
            for (int round = 0; round < 200; ++round) {
                EXPECT_EQ("ManagedElement=router-17,Port=4", translator.toExternalDn("ManagedElement=1,Port=4"));
                translator.modelChanged();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace Zorv

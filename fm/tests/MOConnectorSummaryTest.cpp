#include "ConnectorTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class MOConnectorSummaryTest : public ConnectorTest {
protected:
    MOConnectorSummaryTest() { findFmObject(); }

    static std::string set(const std::string& attribute, const std::string& value, int code = 0)
    {
        return "setMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 " + attribute + " " + value + " -> " +
               std::to_string(code);
    }

    /// Writes 5 alarms: 1 critical, 2 major, 0 minor, 2 warnings.
    ZorvReturnT write() { return connector.updateVeskAttributes(18446744073709551615U, "now", 5, 1, 2, 0, 2); }

    const Entries begin = {"createTransaction 1 60 -> 0"};
    const Entries commit = {"commitTransaction -> 0"};
    const Entries numberAndTime = {set("lastSequenceNo", "18446744073709551615"), set("lastChanged", "'now'")};
    const Entries counters = {set("totalActive", "5"), set("sumCritical", "1"), set("sumMajor", "2"),
                              set("sumMinor", "0"), set("sumWarning", "2")};
    const std::string unwritten =
        "lastSequenceNo=0 lastChanged='' totalActive=0 sumCritical=0 sumMajor=0 sumMinor=0 sumWarning=0";
};

TEST_F(MOConnectorSummaryTest, theFirstWriteWritesEverything)
{
    EXPECT_EQ(0, write());

    EXPECT_THAT(journal(), ElementsAreArray(all({begin, numberAndTime, counters, commit})));
    EXPECT_EQ("lastSequenceNo=18446744073709551615 lastChanged='now' totalActive=5 sumCritical=1 sumMajor=2 sumMinor=0 "
              "sumWarning=2",
              middleware.fmModel.summary());
}

TEST_F(MOConnectorSummaryTest, theSameCountersAreWrittenOnce)
{
    write();
    journal();

    EXPECT_EQ(0, write());

    EXPECT_THAT(journal(), ElementsAreArray(all({begin, numberAndTime, commit})));
}

TEST_F(MOConnectorSummaryTest, onlyChangedCountersAreWritten)
{
    write();
    journal();

    EXPECT_EQ(0, connector.updateVeskAttributes(7, "later", 6, 1, 3, 0, 2));
    EXPECT_THAT(journal(), ElementsAreArray(all({begin,
                                                 {set("lastSequenceNo", "7"), set("lastChanged", "'later'"),
                                                  set("totalActive", "6"), set("sumMajor", "3")},
                                                 commit})));

    EXPECT_EQ(0, connector.updateVeskAttributes(8, "later", 6, 0, 3, 1, 1));
    EXPECT_THAT(journal(),
                ElementsAreArray(all({begin,
                                      {set("lastSequenceNo", "8"), set("lastChanged", "'later'"),
                                       set("sumCritical", "0"), set("sumMinor", "1"), set("sumWarning", "1")},
                                      commit})));
}

TEST_F(MOConnectorSummaryTest, whatWasWrittenIsKnownToEveryConnectorOfTheProcess)
{
    write();
    journal();
    MOConnector other;

    EXPECT_EQ(0, other.updateVeskAttributes(7, "later", 5, 1, 2, 0, 2));

    EXPECT_THAT(journal(),
                ElementsAreArray(all({begin, {set("lastSequenceNo", "7"), set("lastChanged", "'later'")}, commit})));
}

TEST_F(MOConnectorSummaryTest, isTraced)
{
    middleware.journal.showOnly({Topic::Trace});

    connector.updateVeskAttributes(1, "now", 0, 0, 0, 0, 0);

    const std::string setAttr = "trace 8 FM MoAccessor::setAttr<> dName :" + std::string(fmDn) + " attrName :";
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ", setAttr + "lastSequenceNo", setAttr + "lastChanged",
                                       setAttr + "totalActive", setAttr + "sumCritical", setAttr + "sumMajor",
                                       setAttr + "sumMinor", setAttr + "sumWarning", "trace 8 FM  << "));
}

TEST_F(MOConnectorSummaryTest, theFmObjectIsFoundFirst)
{
    middleware.objects.remove(fmDn);
    middleware.journal.showOnly({Topic::Model, Topic::Log});

    EXPECT_NE(0, write());

    EXPECT_THAT(journal(), ElementsAre(set("lastSequenceNo", "18446744073709551615", -2),
                                       "log 3 Failed to set attribute :'lastSequenceNo' in MO :" + std::string(fmDn) +
                                           ", reason (-2 )!"));
}

// --- Failures

TEST_F(MOConnectorSummaryTest, aFailingWriteEndsTheSequenceWithoutEffect)
{
    const Entries writes = all({numberAndTime, counters});
    const Entries names = {"lastSequenceNo", "lastChanged", "totalActive", "sumCritical",
                           "sumMajor",       "sumMinor",    "sumWarning"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        middleware.objects.failNext("setMoAttribute " + std::string(fmDn) + " " + names[i], ZORV_RETURN_FAILED);

        EXPECT_NE(0, write());

        Entries expected = begin;
        expected.insert(expected.end(), writes.begin(), writes.begin() + static_cast<std::ptrdiff_t>(i));
        expected.push_back(writes[i].substr(0, writes[i].size() - 1) + "-1");
        expected.push_back("log 3 Failed to set attribute :'" + names[i] + "' in MO :" + fmDn + ", reason (-1 )!");
        expected.push_back("abortTransaction -> 0");
        EXPECT_THAT(journal(), ElementsAreArray(expected));
        EXPECT_EQ(unwritten, middleware.fmModel.summary());
    }
}

TEST_F(MOConnectorSummaryTest, countersOfAFailedWriteAreWrittenAgain)
{
    middleware.objects.failNext("setMoAttribute " + std::string(fmDn) + " sumWarning", ZORV_RETURN_FAILED);
    EXPECT_NE(0, write());
    journal();

    EXPECT_EQ(0, write());

    EXPECT_THAT(journal(), ElementsAreArray(all({begin, numberAndTime, counters, commit})));
}

TEST_F(MOConnectorSummaryTest, countersOfAFailedCommitAreWrittenAgain)
{
    middleware.transactions.failNext("commitTransaction", ZORV_RETURN_FAILED);
    EXPECT_NE(0, write());
    EXPECT_THAT(journal(), ElementsAreArray(all({begin, numberAndTime, counters, {"commitTransaction -> -1"}})));
    EXPECT_EQ(unwritten, middleware.fmModel.summary());

    EXPECT_EQ(0, write());
    EXPECT_THAT(journal(), ElementsAreArray(all({begin, numberAndTime, counters, commit})));
}

TEST_F(MOConnectorSummaryTest, failuresAreTracedWithTheirReason)
{
    middleware.journal.showOnly({Topic::Trace});
    const auto failures = [&] {
        Entries found;
        for (const std::string& entry : journal()) {
            if (entry.find("Failed") != std::string::npos) {
                found.push_back(entry);
            }
        }
        return found;
    };

    middleware.transactions.failNext("createTransaction", ZORV_RETURN_NO_RESOURCES);
    EXPECT_NE(0, write());
    EXPECT_THAT(failures(), ElementsAre("trace 8 FM Failed to update summary alarms, reason Failed to create "
                                        "transaction, reason (-10 )!. Will retry again."));

    middleware.objects.failNext("setMoAttribute", ZORV_RETURN_FAILED);
    EXPECT_NE(0, write());
    EXPECT_THAT(failures(), ElementsAre("trace 8 FM Failed to update summary alarms, reason writing lastSequenceNo "
                                        "answered -1. Will retry again."));

    middleware.transactions.failNext("commitTransaction", ZORV_RETURN_FAILED);
    EXPECT_NE(0, write());
    EXPECT_THAT(failures(), ElementsAre("trace 8 FM Failed to update summary alarms, reason the commit answered -1. "
                                        "Will retry again."));

    middleware.portal.withdraw("ZorvOamSpiManagedObject");
    EXPECT_NE(0, write());
    EXPECT_THAT(failures(), ElementsAre("trace 8 FM Failed to update summary alarms, reason Managed object service is "
                                        "missing. Will retry again."));
}

}  // namespace
}  // namespace ZorvFm

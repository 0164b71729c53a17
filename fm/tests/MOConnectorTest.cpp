#include "ConnectorTest.hpp"
#include "ZorvException.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::MoValue;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;
using ZorvFakes::FmJournal::fmObjectFound;

namespace ZorvFm {
namespace {

class MOConnectorTest : public ConnectorTest {
protected:
    /// What becomes of an alarm of that severity under a configured severity of the model.
    AlarmData configured(std::int32_t modelSeverity, std::int32_t severity)
    {
        middleware.objects.plant("Type=1", {{"configuredSeverity", MoValue::enumeration(modelSeverity)}});
        AlarmData alarm;
        alarm.severity = severity;
        MOConnector::applyConfiguredSeverity(accessor, "Type=1", &alarm);
        return alarm;
    }
};

// --- The FM object

TEST_F(MOConnectorTest, theFmObjectIsFoundAndRemembered)
{
    EXPECT_EQ(fmDn, MOConnector::getFmDn(accessor));
    EXPECT_THAT(journal(), ElementsAreArray(all({{"createTransaction 1 60 -> 0"}, fmObjectFound()})));

    middleware.objects.remove("ManagedElement=1");
    EXPECT_EQ(fmDn, MOConnector::getFmDn(accessor));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(MOConnectorTest, theFmObjectMayHaveAnotherName)
{
    middleware.objects.remove("ManagedElement=1");
    middleware.objects.plant("ManagedElement=7");
    middleware.objects.plant("ManagedElement=7,SystemFunctions=8");
    middleware.objects.plant("ManagedElement=7,SystemFunctions=8,Fm=9");

    EXPECT_EQ("ManagedElement=7,SystemFunctions=8,Fm=9", MOConnector::getFmDn(accessor));
}

TEST_F(MOConnectorTest, aMissingFmObjectIsLoggedEachTimeAndTheDefaultNameUsed)
{
    middleware.objects.remove(fmDn);
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ("ManagedElement=1,SystemFunctions=1,Fm=1", MOConnector::getFmDn(accessor));
    EXPECT_EQ("ManagedElement=1,SystemFunctions=1,Fm=1", MOConnector::getFmDn(accessor));
    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to get FM base MO", "log 3 Failed to get FM base MO"));

    middleware.objects.plant("ManagedElement=1,SystemFunctions=1,Fm=2");
    EXPECT_EQ("ManagedElement=1,SystemFunctions=1,Fm=2", MOConnector::getFmDn(accessor));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(MOConnectorTest, anFmObjectThatCannotBeLookedForIsAMissingOne)
{
    middleware.objects.failNext("newMoIterator", ZORV_RETURN_FAILED);

    EXPECT_EQ(fmDn, MOConnector::getFmDn(accessor));

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "newMoIterator  ManagedElement -> -1",
                                       "log 3 Failed to get FM base MO"));
}

TEST_F(MOConnectorTest, withoutTheServicesTheFmObjectIsAMissingOne)
{
    middleware.journal.show({Topic::Trace});
    middleware.portal.withdraw("ZorvOamSpiManagedObject");
    EXPECT_EQ(fmDn, MOConnector::getFmDn(accessor));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Could not look for the FM base MO, reason Managed object service is "
                                       "missing",
                                       "log 3 Failed to get FM base MO"));

    middleware.offerAll();
    middleware.transactions.failNext("createTransaction", ZORV_RETURN_NO_RESOURCES);
    EXPECT_EQ(fmDn, MOConnector::getFmDn(accessor));
    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> -10",
                                       "trace 8 FM Could not look for the FM base MO, reason Failed to create "
                                       "transaction, reason (-10 )!",
                                       "log 3 Failed to get FM base MO"));
}

// --- The alarm models

TEST_F(MOConnectorTest, alarmModelsComeInTheOrderOfTheModel)
{
    const std::string second = middleware.fmModel.plantModel("2");
    const std::string first = middleware.fmModel.plantModel("1");
    findFmObject();
    std::list<std::string> models;

    EXPECT_TRUE(connector.getAlarmModels(accessor, models));

    EXPECT_THAT(models, ElementsAre(second, first));
    EXPECT_THAT(journal(),
                ElementsAreArray(all({{"createTransaction 1 60 -> 0"},
                                      children(fmDn, "FmAlarmModel", {"FmAlarmModel=2", "FmAlarmModel=1"})})));
}

TEST_F(MOConnectorTest, alarmModelsThatCannotBeReadAreLoggedWithTheReason)
{
    findFmObject();
    middleware.journal.showOnly({Topic::Log});
    std::list<std::string> models;

    middleware.objects.failNext("newMoIterator", ZORV_RETURN_FAILED);
    EXPECT_FALSE(connector.getAlarmModels(accessor, models));
    middleware.objects.failNext("nextMo", ZORV_RETURN_NO_RESOURCES);
    EXPECT_FALSE(connector.getAlarmModels(accessor, models));

    const std::string text = "log 3 Could not get alarm models, reason Failed to get children 'FmAlarmModel' of MO "
                             ":ManagedElement=1,SystemFunctions=1,Fm=1, reason (";
    EXPECT_THAT(journal(), ElementsAre(text + "-1 )!", text + "-10 )!"));
    EXPECT_THAT(models, IsEmpty());
}

// --- Severities

TEST_F(MOConnectorTest, theModelsSeveritiesAreConverted)
{
    EXPECT_EQ(5U, MOConnector::convertSeverityVESKToSpi(3));
    EXPECT_EQ(4U, MOConnector::convertSeverityVESKToSpi(4));
    EXPECT_EQ(3U, MOConnector::convertSeverityVESKToSpi(5));
    EXPECT_EQ(2U, MOConnector::convertSeverityVESKToSpi(6));
}

TEST_F(MOConnectorTest, otherSeveritiesOfTheModelAreRefused)
{
    for (const auto& [value, text] : std::vector<std::pair<int, std::string>>{
             {0, "0"}, {1, "1"}, {2, "2"}, {7, "7"}, {-1, "4294967295"}, {INT32_MAX, "2147483647"}}) {
        try {
            MOConnector::convertSeverityVESKToSpi(value);
            ADD_FAILURE() << value;
        } catch (const Zorv::ZorvException& e) {
            EXPECT_EQ("Wrong VESK severity value " + text + " cannot be converted to SPI severity value",
                      std::string(e.what()));
        }
    }
}

TEST_F(MOConnectorTest, aConfiguredSeverityReplacesTheNotifications)
{
    for (const auto& [modelSeverity, severity] :
         std::vector<std::pair<std::int32_t, std::int32_t>>{{3, 5}, {4, 4}, {5, 3}, {6, 2}}) {
        const AlarmData alarm = configured(modelSeverity, YALT_FM_SEVERITY_INDETERMINATE);

        EXPECT_EQ(severity, alarm.severity);
        EXPECT_TRUE(alarm.hasConfiguredSeverity);
        EXPECT_EQ(static_cast<std::uint32_t>(severity), alarm.configuredSeverity);
    }
}

TEST_F(MOConnectorTest, aConfiguredSeverityReplacesOneOutsideTheTable)
{
    EXPECT_EQ(YALT_FM_SEVERITY_CRITICAL, configured(3, 6).severity);
    EXPECT_EQ(YALT_FM_SEVERITY_CRITICAL, configured(3, -1).severity);
}

TEST_F(MOConnectorTest, aClearStaysAClearUnderAConfiguredSeverity)
{
    const AlarmData alarm = configured(3, YALT_FM_SEVERITY_CLEARED);

    EXPECT_EQ(YALT_FM_SEVERITY_CLEARED, alarm.severity);
    EXPECT_TRUE(alarm.hasConfiguredSeverity);
    EXPECT_EQ(5U, alarm.configuredSeverity);
}

TEST_F(MOConnectorTest, withoutAConfiguredSeverityTheNotificationsIsKept)
{
    middleware.objects.plant("Type=1", {{"configuredSeverity", MoValue::none(YALT_MO_ATTRIBUTE_ENUM)}});
    AlarmData alarm;
    alarm.severity = YALT_FM_SEVERITY_MINOR;
    alarm.hasConfiguredSeverity = true;

    MOConnector::applyConfiguredSeverity(accessor, "Type=1", &alarm);

    EXPECT_EQ(YALT_FM_SEVERITY_MINOR, alarm.severity);
    EXPECT_FALSE(alarm.hasConfiguredSeverity);
}

TEST_F(MOConnectorTest, aConfiguredSeverityThatMeansNothingIsLoggedAndTheAlarmLeftAsItWas)
{
    middleware.journal.showOnly({Topic::Log});

    const AlarmData alarm = configured(7, YALT_FM_SEVERITY_MINOR);

    EXPECT_EQ(YALT_FM_SEVERITY_MINOR, alarm.severity);
    EXPECT_FALSE(alarm.hasConfiguredSeverity);
    EXPECT_EQ(1U, alarm.configuredSeverity);
    EXPECT_THAT(journal(), ElementsAre("log 4 Wrong VESK severity value 7 cannot be converted to SPI severity value"));
}

}  // namespace
}  // namespace ZorvFm

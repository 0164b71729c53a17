/// How notifications are completed from the alarm models.
#include "ConnectorTest.hpp"

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using ZorvFakes::MoValue;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class MOConnectorTypeTest : public ConnectorTest {
protected:
    MOConnectorTypeTest()
    {
        modelDn = middleware.fmModel.plantModel("1");
        findFmObject();
    }

    static ZorvFakes::FmAlarmTypeSpec type(std::uint32_t majorType, std::uint32_t minorType, bool isStateful,
                                           std::int32_t eventType, const std::string& specificProblem,
                                           std::uint32_t probableCause, const std::string& additionalText = "",
                                           std::optional<std::int32_t> configuredSeverity = std::nullopt)
    {
        return {majorType,       minorType,     isStateful,     eventType,
                specificProblem, probableCause, additionalText, configuredSeverity};
    }

    /// In the model "1".
    std::string plantType(const ZorvFakes::FmAlarmTypeSpec& spec, const std::string& name = "A")
    {
        return middleware.fmModel.plantType("1", name, spec);
    }

    /// Major type 1, minor type 7, severity minor.
    static AlarmData notification()
    {
        return AlarmData(YaltOamSpiNotificationFmStruct_2{"ManagedElement=1,Port=1", 1, 7, 1700000000000000000,
                                                          "Link down", YALT_FM_SEVERITY_MINOR});
    }

    static AlarmData clear()
    {
        AlarmData alarm = notification();
        alarm.severity = YALT_FM_SEVERITY_CLEARED;
        alarm.originalSeverity = YALT_FM_SEVERITY_CLEARED;
        return alarm;
    }

    AlarmData completed(AlarmData alarm)
    {
        connector.updateAlarm(alarm);
        return alarm;
    }

    /// What the model fills in.
    static std::string modelValues(const AlarmData& alarm)
    {
        return std::string(alarm.stateful ? "alarm" : "alert") + " " + std::to_string(alarm.eventType) + " " +
               std::to_string(alarm.probableCause) + " '" + alarm.specificProblem +
               "' severity=" + std::to_string(alarm.severity) +
               " originalSeverity=" + std::to_string(alarm.originalSeverity);
    }

    static Entries typeRead(const std::string& typeDn)
    {
        return attributes(typeDn, {"isStateful", "eventType", "specificProblem", "probableCause", "additionalText",
                                   "configuredSeverity"});
    }

    const std::string unknown = "alert 1 418 'FM Unknown Alarm' severity=3 originalSeverity=3";
    std::string modelDn;
};

// --- A known type

TEST_F(MOConnectorTypeTest, theFirstAlarmOfATypeIsCompletedFromTheModel)
{
    const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14, "not used"));

    const AlarmData alarm = completed(notification());

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(alarm));
    EXPECT_EQ("Link down", alarm.additionalText);
    EXPECT_FALSE(alarm.hasConfiguredSeverity);
    EXPECT_THAT(journal(), ElementsAreArray(all({{"createTransaction 1 60 -> 0"},
                                                 children(fmDn, "FmAlarmModel", {"FmAlarmModel=1"}),
                                                 children(modelDn, "FmAlarmType", {"FmAlarmType=A"}),
                                                 attributes(typeDn, {"majorType", "minorType"}),
                                                 typeRead(typeDn),
                                                 {"abortTransaction -> 0"}})));
}

TEST_F(MOConnectorTypeTest, theSecondAlarmOfATypeIsCompletedFromTheCache)
{
    plantType(type(1, 7, true, 5, "Link failure", 14));
    completed(notification());
    journal();

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(MOConnectorTypeTest, isTracedWithTheCacheMissOnce)
{
    const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14));
    middleware.journal.showOnly({Topic::Trace});

    const AlarmData alarm = completed(notification());

    const std::string getAttr = "trace 8 FM MoAccessor::getAttr<> dName :" + typeDn + " attrName :";
    const std::string getOptionalAttr = "trace 8 FM MoAccessor::getOptionalAttr<> dName :" + typeDn + " attrName :";
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ", "trace 8 FM  >> ",
                                       "trace 8 FM AlarmType cache miss for type 1 7", getAttr + "majorType",
                                       getAttr + "minorType", "trace 8 FM Checking '" + modelDn + "' for alarms",
                                       "trace 8 FM Found correct alarm '" + typeDn + "'.", getAttr + "isStateful",
                                       getAttr + "eventType", getAttr + "specificProblem", getAttr + "probableCause",
                                       getOptionalAttr + "additionalText", getOptionalAttr + "configuredSeverity",
                                       "trace 8 FM Alarm (" + alarm.toString() + ") found", "trace 8 FM  << "));

    completed(notification());
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ", "trace 8 FM  >> ", "trace 8 FM  << ",
                                       "trace 8 FM Alarm (" + alarm.toString() + ") found", "trace 8 FM  << "));
}

TEST_F(MOConnectorTypeTest, aSecondTypeIsFoundWithoutReadingTheModelAgain)
{
    plantType(type(1, 6, false, 3, "Login failed", 1), "A");
    const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14), "B");
    AlarmData other = notification();
    other.minorType = 6;
    EXPECT_EQ("alert 3 1 'Login failed' severity=3 originalSeverity=3", modelValues(completed(other)));
    journal();

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));

    EXPECT_THAT(journal(),
                ElementsAreArray(all({{"createTransaction 1 60 -> 0"}, typeRead(typeDn), {"abortTransaction -> 0"}})));
}

TEST_F(MOConnectorTypeTest, bothNumbersMakeTheType)
{
    plantType(type(7, 1, true, 2, "not this one", 1), "A");
    plantType(type(1, 8, true, 2, "nor this", 2), "B");
    plantType(type(2, 7, true, 2, "nor that", 3), "C");
    plantType(type(1, 7, true, 5, "Link failure", 14), "D");

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));
}

TEST_F(MOConnectorTypeTest, ofTwoEqualTypesTheFirstCounts)
{
    plantType(type(1, 7, true, 5, "first", 14), "Z");
    plantType(type(1, 7, false, 6, "second", 15), "A");
    middleware.fmModel.plantType("0", "A", type(1, 7, false, 7, "third", 16));

    EXPECT_EQ("alarm 5 14 'first' severity=3 originalSeverity=3", modelValues(completed(notification())));
}

TEST_F(MOConnectorTypeTest, laterModelsAreReadToo)
{
    middleware.fmModel.plantType("2", "A", type(1, 7, true, 5, "Link failure", 14));
    middleware.fmModel.plantModel("3");
    middleware.journal.show({Topic::Trace});

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));

    const Entries entries = journal();
    Entries checked;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(checked),
                 [](const std::string& entry) { return entry.find("Checking") != std::string::npos; });
    EXPECT_THAT(checked, ElementsAre("trace 8 FM Checking '" + modelDn + "' for alarms",
                                     "trace 8 FM Checking '" + std::string(fmDn) + ",FmAlarmModel=2' for alarms"));
}

// --- Configured severity

TEST_F(MOConnectorTypeTest, aConfiguredSeverityReplacesTheNotificationsFromModelAndCache)
{
    plantType(type(1, 7, true, 5, "Link failure", 14, "", 3));

    EXPECT_EQ("alarm 5 14 'Link failure' severity=5 originalSeverity=3", modelValues(completed(notification())));
    EXPECT_EQ("alarm 5 14 'Link failure' severity=5 originalSeverity=3", modelValues(completed(notification())));
}

TEST_F(MOConnectorTypeTest, aClearStaysAClearFromModelAndCache)
{
    plantType(type(1, 7, true, 5, "Link failure", 14, "", 3));

    EXPECT_EQ("alarm 5 14 'Link failure' severity=0 originalSeverity=0", modelValues(completed(clear())));
    EXPECT_EQ("alarm 5 14 'Link failure' severity=0 originalSeverity=0", modelValues(completed(clear())));
    EXPECT_EQ("alarm 5 14 'Link failure' severity=5 originalSeverity=3", modelValues(completed(notification())));
}

TEST_F(MOConnectorTypeTest, aConfiguredSeverityThatMeansNothingKeepsTheNotificationsFromModelAndCache)
{
    plantType(type(1, 7, true, 5, "Link failure", 14, "", 7));
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));
    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));

    EXPECT_THAT(journal(), ElementsAre("log 4 Wrong VESK severity value 7 cannot be converted to SPI severity value"));
    EXPECT_FALSE(connector.findAlarmType(notification())->hasConfiguredSeverity);
}

// --- The cache

TEST_F(MOConnectorTypeTest, whatIsCachedIsTheTypeAlone)
{
    plantType(type(1, 7, true, 5, "Link failure", 14, "", 4));
    EXPECT_EQ(nullptr, connector.findAlarmType(notification()));
    completed(notification());

    const AlarmData* cached = connector.findAlarmType(clear());

    ASSERT_NE(nullptr, cached);
    EXPECT_EQ(1U, cached->majorType);
    EXPECT_EQ(7U, cached->minorType);
    EXPECT_TRUE(cached->stateful);
    EXPECT_EQ(5, cached->eventType);
    EXPECT_EQ("Link failure", cached->specificProblem);
    EXPECT_EQ(14U, cached->probableCause);
    EXPECT_TRUE(cached->hasConfiguredSeverity);
    EXPECT_EQ(4U, cached->configuredSeverity);
    AlarmData other = notification();
    other.majorType = 7;
    other.minorType = 1;
    EXPECT_EQ(nullptr, connector.findAlarmType(other));
}

TEST_F(MOConnectorTypeTest, aChangedModelCountsAfterClearCacheOnly)
{
    plantType(type(1, 7, true, 5, "Link failure", 14, "", 3));
    completed(notification());
    plantType(type(1, 7, false, 6, "Port failure", 15));

    EXPECT_EQ("alarm 5 14 'Link failure' severity=5 originalSeverity=3", modelValues(completed(notification())));

    connector.clearCache();
    EXPECT_EQ(nullptr, connector.findAlarmType(notification()));
    EXPECT_EQ("alert 6 15 'Port failure' severity=3 originalSeverity=3", modelValues(completed(notification())));
}

TEST_F(MOConnectorTypeTest, aNewTypeCountsAfterClearCacheOnly)
{
    completed(notification());
    plantType(type(1, 7, true, 5, "Link failure", 14));

    EXPECT_EQ(unknown, modelValues(completed(notification())));

    connector.clearCache();
    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));
}

// --- An unknown type

TEST_F(MOConnectorTypeTest, anAlarmOfAnUnknownTypeBecomesAnAlert)
{
    AlarmData alarm = notification();
    alarm.stateful = true;
    middleware.journal.showOnly({Topic::Log});

    connector.updateAlarm(alarm);

    EXPECT_EQ(unknown, modelValues(alarm));
    EXPECT_THAT(journal(), ElementsAre("log 4 Could not find alarm (dn=ManagedElement=1,Port=1; majorType=1; "
                                       "minorType=7; additionalText=Link down; severity=3; "
                                       "specificProblem=Unknown alarm; seqNo=0; eventTime=1700000000000000000; "
                                       "stateful=1; eventType=1; probableCause=418; originalSeqNo=0; "
                                       "originalAdditionalText=Link down; originalSeverity=3; "
                                       "originalEventTime=1700000000000000000; alarmId=0; additionalInfoSize=0)"));
}

TEST_F(MOConnectorTypeTest, aClearOfAnUnknownTypeBecomesAWarning)
{
    middleware.journal.showOnly({Topic::Log});

    const AlarmData alarm = completed(clear());

    EXPECT_EQ("alert 1 418 'FM Unknown Alarm' severity=2 originalSeverity=2", modelValues(alarm));
    EXPECT_THAT(journal(),
                ElementsAre("log 4 Could not find alarm (" + clear().toString() + ")",
                            "log 4 Severity cleared for this unknown alarm is changed to warning: "
                            "dn=ManagedElement=1,Port=1; majorType=1; minorType=7; additionalText=Link down; "
                            "severity=2; specificProblem=FM Unknown Alarm; seqNo=0; eventTime=1700000000000000000; "
                            "stateful=0; eventType=1; probableCause=418; originalSeqNo=0; "
                            "originalAdditionalText=Link down; originalSeverity=2; "
                            "originalEventTime=1700000000000000000; alarmId=0; additionalInfoSize=0"));
}

TEST_F(MOConnectorTypeTest, anUnknownTypeIsNotCachedAndTheModelNotReadAgain)
{
    completed(notification());
    EXPECT_EQ(nullptr, connector.findAlarmType(notification()));
    journal();

    completed(notification());

    EXPECT_THAT(journal(), ElementsAre("log 4 Could not find alarm (" + notification().toString() + ")"));
}

// --- Models that cannot be read

TEST_F(MOConnectorTypeTest, aTypeWhoseNumbersCannotBeReadIsLeftOutAndTheWalkGoesOn)
{
    const std::string broken = plantType(type(1, 6, true, 2, "broken", 1), "A");
    plantType(type(1, 7, true, 5, "Link failure", 14), "B");
    middleware.objects.failNext("getMoAttribute " + broken + " minorType", ZORV_RETURN_FAILED);
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));

    EXPECT_THAT(journal(),
                ElementsAre("log 3 Could not access MO, reason Failed to write 'minorType' from MO ( error:-1 )!"));
}

TEST_F(MOConnectorTypeTest, aModelWhoseTypesCannotBeListedIsLeftOutAndTheWalkGoesOn)
{
    middleware.fmModel.plantType("2", "A", type(1, 7, true, 5, "Link failure", 14));
    middleware.objects.failNext("newMoIterator " + modelDn + " FmAlarmType", ZORV_RETURN_FAILED);
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));

    EXPECT_THAT(journal(),
                ElementsAre("log 3 Could not access MO, reason Failed to get children 'FmAlarmType' of MO :" + modelDn +
                            ", reason (-1 )!"));
}

TEST_F(MOConnectorTypeTest, aModelThatWasReadInPartIsReadAgainForTheNextMiss)
{
    const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14));
    middleware.objects.failNext("getMoAttribute " + typeDn + " majorType", ZORV_RETURN_FAILED);

    EXPECT_EQ(unknown, modelValues(completed(notification())));
    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));
}

TEST_F(MOConnectorTypeTest, modelsThatCannotBeListedMakeTheTypeUnknownUntilTheyCan)
{
    plantType(type(1, 7, true, 5, "Link failure", 14));
    middleware.objects.failNext("newMoIterator", ZORV_RETURN_FAILED);
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ(unknown, modelValues(completed(notification())));
    EXPECT_THAT(journal(), ElementsAre("log 3 Could not get alarm models, reason Failed to get children 'FmAlarmModel' "
                                       "of MO :ManagedElement=1,SystemFunctions=1,Fm=1, reason (-1 )!",
                                       "log 4 Could not find alarm (" + notification().toString() + ")"));

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));
}

TEST_F(MOConnectorTypeTest, withoutTheServicesEveryTypeIsUnknown)
{
    plantType(type(1, 7, true, 5, "Link failure", 14));
    middleware.portal.withdraw("ZorvOamSpiTransactionMaster");

    EXPECT_EQ(unknown, modelValues(completed(notification())));

    EXPECT_THAT(journal(), ElementsAre("log 3 Could not get alarm models, reason Transaction service is missing",
                                       "log 4 Could not find alarm (" + notification().toString() + ")"));
}

TEST_F(MOConnectorTypeTest, aTransactionThatIsRefusedMakesTheTypeUnknown)
{
    plantType(type(1, 7, true, 5, "Link failure", 14));
    middleware.transactions.failNext("createTransaction", ZORV_RETURN_NO_RESOURCES);

    EXPECT_EQ(unknown, modelValues(completed(notification())));

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> -10",
                                       "log 3 Could not get alarm models, reason Failed to create transaction, reason "
                                       "(-10 )!",
                                       "log 4 Could not find alarm (" + notification().toString() + ")"));
}

/// After the type was found: what was read before the failure stays, and nothing is cached.
class MOConnectorTypeFailureTest : public MOConnectorTypeTest {
protected:
    /// The model's values after a failing read of one attribute of the type.
    std::string valuesAfterFailure(const std::string& attribute)
    {
        const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14, "", 3));
        middleware.objects.failNext("getMoAttribute " + typeDn + " " + attribute, ZORV_RETURN_FAILED);
        middleware.journal.showOnly({Topic::Log});
        const AlarmData alarm = completed(notification());
        EXPECT_THAT(journal(),
                    ElementsAre("log 3 Error updating alarm with information from the model (Failed to write "
                                "'" +
                                attribute + "' from MO ( error:-1 )!)"));
        EXPECT_EQ(nullptr, connector.findAlarmType(notification()));
        EXPECT_EQ("alarm 5 14 'Link failure' severity=5 originalSeverity=3", modelValues(completed(notification())));
        return modelValues(alarm);
    }
};

TEST_F(MOConnectorTypeFailureTest, atIsStateful)
{
    EXPECT_EQ("alert 1 418 'Unknown alarm' severity=3 originalSeverity=3", valuesAfterFailure("isStateful"));
}

TEST_F(MOConnectorTypeFailureTest, atEventType)
{
    EXPECT_EQ("alarm 1 418 'Unknown alarm' severity=3 originalSeverity=3", valuesAfterFailure("eventType"));
}

TEST_F(MOConnectorTypeFailureTest, atSpecificProblem)
{
    EXPECT_EQ("alarm 5 418 'Unknown alarm' severity=3 originalSeverity=3", valuesAfterFailure("specificProblem"));
}

TEST_F(MOConnectorTypeFailureTest, atProbableCause)
{
    EXPECT_EQ("alarm 5 418 'Link failure' severity=3 originalSeverity=3", valuesAfterFailure("probableCause"));
}

TEST_F(MOConnectorTypeFailureTest, atConfiguredSeverity)
{
    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", valuesAfterFailure("configuredSeverity"));
}

TEST_F(MOConnectorTypeTest, anAttributeWithoutAValueIsAFailure)
{
    const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14));
    middleware.objects.plant(typeDn, {{"specificProblem", MoValue::none(YALT_MO_ATTRIBUTE_STRING)}});
    middleware.journal.showOnly({Topic::Log});

    completed(notification());

    EXPECT_THAT(journal(), ElementsAre("log 3 Error updating alarm with information from the model (Attribute has no "
                                       "value set: " +
                                       typeDn + "::specificProblem)"));
}

TEST_F(MOConnectorTypeTest, aTypeWithoutAdditionalTextIsAKnownType)
{
    const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14));
    middleware.objects.plant(typeDn, {{"additionalText", MoValue::none(YALT_MO_ATTRIBUTE_STRING)}});
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ("alarm 5 14 'Link failure' severity=3 originalSeverity=3", modelValues(completed(notification())));

    EXPECT_THAT(journal(), IsEmpty());
    EXPECT_NE(nullptr, connector.findAlarmType(notification()));
}

TEST_F(MOConnectorTypeTest, anAdditionalTextThatCannotBeReadIsTracedOnly)
{
    const std::string typeDn = plantType(type(1, 7, true, 5, "Link failure", 14, "", 3));
    middleware.objects.removeAttribute(typeDn, "additionalText");
    middleware.journal.showOnly({Topic::Log, Topic::Trace});

    EXPECT_EQ("alarm 5 14 'Link failure' severity=5 originalSeverity=3", modelValues(completed(notification())));

    const Entries entries = journal();
    EXPECT_THAT(entries, Contains("trace 8 FM No additional text in '" + typeDn +
                                  "', reason Failed to write 'additionalText' from MO ( error:-2 )!"));
    EXPECT_THAT(entries, Not(Contains(StartsWith("log "))));
    EXPECT_NE(nullptr, connector.findAlarmType(notification()));
}

}  // namespace
}  // namespace ZorvFm

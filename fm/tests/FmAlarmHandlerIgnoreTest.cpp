/// Which notifications are not handled at all: those that could only change a severity which the model fixes.
#include "HandlerTest.hpp"

namespace ZorvFm {
namespace {

class FmAlarmHandlerIgnoreTest : public HandlerTest {
protected:
    static constexpr int modelMajor = 4;
    static constexpr int modelWarning = 6;

    FmAlarmHandlerIgnoreTest() { start(); }

    /// The type of linkDown, in the model.
    void plantType(std::optional<std::int32_t> configuredSeverity)
    {
        middleware.fmModel.plantType("1", "LinkFailure",
                                     {1, 7, true, 2, "Link failure", 14, "Link down", configuredSeverity});
        connector.clearCache();
    }

    /// Completed from the model, as the worker does it before it asks.
    AlarmData completed(const ReferenceAlarm& notification)
    {
        AlarmData data = dataOf(notification);
        connector.updateAlarm(data);
        return data;
    }

    void raise(const ReferenceAlarm& notification)
    {
        AlarmData data = completed(notification);
        handler->handleAlarmNotif(data);
    }

    bool isUpdate(const ReferenceAlarm& notification) { return handler->isUpdateAlarm(completed(notification)); }
};

TEST_F(FmAlarmHandlerIgnoreTest, aRepetitionUnderAConfiguredSeverityIsIgnored)
{
    plantType(modelMajor);
    raise(linkDown());

    EXPECT_FALSE(isUpdate(linkDown()));
}

TEST_F(FmAlarmHandlerIgnoreTest, anotherSeverityOfTheNotificationChangesNothing)
{
    plantType(modelWarning);
    raise(linkDown());
    ReferenceAlarm change = linkDown();
    change.severity = YALT_FM_SEVERITY_CRITICAL;

    EXPECT_FALSE(isUpdate(change));
    EXPECT_FALSE(handler->isUpdateAlarm(dataOf(change)));
}

TEST_F(FmAlarmHandlerIgnoreTest, theFirstRaiseIsHandled)
{
    plantType(modelMajor);

    EXPECT_TRUE(isUpdate(linkDown()));
}

TEST_F(FmAlarmHandlerIgnoreTest, withoutAConfiguredSeverityARepetitionIsHandledWhateverItsSeverityIs)
{
    plantType(std::nullopt);
    for (const std::int32_t severity : {1, 2, 3, 4, 5, 6}) {
        ReferenceAlarm alarm = linkDown("Port=" + std::to_string(severity));
        alarm.severity = severity;
        raise(alarm);

        EXPECT_TRUE(isUpdate(alarm));
    }
}

TEST_F(FmAlarmHandlerIgnoreTest, aTypeThatIsNotCachedIsHandled)
{
    plantType(modelMajor);
    raise(linkDown());
    connector.clearCache();

    EXPECT_TRUE(handler->isUpdateAlarm(dataOf(linkDown())));
}

TEST_F(FmAlarmHandlerIgnoreTest, aTypeThatNoModelKnowsIsHandled)
{
    raise(linkDown());

    EXPECT_TRUE(isUpdate(linkDown()));
}

TEST_F(FmAlarmHandlerIgnoreTest, anotherTextIsHandled)
{
    plantType(modelMajor);
    raise(linkDown());
    ReferenceAlarm change = linkDown();
    change.text = "Still down";

    EXPECT_TRUE(isUpdate(change));
}

TEST_F(FmAlarmHandlerIgnoreTest, otherInformationIsHandledInAnotherOrderItIsTheSame)
{
    plantType(modelMajor);
    ReferenceAlarm alarm = linkDown();
    alarm.info = {{"b", "2"}, {"a", "1"}};
    raise(alarm);

    EXPECT_TRUE(isUpdate(linkDown()));
    alarm.info = {{"a", "1"}, {"b", "2"}};
    EXPECT_FALSE(isUpdate(alarm));
}

TEST_F(FmAlarmHandlerIgnoreTest, aClearIsHandled)
{
    plantType(modelMajor);
    raise(linkDown());
    ReferenceAlarm clear = linkDown();
    clear.severity = YALT_FM_SEVERITY_CLEARED;

    EXPECT_TRUE(isUpdate(clear));
}

TEST_F(FmAlarmHandlerIgnoreTest, afterAChangeOfTheConfiguredSeverityARepetitionIsHandledOnce)
{
    plantType(modelMajor);
    raise(linkDown());
    plantType(modelWarning);

    EXPECT_TRUE(isUpdate(linkDown()));
    raise(linkDown());
    EXPECT_FALSE(isUpdate(linkDown()));
}

TEST_F(FmAlarmHandlerIgnoreTest, aRepetitionIsIgnoredWhileACeaseIsPending)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    plantType(modelMajor);
    raise(linkDown());
    raise(linkUp());

    EXPECT_FALSE(isUpdate(linkDown()));
}

TEST_F(FmAlarmHandlerIgnoreTest, aRepetitionIsIgnoredInTheRaiseFilter)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    plantType(modelMajor);
    raise(linkDown());

    EXPECT_FALSE(isUpdate(linkDown()));
}

TEST_F(FmAlarmHandlerIgnoreTest, theRemarkOfATogglingAlarmIsNotPartOfItsText)
{
    config.alarmToggleWindowSize = 60 * second;
    plantType(modelMajor);
    raise(linkDown());

    EXPECT_FALSE(isUpdate(linkDown()));
    ReferenceAlarm withRemark = linkDown();
    withRemark.text += " The alarm is currently toggling.";
    EXPECT_TRUE(isUpdate(withRemark));
}

TEST_F(FmAlarmHandlerIgnoreTest, aRaiseOfACeasedAlarmIsHandled)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 2;
    plantType(modelMajor);
    raise(linkDown());
    ReferenceAlarm clear = linkUp();
    clear.text = linkDown().text;
    raise(clear);

    EXPECT_TRUE(isUpdate(linkDown()));
}

}  // namespace
}  // namespace ZorvFm

#include "FmConfig.hpp"

#include "FmTest.hpp"
#include "TemporaryDirectory.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

const std::string defaults = "heartbeat=60 silent=0 raise=0 cease=0 reuse=0 count=1 window=0";

const std::string everyParameter = "<alarmToggleSilentTimeout>30</alarmToggleSilentTimeout>"
                                   "<transientRaiseAlarmFilterTime>2</transientRaiseAlarmFilterTime>"
                                   "<transientCeaseAlarmFilterTime>5</transientCeaseAlarmFilterTime>"
                                   "<reuseAdditionalTextFromAalAtClear>true</reuseAdditionalTextFromAalAtClear>"
                                   "<alarmToggleTriggerCount>3</alarmToggleTriggerCount>"
                                   "<alarmToggleWindowSize>60</alarmToggleWindowSize>";

std::string failure(const std::string& reason)
{
    return "log 3 Could not load configuration, caught exception: " + reason;
}

class FmConfigTest : public FmTest {
protected:
    /// Loads a document in which the component has these parameters.
    int load(const std::string& parameters)
    {
        folder.write("fm.xml", "<configuration><ZorvFmComponent>" + parameters + "</ZorvFmComponent></configuration>");
        return config.load(fileName);
    }

    /// Loads a document in which one parameter has this text.
    int load(const std::string& parameter, const std::string& text)
    {
        return load("<" + parameter + ">" + text + "</" + parameter + ">");
    }

    void expectRefusal(const std::string& parameter, const std::string& text, const std::string& reason)
    {
        EXPECT_EQ(-1, load(parameter, text)) << parameter << " '" << text << "'";
        EXPECT_EQ(defaults, values());
        EXPECT_THAT(journal(), ElementsAre(failure(reason)));
    }

    std::string values() const
    {
        return "heartbeat=" + std::to_string(config.heartbeatInterval) +
               " silent=" + std::to_string(config.alarmToggleSilentTimeout) +
               " raise=" + std::to_string(config.transientRaiseAlarmFilterTime) +
               " cease=" + std::to_string(config.transientCeaseAlarmFilterTime) +
               " reuse=" + std::to_string(config.reuseAdditionalTextFromAalAtClear) +
               " count=" + std::to_string(config.alarmToggleTriggerCount) +
               " window=" + std::to_string(config.alarmToggleWindowSize);
    }

    const ZorvTest::TemporaryDirectory folder;
    const std::string fileName = folder.write("fm.xml", "<ZorvFmComponent/>");
    FmConfig config;
};

// --- Values

TEST_F(FmConfigTest, beginsWithTheDefaults)
{
    EXPECT_EQ(defaults, values());
}

TEST_F(FmConfigTest, anEmptyComponentElementGivesTheDefaults)
{
    EXPECT_EQ(0, load(""));

    EXPECT_EQ(defaults, values());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmConfigTest, secondsBecomeNanoseconds)
{
    EXPECT_EQ(0, load(everyParameter));

    EXPECT_EQ("heartbeat=60 silent=30000000000 raise=2000000000 cease=5000000000 reuse=1 count=3 window=60000000000",
              values());
}

TEST_F(FmConfigTest, aTriggerCountOf0SwitchesTogglingOff)
{
    EXPECT_EQ(0, load("<alarmToggleSilentTimeout>30</alarmToggleSilentTimeout>"
                      "<transientRaiseAlarmFilterTime>2</transientRaiseAlarmFilterTime>"
                      "<transientCeaseAlarmFilterTime>5</transientCeaseAlarmFilterTime>"
                      "<alarmToggleTriggerCount>0</alarmToggleTriggerCount>"
                      "<alarmToggleWindowSize>10</alarmToggleWindowSize>"));

    EXPECT_EQ("heartbeat=60 silent=0 raise=2000000000 cease=5000000000 reuse=0 count=1 window=0", values());
}

TEST_F(FmConfigTest, withoutATriggerCountWindowAndTimeoutStay)
{
    EXPECT_EQ(0, load("<alarmToggleSilentTimeout>1</alarmToggleSilentTimeout>"
                      "<alarmToggleWindowSize>10</alarmToggleWindowSize>"));

    EXPECT_EQ("heartbeat=60 silent=1000000000 raise=0 cease=0 reuse=0 count=1 window=10000000000", values());
}

TEST_F(FmConfigTest, theLargestTriggerCountIsAccepted)
{
    EXPECT_EQ(0, load("alarmToggleTriggerCount", "4294967295"));

    EXPECT_EQ("heartbeat=60 silent=0 raise=0 cease=0 reuse=0 count=4294967295 window=0", values());
}

TEST_F(FmConfigTest, theElementIsFoundAnywhereInTheDocument)
{
    folder.write("fm.xml",
                 "<node><components><other/><ZorvFmComponent><alarmToggleTriggerCount>7</alarmToggleTriggerCount>"
                 "</ZorvFmComponent></components></node>");

    EXPECT_EQ(0, config.load(fileName));

    EXPECT_EQ(7U, config.alarmToggleTriggerCount);
}

TEST_F(FmConfigTest, theFirstOfTwoEqualParametersCounts)
{
    EXPECT_EQ(0, load("<alarmToggleTriggerCount>4</alarmToggleTriggerCount>"
                      "<alarmToggleTriggerCount>5</alarmToggleTriggerCount>"));

    EXPECT_EQ(4U, config.alarmToggleTriggerCount);
}

TEST_F(FmConfigTest, theHeartbeatIntervalIsNotInTheFile)
{
    EXPECT_EQ(0, load("heartbeatInterval", "5"));

    EXPECT_EQ(60U, config.getHeartbeatInterval());
}

TEST_F(FmConfigTest, unknownParametersAreIgnored)
{
    EXPECT_EQ(0, load("somethingElse", "x"));

    EXPECT_EQ(defaults, values());
}

// --- Booleans

TEST_F(FmConfigTest, aBooleanIsReadWithoutRegardToCase)
{
    for (const char* text : {"true", "TRUE", "True"}) {
        EXPECT_EQ(0, load("reuseAdditionalTextFromAalAtClear", text));
        EXPECT_TRUE(config.reuseAdditionalTextFromAalAtClear) << text;
    }
}

TEST_F(FmConfigTest, everyOtherBooleanIsFalse)
{
    for (const char* text : {"false", "FALSE", "yes", "1", "truth"}) {
        EXPECT_EQ(0, load("reuseAdditionalTextFromAalAtClear", text));
        EXPECT_FALSE(config.reuseAdditionalTextFromAalAtClear) << text;
    }
}

// --- The heartbeat interval

TEST_F(FmConfigTest, theHeartbeatIntervalIsKeptInSeconds)
{
    config.setHeartbeatInterval(4294967295);

    EXPECT_EQ(4294967295, config.getHeartbeatInterval());
    EXPECT_EQ(4294967295, config.heartbeatInterval);
}

TEST_F(FmConfigTest, theIntervalIsTheLowHalfOfTheField)
{
    config.heartbeatInterval = (std::uint64_t{7} << 32) + 5;

    EXPECT_EQ(5U, config.getHeartbeatInterval());
}

TEST_F(FmConfigTest, settingTheIntervalEmptiesTheHighHalfOfTheField)
{
    config.heartbeatInterval = (std::uint64_t{7} << 32) + 5;

    config.setHeartbeatInterval(6);

    EXPECT_EQ(6U, config.heartbeatInterval);
}

// --- Loading again

TEST_F(FmConfigTest, theSecondLoadBeginsWithTheDefaults)
{
    load(everyParameter);
    config.setHeartbeatInterval(5);

    EXPECT_EQ(0, load("transientCeaseAlarmFilterTime", "1"));

    EXPECT_EQ("heartbeat=60 silent=0 raise=0 cease=1000000000 reuse=0 count=1 window=0", values());
}

// --- Failures

TEST_F(FmConfigTest, aMissingFileFails)
{
    const std::string missing = fileName + ".missing";

    EXPECT_EQ(-1, config.load(missing));

    EXPECT_THAT(journal(), ElementsAre(failure(missing + ": File not found: " + missing)));
}

TEST_F(FmConfigTest, aFileThatIsNotWellFormedFails)
{
    folder.write("fm.xml", "<configuration>\n<ZorvFmComponent>\n</configuration>");

    EXPECT_EQ(-1, config.load(fileName));

    EXPECT_THAT(journal(), ElementsAre(failure(fileName + ":3: Tag mismatch in line 3 column 2")));
}

TEST_F(FmConfigTest, anEmptyFileFails)
{
    folder.write("fm.xml", "");

    EXPECT_EQ(-1, config.load(fileName));

    EXPECT_THAT(journal(), ElementsAre(failure(fileName + ":1: No element found in line 1 column 0")));
}

TEST_F(FmConfigTest, aDocumentWithoutTheElementFails)
{
    folder.write("fm.xml", "<configuration><zorvFmComponent/></configuration>");

    EXPECT_EQ(-1, config.load(fileName));

    EXPECT_EQ(defaults, values());
    EXPECT_THAT(journal(), ElementsAre(failure("No ZorvFmComponent configuration found")));
}

TEST_F(FmConfigTest, twoElementsFail)
{
    folder.write("fm.xml", "<configuration><ZorvFmComponent/><more><ZorvFmComponent/></more></configuration>");

    EXPECT_EQ(-1, config.load(fileName));

    EXPECT_THAT(journal(), ElementsAre(failure("Multiple ZorvFmComponent configurations found")));
}

TEST_F(FmConfigTest, negativeNumbersFail)
{
    expectRefusal("alarmToggleSilentTimeout", "-1", "UnsignedInt Expected Exception");
    expectRefusal("transientRaiseAlarmFilterTime", "-0", "UnsignedInt Expected Exception");
    expectRefusal("alarmToggleTriggerCount", "-x", "UnsignedInt Expected Exception");
}

TEST_F(FmConfigTest, numbersWithOtherCharactersAroundThemFail)
{
    expectRefusal("transientCeaseAlarmFilterTime", "5s", "Invalid string exception");
    expectRefusal("alarmToggleWindowSize", "5 ", "Invalid string exception");
    expectRefusal("alarmToggleWindowSize", " 5", "Invalid string exception");
    expectRefusal("alarmToggleWindowSize", " -5", "Invalid string exception");
    expectRefusal("alarmToggleTriggerCount", "\n1", "Invalid string exception");
    expectRefusal("alarmToggleTriggerCount", "x", "Invalid string exception");
    expectRefusal("alarmToggleTriggerCount", "1.5", "Invalid string exception");
}

TEST_F(FmConfigTest, numbersOutOfRangeFail)
{
    expectRefusal("alarmToggleTriggerCount", "4294967296", "Value range exception");
    expectRefusal("alarmToggleTriggerCount", "4294967296x", "Value range exception");
    expectRefusal("alarmToggleWindowSize", "18446744073709551616", "Value range exception");
}

TEST_F(FmConfigTest, whatWasReadBeforeAFailureStaysInSeconds)
{
    EXPECT_EQ(-1, load("<alarmToggleSilentTimeout>30</alarmToggleSilentTimeout>"
                       "<transientRaiseAlarmFilterTime>2</transientRaiseAlarmFilterTime>"
                       "<transientCeaseAlarmFilterTime>5</transientCeaseAlarmFilterTime>"
                       "<alarmToggleTriggerCount>0</alarmToggleTriggerCount>"
                       "<alarmToggleWindowSize>x</alarmToggleWindowSize>"
                       "<reuseAdditionalTextFromAalAtClear>true</reuseAdditionalTextFromAalAtClear>"));

    EXPECT_EQ("heartbeat=60 silent=30 raise=2 cease=5 reuse=0 count=0 window=0", values());
}

TEST_F(FmConfigTest, aTextFromTheFileIsNeverAFormat)
{
    const std::string missing = fileName + "%s%n";

    EXPECT_EQ(-1, config.load(missing));

    EXPECT_THAT(journal(), ElementsAre(failure(missing + ": File not found: " + missing)));
}

// --- Traces

TEST_F(FmConfigTest, tracesWhatItUses)
{
    middleware.journal.showOnly({Topic::Trace});

    load("<alarmToggleSilentTimeout>30</alarmToggleSilentTimeout>"
         "<transientRaiseAlarmFilterTime>002</transientRaiseAlarmFilterTime>"
         "<transientCeaseAlarmFilterTime/>"
         "<reuseAdditionalTextFromAalAtClear>TRUE</reuseAdditionalTextFromAalAtClear>"
         "<alarmToggleTriggerCount>0</alarmToggleTriggerCount>");

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> \n" + fileName, "trace 8 FM ZorvFmComponent tag found",
                                       "trace 8 FM Using value 30 for parameter alarmToggleSilentTimeout",
                                       "trace 8 FM Using value 2 for parameter transientRaiseAlarmFilterTime",
                                       "trace 8 FM Using default value for parameter transientCeaseAlarmFilterTime",
                                       "trace 8 FM Using value 0 for parameter alarmToggleTriggerCount",
                                       "trace 8 FM Using default value for parameter alarmToggleWindowSize",
                                       "trace 8 FM Using value true for parameter reuseAdditionalTextFromAalAtClear",
                                       "trace 8 FM releasing component list", "trace 8 FM  << "));
}

TEST_F(FmConfigTest, tracesEveryDefaultThatItUses)
{
    middleware.journal.showOnly({Topic::Trace});

    load("");

    const std::string usingDefault = "trace 8 FM Using default value for parameter ";
    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> \n" + fileName, "trace 8 FM ZorvFmComponent tag found",
                            usingDefault + "alarmToggleSilentTimeout", usingDefault + "transientRaiseAlarmFilterTime",
                            usingDefault + "transientCeaseAlarmFilterTime", usingDefault + "alarmToggleTriggerCount",
                            usingDefault + "alarmToggleWindowSize", usingDefault + "reuseAdditionalTextFromAalAtClear",
                            "trace 8 FM releasing component list", "trace 8 FM  << "));
}

TEST_F(FmConfigTest, tracesAFalseBoolean)
{
    middleware.journal.showOnly({Topic::Trace});

    load("reuseAdditionalTextFromAalAtClear", "False");

    const auto entries = journal();
    ASSERT_EQ(10U, entries.size());
    EXPECT_EQ("trace 8 FM Using value false for parameter reuseAdditionalTextFromAalAtClear", entries[7]);
}

TEST_F(FmConfigTest, tracesNothingBehindAFailure)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Log});

    load("alarmToggleSilentTimeout", "x");

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> \n" + fileName, "trace 8 FM ZorvFmComponent tag found",
                                       failure("Invalid string exception")));
}

}  // namespace
}  // namespace ZorvFm

#include "Names.hpp"

#include <gtest/gtest.h>

namespace ZorvCtl {

namespace {

std::string ofJson(std::string (*text)(const ZorvInput::JsonT&), const std::string& json)
{
    ZorvInput::JsonDocumentT document;
    ZorvInput::parseJson(json, 2, document);
    return text(document);
}

}  // namespace

TEST(NamesTest, probableCausesHaveTheNamesOfTheirNumbers)
{
    EXPECT_EQ("aIS (1)", ofJson(&probableCauseText, "1"));
    EXPECT_EQ("routingFailure (26)", ofJson(&probableCauseText, "26"));
    EXPECT_EQ("backplaneFailure (51)", ofJson(&probableCauseText, "51"));
    EXPECT_EQ("protectingResourceFailure (82)", ofJson(&probableCauseText, "82"));
    EXPECT_EQ("airCompressorFailure (101)", ofJson(&probableCauseText, "101"));
    EXPECT_EQ("externalPointFailure (136)", ofJson(&probableCauseText, "136"));
    EXPECT_EQ("storageCapacityProblem (151)", ofJson(&probableCauseText, "151"));
    EXPECT_EQ("versionMismatch (166)", ofJson(&probableCauseText, "166"));
    EXPECT_EQ("systemResourcesOverload (207)", ofJson(&probableCauseText, "207"));
    EXPECT_EQ("adapterError (500)", ofJson(&probableCauseText, "500"));
    EXPECT_EQ("versionMismatch (555)", ofJson(&probableCauseText, "555"));
    EXPECT_EQ("authenticationFailure (600)", ofJson(&probableCauseText, "600"));
    EXPECT_EQ("unexpectedInformation (615)", ofJson(&probableCauseText, "615"));
    EXPECT_EQ("other (1024)", ofJson(&probableCauseText, "1024"));
}

TEST(NamesTest, aNumberBetweenTheRangesHasNoName)
{
    for (const char* number : {"0", "27", "50", "83", "137", "167", "208", "418", "556", "616", "1023", "1025"}) {
        EXPECT_EQ(number, ofJson(&probableCauseText, number));
    }
}

TEST(NamesTest, theTableOfCausesHasAllOfItsNumbers)
{
    int names = 0;
    for (std::uint64_t number = 0; number <= 2000; ++number) {
        names += findProbableCause(number) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(26 + 32 + 36 + 16 + 7 + 56 + 16 + 1, names);
}

TEST(NamesTest, eventTypesGoByNumberAndByTheNamesOfModels)
{
    EXPECT_EQ("other (1)", ofJson(&eventTypeText, "1"));
    EXPECT_EQ("timeDomainViolation (11)", ofJson(&eventTypeText, "11"));
    EXPECT_EQ("0", ofJson(&eventTypeText, "0"));
    EXPECT_EQ("12", ofJson(&eventTypeText, "12"));
    EXPECT_EQ("qualityOfServiceAlarm (3)", ofJson(&eventTypeText, "\"QUALITYOFSERVICEALARM\""));
    EXPECT_EQ("HOUSE", ofJson(&eventTypeText, "\"HOUSE\""));
    EXPECT_EQ("-", ofJson(&eventTypeText, "null"));
}

TEST(NamesTest, severitiesAreNamedWhereTheyHaveAName)
{
    EXPECT_EQ("MAJOR", ofJson(&severityOf, "\"MAJOR\""));
    EXPECT_EQ("MAJOR", ofJson(&severityOf, "4"));
    EXPECT_EQ("-3", ofJson(&severityOf, "-3"));
}

}  // namespace ZorvCtl

#include "notification/NotificationReader.hpp"

#include <gmock/gmock.h>

namespace ZorvInput {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

constexpr std::uint64_t standIn = 55;

FmNotification read(const std::string& text)
{
    JsonDocumentT document;
    parseJson(text, 8, document);
    JsonFields object(document);
    FmNotification notification = readNotification(object, standIn);
    object.expectNoOther();
    return notification;
}

std::string failureOf(const std::string& text)
{
    try {
        read(text);
    } catch (const FieldError& e) {
        return e.what();
    }
    return "read";
}

/// A raise with one field more, or more fields around it.
std::string raise(const std::string& inside, const std::string& outside = "")
{
    return R"({"raise":{"dn":"Port=1","majorType":32473,"minorType":9)" + inside + "}" + outside + "}";
}

const std::string major = R"(,"severity":"MAJOR")";

}  // namespace

TEST(NotificationReaderTest, everyFieldIsRead)
{
    const FmNotification it = read(R"({"framework":"yalt","version":4,"raise":{"dn":"Port=1","majorType":4294967295,
        "minorType":9,"severity":"CRITICAL","text":"loss","eventTime":18446744073709551615,
        "info":[["b","1"],["a","2"],["b","3"]]}})");

    EXPECT_EQ(FmFramework::yalt, it.framework);
    EXPECT_EQ(4, it.version);
    EXPECT_EQ("Port=1", it.dn);
    EXPECT_EQ(4294967295U, it.majorType);
    EXPECT_EQ(9U, it.minorType);
    EXPECT_EQ(5, it.severity);
    EXPECT_EQ("loss", it.text);
    EXPECT_EQ(UINT64_MAX, it.eventTime);
    EXPECT_THAT(it.info, ElementsAre(Pair("b", "1"), Pair("a", "2"), Pair("b", "3")));
}

TEST(NotificationReaderTest, whatIsLeftOutHasItsDefault)
{
    const FmNotification it = read(raise(major));

    EXPECT_EQ(FmFramework::yalt, it.framework);
    EXPECT_EQ(4, it.version);
    EXPECT_EQ("", it.text);
    EXPECT_EQ(standIn, it.eventTime);
    EXPECT_THAT(it.info, IsEmpty());
    EXPECT_EQ(2, read(raise(major, R"(,"framework":"zorv")")).version);
}

TEST(NotificationReaderTest, theEventTimeMayBeATextOfDigits)
{
    EXPECT_EQ(1700000000000000001U, read(raise(major + R"(,"eventTime":"1700000000000000001")")).eventTime);
    EXPECT_EQ(0U, read(raise(major + R"(,"eventTime":0)")).eventTime);
}

TEST(NotificationReaderTest, severitiesAreNamesOrNumbers)
{
    const char* const names[] = {"CLEARED", "INDETERMINATE", "WARNING", "MINOR", "MAJOR", "CRITICAL"};
    for (std::int32_t number = 0; number < 6; ++number) {
        EXPECT_EQ(number, read(raise(",\"severity\":\"" + std::string(names[number]) + "\"")).severity);
        EXPECT_EQ(names[number], severityText(number));
    }
    EXPECT_EQ(-2147483648, read(raise(R"(,"severity":-2147483648)")).severity);
    EXPECT_EQ("-1", severityText(-1));
    EXPECT_EQ("6", severityText(6));
}

TEST(NotificationReaderTest, aClearNeedsNoSeverity)
{
    EXPECT_EQ(0, read(R"({"clear":{"dn":"P=1","majorType":1,"minorType":2}})").severity);
    EXPECT_EQ(0, read(R"({"clear":{"dn":"P=1","majorType":1,"minorType":2,"severity":"CLEARED"}})").severity);
    EXPECT_EQ(3, read(R"({"alert":{"dn":"P=1","majorType":1,"minorType":2,"severity":"MINOR"}})").severity);
}

TEST(NotificationReaderTest, infoOfAnObjectGoesByName)
{
    EXPECT_THAT(read(raise(major + R"(,"info":{"b":"1","a":"2","":"3"})")).info,
                ElementsAre(Pair("", "3"), Pair("a", "2"), Pair("b", "1")));
}

TEST(NotificationReaderTest, exactlyOneKindIsNeeded)
{
    EXPECT_EQ("raise: missing; so are clear and alert", failureOf("{}"));
    EXPECT_EQ("clear: beside raise", failureOf(R"({"clear":{},"raise":{}})"));
    EXPECT_EQ("alert: beside clear", failureOf(R"({"alert":{},"clear":{}})"));
    EXPECT_EQ("raise: not an object, \"7\"", failureOf(R"({"raise":7})"));
}

TEST(NotificationReaderTest, aWrongFrameworkOrVersionIsTold)
{
    EXPECT_EQ("framework: not zorv or yalt, \"x\"", failureOf(raise(major, R"(,"framework":"x")")));
    EXPECT_EQ("framework: not a text, \"1\"", failureOf(raise(major, R"(,"framework":1)")));
    EXPECT_EQ("version: not a number from 1 to 4, \"5\"", failureOf(raise(major, R"(,"version":5)")));
    EXPECT_EQ("version: framework yalt has no such version, \"3\"", failureOf(raise(major, R"(,"version":3)")));
    EXPECT_EQ("version: framework zorv has no such version, \"4\"",
              failureOf(raise(major, R"(,"version":4,"framework":"zorv")")));
}

TEST(NotificationReaderTest, aWrongFieldIsTold)
{
    EXPECT_EQ("raise.dn: missing", failureOf(R"({"raise":{}})"));
    EXPECT_EQ("raise.dn: not a text, \"null\"", failureOf(R"({"raise":{"dn":null}})"));
    EXPECT_EQ("raise.dn: contains U+0000, which ends a text", failureOf(R"({"raise":{"dn":"a\u0000"}})"));
    EXPECT_EQ("raise.majorType: missing", failureOf(R"({"raise":{"dn":"a"}})"));
    EXPECT_EQ("raise.majorType: not a number from 0 to 4294967295, \"4294967296\"",
              failureOf(R"({"raise":{"dn":"a","majorType":4294967296}})"));
    EXPECT_EQ("raise.minorType: not a number from 0 to 4294967295, \"-1\"",
              failureOf(R"({"raise":{"dn":"a","majorType":1,"minorType":-1}})"));
    EXPECT_EQ("raise.text: not a text, \"1\"", failureOf(raise(major + R"(,"text":1)")));
    EXPECT_EQ("raise.colour: unknown field", failureOf(raise(major + R"(,"colour":1)")));
    EXPECT_EQ("colour: unknown field", failureOf(raise(major, R"(,"colour":1)")));
    EXPECT_EQ("raise.severity: unknown field", failureOf(raise(major + major)));
}

TEST(NotificationReaderTest, aWrongSeverityIsTold)
{
    EXPECT_EQ("raise.severity: missing", failureOf(raise("")));
    EXPECT_EQ("raise.severity: no severity, \"major\"", failureOf(raise(R"(,"severity":"major")")));
    EXPECT_EQ("raise.severity: not a number from -2147483648 to 2147483647, \"2147483648\"",
              failureOf(raise(R"(,"severity":2147483648)")));
    EXPECT_EQ("clear.severity: not CLEARED, \"MAJOR\"",
              failureOf(R"({"clear":{"dn":"P=1","majorType":1,"minorType":2,"severity":"MAJOR"}})"));
}

TEST(NotificationReaderTest, aWrongEventTimeIsTold)
{
    for (const std::string time : {"-1", "0.5", "true", "18446744073709551616"}) {
        EXPECT_THAT(failureOf(raise(major + ",\"eventTime\":" + time)),
                    ::testing::StartsWith("raise.eventTime: not a number of nanoseconds, "));
    }
    for (const std::string time : {"", "now", "1,000", " 5", "+5", "18446744073709551616"}) {
        EXPECT_EQ("raise.eventTime: not a number of nanoseconds, \"" + time + "\"",
                  failureOf(raise(major + ",\"eventTime\":\"" + time + "\"")));
    }
}

TEST(NotificationReaderTest, wrongInfoIsTold)
{
    EXPECT_EQ("raise.info: not an object, \"7\"", failureOf(raise(major + R"(,"info":7)")));
    EXPECT_EQ("raise.info: not a pair of texts, \"[\"a\"]\"", failureOf(raise(major + R"(,"info":[["a"]])")));
    EXPECT_EQ("raise.info: not a pair of texts, \"[\"a\",1]\"", failureOf(raise(major + R"(,"info":[["a",1]])")));
    EXPECT_EQ("raise.info: not a pair of texts, \"x\"", failureOf(raise(major + R"(,"info":["x"])")));
    EXPECT_EQ("raise.info: not a pair of texts, \"[\"a\",\"\\u0000\"]\"",
              failureOf(raise(major + R"(,"info":[["a","\u0000"]])")));
    EXPECT_EQ("raise.info.a: not a text, \"1\"", failureOf(raise(major + R"(,"info":{"a":1})")));
    EXPECT_EQ("raise.info: only in version 4, \"2\"",
              failureOf(raise(major + R"(,"info":[["a","b"]])", R"(,"framework":"zorv")")));
}

}  // namespace ZorvInput

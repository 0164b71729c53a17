#include "NotificationJson.hpp"

#include <gtest/gtest.h>

namespace ZorvClientTest {

using ZorvClient::encode;
using ZorvClient::Kind;

struct NotificationJsonTest : ::testing::Test {
    NotificationJsonTest()
    {
        notification.dn = "Equipment=1,Slot=2";
        notification.majorType = 32473;
        notification.minorType = 4294967295;
        notification.severity = ZORV_CLIENT_CRITICAL;
    }

    std::string json(Kind kind)
    {
        std::string text;
        EXPECT_EQ(encode(kind, notification, 1700000000000000001, text), ZORV_CLIENT_OK);
        return text;
    }

    ZorvClientResultT result(Kind kind = Kind::raise)
    {
        std::string text;
        return encode(kind, notification, 1, text);
    }

    void setInfo(const char* name, const char* value)
    {
        info = {name, value};
        notification.info = &info;
        notification.infoCount = 1;
    }

    ZorvClientNotificationT notification{};
    ZorvClientInfoT info{};
};

TEST_F(NotificationJsonTest, raiseWithAllThereIs)
{
    const ZorvClientInfoT pairs[] = {{"z", "1"}, {"a", ""}};
    notification.additionalText = "no \"light\"\n\xC3\xA9";
    notification.info = pairs;
    notification.infoCount = 2;
    notification.eventTime = 18446744073709551615u;
    EXPECT_EQ(json(Kind::raise),
              "{\"raise\":{\"dn\":\"Equipment=1,Slot=2\",\"text\":\"no \\\"light\\\"\\u000A\xC3\xA9\","
              "\"info\":[[\"z\",\"1\"],[\"a\",\"\"]],\"majorType\":32473,\"minorType\":4294967295,"
              "\"severity\":\"CRITICAL\",\"eventTime\":18446744073709551615}}");
}

TEST_F(NotificationJsonTest, whatJsonCannotHoldIsEscaped)
{
    notification.dn = "\"\\/\x01\x1f\t\x7f\xC2\x80";
    EXPECT_EQ(json(Kind::clear),
              "{\"clear\":{\"dn\":\"\\\"\\\\/\\u0001\\u001F\\u0009\x7f\xC2\x80\",\"majorType\":32473,"
              "\"minorType\":4294967295,\"eventTime\":1700000000000000001}}");
}

TEST_F(NotificationJsonTest, clearHasNoSeverityAndTheTimeOfTheCall)
{
    EXPECT_EQ(json(Kind::clear), R"({"clear":{"dn":"Equipment=1,Slot=2","majorType":32473,"minorType":4294967295,)"
                                 R"("eventTime":1700000000000000001}})");
}

TEST_F(NotificationJsonTest, alertHasASeverity)
{
    notification.severity = ZORV_CLIENT_INDETERMINATE;
    EXPECT_EQ(json(Kind::alert), R"({"alert":{"dn":"Equipment=1,Slot=2","majorType":32473,"minorType":4294967295,)"
                                 R"("severity":"INDETERMINATE","eventTime":1700000000000000001}})");
}

TEST_F(NotificationJsonTest, severitiesOutsideTheStandardAreRefused)
{
    for (const int severity : {-1, 0, 6}) {
        notification.severity = severity;
        EXPECT_EQ(result(Kind::raise), ZORV_CLIENT_BAD_SEVERITY) << severity;
        EXPECT_EQ(result(Kind::alert), ZORV_CLIENT_BAD_SEVERITY) << severity;
        EXPECT_EQ(result(Kind::clear), ZORV_CLIENT_OK) << severity;
    }
}

TEST_F(NotificationJsonTest, missingTextsAreRefused)
{
    setInfo(nullptr, "value");
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
    setInfo("name", nullptr);
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
    setInfo("name", "value");
    notification.dn = "";
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
    notification.dn = nullptr;
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
}

TEST_F(NotificationJsonTest, whatIsNotUtf8IsRefusedInEveryText)
{
    const char* const wrong = "\xC0\xAF";
    setInfo(wrong, "value");
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
    setInfo("name", wrong);
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
    setInfo("name", "value");
    notification.additionalText = wrong;
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
    notification.additionalText = nullptr;
    notification.dn = wrong;
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
}

TEST_F(NotificationJsonTest, surrogatesAndCutCharactersAreNotUtf8)
{
    for (const char* wrong : {"\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\x80", "\xFF"}) {
        notification.dn = wrong;
        EXPECT_EQ(result(), ZORV_CLIENT_BAD_TEXT);
    }
    notification.dn = "\xF0\x9F\x94\xA5";
    EXPECT_EQ(result(), ZORV_CLIENT_OK);
}

TEST_F(NotificationJsonTest, eachTextHasItsGreatestLength)
{
    const auto check = [this](std::size_t longest, const char*& text) {
        const char* const before = text;
        const std::string fits(longest, 'x');
        const std::string tooLong(longest + 1, 'x');
        text = fits.c_str();
        EXPECT_EQ(result(), ZORV_CLIENT_OK) << longest;
        text = tooLong.c_str();
        EXPECT_EQ(result(), ZORV_CLIENT_TOO_LONG) << longest;
        text = before;
    };
    setInfo("name", "value");
    check(ZORV_CLIENT_MAX_DN, notification.dn);
    check(ZORV_CLIENT_MAX_TEXT, notification.additionalText);
    check(ZORV_CLIENT_MAX_INFO_NAME, info.name);
    check(ZORV_CLIENT_MAX_INFO_VALUE, info.value);
}

TEST_F(NotificationJsonTest, additionalInformationHasItsGreatestNumber)
{
    const std::vector<ZorvClientInfoT> pairs(ZORV_CLIENT_MAX_INFO + 1, ZorvClientInfoT{"a", "b"});
    notification.info = pairs.data();
    notification.infoCount = ZORV_CLIENT_MAX_INFO;
    EXPECT_EQ(result(), ZORV_CLIENT_OK);
    ++notification.infoCount;
    EXPECT_EQ(result(), ZORV_CLIENT_TOO_LONG);
}

TEST_F(NotificationJsonTest, aCountWithoutPairsIsRefused)
{
    notification.infoCount = 1;
    EXPECT_EQ(result(), ZORV_CLIENT_BAD_ARGUMENT);
}

}  // namespace ZorvClientTest

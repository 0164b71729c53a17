#include "Verdict.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ZorvClientTest {

using ::testing::ElementsAre;
using ZorvClient::Action;
using ZorvClient::HttpAnswer;
using ZorvClient::judge;
using ZorvClient::Verdict;

namespace {

HttpAnswer answered(int status, const std::string& body)
{
    return {status, "Text", body, false};
}

/// "+" for what is taken, "field: reason" for what is rejected.
std::vector<std::string> items(const Verdict& verdict)
{
    std::vector<std::string> texts;
    for (const auto& item : verdict.items) {
        texts.push_back(item.isRejected ? item.field + ": " + item.reason : "+");
    }
    return texts;
}

}  // namespace

TEST(VerdictTest, allTaken)
{
    const Verdict verdict = judge(answered(200, R"({"accepted":2,"rejected":[]})"), 2);
    EXPECT_EQ(verdict.action, Action::settle);
    EXPECT_THAT(items(verdict), ElementsAre("+", "+"));
}

TEST(VerdictTest, someRejected)
{
    const Verdict verdict = judge(
        answered(200, R"({"accepted":1,"rejected":[{"item":2,"reason":"b"},{"item":0,"field":"f","reason":"a"}]})"), 3);
    EXPECT_EQ(verdict.action, Action::settle);
    EXPECT_THAT(items(verdict), ElementsAre("f: a", "+", ": b"));
}

TEST(VerdictTest, allRejectedOneByOne)
{
    const Verdict verdict =
        judge(answered(422, R"({"accepted":0,"rejected":[{"item":0,"reason":"a"},{"item":1,"reason":"b"}]})"), 2);
    EXPECT_EQ(verdict.action, Action::settle);
    EXPECT_THAT(items(verdict), ElementsAre(": a", ": b"));
}

TEST(VerdictTest, otherMembersAreSkipped)
{
    const char* const body = R"({"x":{"accepted":7,"rejected":[{"item":0}]},"accepted":0,"y":[1,[{"item":0}]],)"
                             R"("rejected":[{"x":[{"reason":"no"}],"item":0,"reason":"a\u00e9"}],"z":null})";
    EXPECT_THAT(items(judge(answered(200, body), 1)), ElementsAre(": a\xC3\xA9"));
}

TEST(VerdictTest, namesOfMembersAreNothingButNames)
{
    const char* const body = R"({"rejected[].item":0,"rejected[]":{"item":0},"error.reason":"no","":{"accepted":1}})";
    EXPECT_EQ(judge(answered(200, body), 1).action, Action::retry);
    EXPECT_THAT(items(judge(answered(400, body), 1)), ElementsAre(": 400 Text"));
}

TEST(VerdictTest, anAnswerWithoutAnEndToItsDepthIsNone)
{
    EXPECT_EQ(judge(answered(200, std::string(1000000, '[')), 1).action, Action::retry);
}

TEST(VerdictTest, anAnswerThatEndsInsideACharacterIsNone)
{
    for (const char* lead : {"\xC3", "\xED", "\xED\x80", "\xF0", "\xF0\x90\x80"}) {
        const std::string body = std::string(R"({"accepted":1,"rejected":[],"more":"a long text)") + lead;
        EXPECT_EQ(judge(answered(200, body), 1).action, Action::retry);
    }
}

TEST(VerdictTest, refusedWhole)
{
    const Verdict verdict = judge(answered(400, R"({"error":{"reason":"not JSON","field":"wait"}})"), 2);
    EXPECT_EQ(verdict.action, Action::settle);
    EXPECT_THAT(items(verdict), ElementsAre("wait: not JSON", "wait: not JSON"));
}

TEST(VerdictTest, aRefusalWithoutAReasonHasItsStatus)
{
    for (const char* body : {"", "<html>", "[]", R"({"error":1})", R"({"error":{"reason":1}})"}) {
        EXPECT_THAT(items(judge(answered(404, body), 1)), ElementsAre(": 404 Text")) << body;
    }
}

TEST(VerdictTest, whatTheNodeCannotTakeNowIsTriedAgain)
{
    for (const int status : {204, 302, 408, 429, 500, 503}) {
        EXPECT_EQ(judge(answered(status, ""), 1).action, Action::retry) << status;
    }
}

TEST(VerdictTest, tooLargeIsSplitWhileItCanBe)
{
    EXPECT_EQ(judge(answered(413, ""), 2).action, Action::split);
    EXPECT_THAT(items(judge(answered(413, ""), 1)), ElementsAre(": 413 Text"));
}

TEST(VerdictTest, anAnswerThatDoesNotAccountForEachIsNone)
{
    for (const char* body : {
             "",
             "{",
             "[]",
             R"({"accepted":2})",
             R"({"rejected":[]})",
             R"({"accepted":1,"rejected":[]})",
             R"({"accepted":3,"rejected":[]})",
             R"({"accepted":"2","rejected":[]})",
             R"({"accepted":2,"rejected":{}})",
             R"({"accepted":1,"rejected":[{"reason":"a"}]})",
             R"({"accepted":1,"rejected":[{"item":2,"reason":"a"}]})",
             R"({"accepted":1,"rejected":[{"item":-1,"reason":"a"}]})",
             R"({"accepted":0,"rejected":[{"item":0,"reason":"a"},{"item":0,"reason":"a"}]})",
             R"({"accepted":1,"rejected":[1]})",
             R"({"accepted":2,"rejected":[]} x)",
             "{\"accepted\":2,\"rejected\":[],\"x\":\"\xFF\"}",
         }) {
        EXPECT_EQ(judge(answered(200, body), 2).action, Action::retry) << body;
    }
}

}  // namespace ZorvClientTest

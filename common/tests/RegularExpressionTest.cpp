#include "RegularExpression.hpp"

#include <gtest/gtest.h>
#include <regex.h>
#include <sys/resource.h>

#include <chrono>
#include <string>

namespace Zorv {
namespace {

constexpr int asClearsUseThem = REG_EXTENDED | REG_NOSUB;

bool matches(const std::string& pattern, const std::string& text, int flags = asClearsUseThem)
{
    const RegularExpression expression(pattern, flags);
    EXPECT_TRUE(expression.isExpressionValid()) << pattern << ": " << expression.getErrorText();
    EXPECT_EQ("", expression.getErrorText());
    return expression.match(text);
}

/// Why the pattern is refused; empty when it is not. A refused pattern matches nothing.
std::string refusal(const std::string& pattern, int flags = asClearsUseThem)
{
    const RegularExpression expression(pattern, flags);
    EXPECT_EQ(expression.getErrorText().empty(), expression.isExpressionValid());
    EXPECT_FALSE(!expression.isExpressionValid() && (expression.match("") || expression.match(pattern)));
    return expression.getErrorText();
}

TEST(RegularExpressionTest, isSearchedAnywhereInTheText)
{
    EXPECT_TRUE(matches("Port=4", "ManagedElement=1,Port=4,Link=1"));
    EXPECT_TRUE(matches("", "anything"));
    EXPECT_FALSE(matches("Port=5", "ManagedElement=1,Port=4"));
    EXPECT_FALSE(matches("port=4", "ManagedElement=1,Port=4"));
}

TEST(RegularExpressionTest, anchorsBindToTheEndsOfTheText)
{
    EXPECT_TRUE(matches("^ManagedElement=[^,]+$", "ManagedElement=1"));
    EXPECT_FALSE(matches("^ManagedElement=[^,]+$", "ManagedElement=1,Port=4"));
    EXPECT_FALSE(matches("^Port", "ManagedElement=1,Port=4"));
    EXPECT_TRUE(matches("^ManagedElement=.*,SystemFunctions=.*,Fm=.*$", "ManagedElement=1,SystemFunctions=1,Fm=1"));
}

TEST(RegularExpressionTest, theTextIsOneLineUnlessAskedOtherwise)
{
    EXPECT_FALSE(matches("^b", "a\nb"));
    EXPECT_FALSE(matches("a$", "a\nb"));
    EXPECT_TRUE(matches("a.b", "a\nb"));

    EXPECT_TRUE(matches("^b", "a\nb", asClearsUseThem | REG_NEWLINE));
    EXPECT_TRUE(matches("a$", "a\nb", asClearsUseThem | REG_NEWLINE));
    EXPECT_FALSE(matches("a.b", "a\nb", asClearsUseThem | REG_NEWLINE));
}

TEST(RegularExpressionTest, knowsTheExtendedSyntax)
{
    EXPECT_TRUE(matches("Port=(1|4)", "Port=4"));
    EXPECT_TRUE(matches("Port=[0-9]{2}$", "Port=42"));
    EXPECT_FALSE(matches("Port=[0-9]{2}$", "Port=4"));
    EXPECT_TRUE(matches("^a+b?c*$", "aac"));
    EXPECT_TRUE(matches("[[:alpha:]]=[[:digit:]]", "Port=4"));
    EXPECT_FALSE(matches("^[[:alpha:]]$", "4"));
    EXPECT_TRUE(matches("a\\.b", "a.b"));
    EXPECT_FALSE(matches("a\\.b", "a,b"));
}

TEST(RegularExpressionTest, ignoresCaseWhenAsked)
{
    EXPECT_TRUE(matches("port=4", "Port=4", asClearsUseThem | REG_ICASE));
}

TEST(RegularExpressionTest, readsPatternAndTextByteByByte)
{
    EXPECT_TRUE(matches("^Port=..$", "Port=\xc3\xa4"));
    EXPECT_TRUE(matches("\xff", "a\xff"));
    EXPECT_TRUE(matches("^a.b$", std::string("a\0b", 3)));
}

TEST(RegularExpressionTest, aDistinguishedNameMatchesItselfAsAPattern)
{
    EXPECT_TRUE(matches("ManagedElement=1,Slot=2,Port=4", "ManagedElement=1,Slot=2,Port=4"));
}

TEST(RegularExpressionTest, oneExpressionServesManyTexts)
{
    const RegularExpression expression("Port=[13]$", asClearsUseThem);

    EXPECT_TRUE(expression.match("Port=1"));
    EXPECT_FALSE(expression.match("Port=2"));
    EXPECT_TRUE(expression.match("Port=3"));
}

TEST(RegularExpressionTest, refusesInvalidPatternsWithTheirReason)
{
    EXPECT_EQ("missing ): a(b", refusal("a(b"));
    EXPECT_EQ("unexpected ): a)b", refusal("a)b"));
    EXPECT_EQ("missing ]: [b", refusal("a[b"));
    EXPECT_EQ("no argument for repetition operator: *", refusal("*a"));
    EXPECT_EQ("invalid character class range: z-a", refusal("[z-a]"));
    EXPECT_EQ("trailing \\", refusal("a\\"));
    EXPECT_EQ("invalid escape sequence: \\1", refusal("(a)\\1"));
}

TEST(RegularExpressionTest, refusesTheBasicSyntax)
{
    EXPECT_EQ("basic syntax is not supported", refusal("a", REG_NOSUB));
}

// --- Patterns that mean harm. The bounds leave room for sanitizers on a busy machine.

constexpr std::chrono::seconds timeBound{10};
constexpr long memoryBound = 256L * 1024;  // KiB

std::string repeated(const std::string& text, std::size_t times)
{
    std::string result;
    for (; times > 0; --times) {
        result += text;
    }
    return result;
}

class HostilePatternTest : public testing::Test {
protected:
    ~HostilePatternTest() override
    {
        EXPECT_LT(std::chrono::steady_clock::now() - began, timeBound);
        EXPECT_LT(peakMemory() - peakBefore, memoryBound);
    }

    static long peakMemory()
    {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    }

    const std::chrono::steady_clock::time_point began = std::chrono::steady_clock::now();
    const long peakBefore = peakMemory();
};

TEST_F(HostilePatternTest, largeRepetitionCountsAreRefused)
{
    EXPECT_EQ("pattern too large", refusal("a{1,32767}"));
    EXPECT_EQ("pattern too large", refusal("(((a{1,100}){1,100}){1,100}){1,100}"));
    EXPECT_EQ("pattern too large", refusal("((a{100}){100}){100}"));
    EXPECT_EQ("invalid repetition size: {1001}", refusal("a{1001}"));
}

TEST_F(HostilePatternTest, manyRepetitionsAreRefused)
{
    EXPECT_TRUE(matches("^" + repeated("a{1,9}", 199) + "$", std::string(1000, 'a')));
    EXPECT_EQ("pattern too large", refusal(repeated("a{1,9}", 201)));
    EXPECT_EQ("pattern too large", refusal(repeated("a{1,1000}", 2)));
}

TEST_F(HostilePatternTest, deepNestingIsRefused)
{
    for (const std::size_t depth : {1001U, 100000U}) {
        EXPECT_EQ("pattern too large", refusal(std::string(depth, '(') + "a" + std::string(depth, ')')));
        EXPECT_EQ("pattern too large", refusal(std::string(2 * depth, '[')));
    }
    EXPECT_EQ("missing ): " + std::string(2000, '('), refusal(std::string(2000, '(')));
}

TEST_F(HostilePatternTest, nestedRepetitionsMatchInLinearTime)
{
    const std::string text(100000, 'a');

    EXPECT_FALSE(matches("^(a+)+$", text + "b"));
    EXPECT_FALSE(matches("^(a|a)*$", text + "b"));
    EXPECT_FALSE(matches("^(a*)*(a*)*(a*)*c", text));
    EXPECT_TRUE(matches("(x+x+)+y|a$", text));
}

TEST_F(HostilePatternTest, statesThatExplodeStayWithinTheMemoryBound)
{
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += (i * i) % 7 < 3 ? 'a' : 'b';
    }

    EXPECT_FALSE(matches("a[ab]{60}c", text));
    EXPECT_TRUE(matches("(a|b)*a(a|b){12}", text));
}

TEST_F(HostilePatternTest, aPlainPatternHasTheBoundToo)
{
    const std::string text(1000000, 'a');

    EXPECT_TRUE(matches(text.substr(0, 2000), text));
    EXPECT_EQ("pattern too large", refusal(text.substr(0, 2001)));
    EXPECT_EQ("pattern too large", refusal(text));
}

}  // namespace
}  // namespace Zorv

#include "PatternSize.hpp"

#include <gtest/gtest.h>

namespace Zorv {
namespace {

TEST(PatternSizeTest, aPlainTextIsAsLargeAsItIs)
{
    EXPECT_EQ(0U, patternSize(""));
    EXPECT_EQ(16U, patternSize("ManagedElement=1"));
    EXPECT_EQ(9U, patternSize("^a.*b|c+$"));
}

TEST(PatternSizeTest, aRepetitionIsWrittenOut)
{
    EXPECT_EQ(4U, patternSize("a{3}"));
    EXPECT_EQ(6U, patternSize("ba{3}c"));
    EXPECT_EQ(10U, patternSize("a{1,9}"));
    EXPECT_EQ(10U, patternSize("a{9,}"));
    EXPECT_EQ(2U, patternSize("a{0}"));
    EXPECT_EQ(8U, patternSize("a{2}{3}"));
}

TEST(PatternSizeTest, aGroupIsRepeatedAsAWhole)
{
    EXPECT_EQ(4U, patternSize("(ab)"));
    EXPECT_EQ(13U, patternSize("(ab){3}"));
    EXPECT_EQ(15U, patternSize("x(ab){3}y"));
    EXPECT_EQ(31U, patternSize("((ab){3}){2}"));
}

TEST(PatternSizeTest, aClassIsOneThing)
{
    EXPECT_EQ(16U, patternSize("[a-z]{3}"));
    EXPECT_EQ(34U, patternSize("[[:alpha:]]{3}"));
    EXPECT_EQ(13U, patternSize("[](]{3}"));
    EXPECT_EQ(16U, patternSize("[^])]{3}"));
    EXPECT_EQ(16U, patternSize("[\\](]{3}"));
    EXPECT_EQ(34U, patternSize("[\\[:alpha:]{3}"));
}

TEST(PatternSizeTest, anEscapedCharacterIsItself)
{
    EXPECT_EQ(7U, patternSize("\\({3}"));
    EXPECT_EQ(5U, patternSize("a\\{3}"));
}

TEST(PatternSizeTest, bracesAroundAnythingElseAreCharacters)
{
    EXPECT_EQ(5U, patternSize("a{b}c"));
    EXPECT_EQ(3U, patternSize("a{1"));
    EXPECT_EQ(13U, patternSize("a{xb{9}"));
}

TEST(PatternSizeTest, hasABound)
{
    EXPECT_EQ(largestPatternSize, patternSize("(((a{1,1000}){1000}){1000}){1000}"));
    EXPECT_EQ(largestPatternSize, patternSize("a{99999999999999999999999999}"));
    EXPECT_EQ(largestPatternSize, patternSize(std::string(largestPatternSize + 1, 'a')));
}

TEST(PatternSizeTest, whatIsNoExpressionHasASize)
{
    EXPECT_EQ(5U, patternSize("((((("));
    EXPECT_EQ(5U, patternSize(")))))"));
    EXPECT_EQ(2U, patternSize("[a"));
    EXPECT_EQ(3U, patternSize("[[:"));
    EXPECT_EQ(1U, patternSize("\\"));
    EXPECT_EQ(1U, patternSize("{3}"));
}

}  // namespace
}  // namespace Zorv

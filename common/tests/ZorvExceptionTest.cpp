#include "ZorvException.hpp"

#include <gtest/gtest.h>

#include <string>

namespace Zorv {
namespace {

TEST(ZorvExceptionTest, textIsMadeFromFormatAndArguments)
{
    const ZorvException exception("Failed to retrieve %s, code %d", "majorType", -2);

    EXPECT_STREQ("Failed to retrieve majorType, code -2", exception.what());
}

TEST(ZorvExceptionTest, textsFromOutsideAreNotReadAsFormats)
{
    EXPECT_STREQ("DN: %s%n%x", ZorvException("DN: %s", "%s%n%x").what());
}

TEST(ZorvExceptionTest, longTextsAreKeptWhole)
{
    for (const size_t length : {511U, 512U, 513U, 100000U}) {
        const std::string text(length, 'x');

        EXPECT_EQ(text, ZorvException("%s", text.c_str()).what());
    }
}

TEST(ZorvExceptionTest, textThatCannotBeFormattedBecomesTheFormat)
{
    const wchar_t noCharacter[] = {static_cast<wchar_t>(0x7fffffff), 0};

    EXPECT_STREQ("reason: %ls", ZorvException("reason: %ls", noCharacter).what());
}

TEST(ZorvExceptionTest, isAStandardException)
{
    try {
        throw ZorvException("reason %d", 1);
    } catch (const std::exception& e) {
        EXPECT_STREQ("reason 1", e.what());
    }
}

TEST(ZorvExceptionTest, aCopyHasItsOwnText)
{
    auto original = std::make_unique<ZorvException>("%s", "a text that is too long for a small string");
    const ZorvException copy(*original);
    original.reset();

    EXPECT_STREQ("a text that is too long for a small string", copy.what());
}

}  // namespace
}  // namespace Zorv

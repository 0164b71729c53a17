#include "Format.hpp"

#include <gtest/gtest.h>

#include <string>

namespace Zorv {
namespace {

__attribute__((format(printf, 1, 2))) std::string format(const char* pattern, ...)
{
    va_list arguments;
    va_start(arguments, pattern);
    std::string text = formatText(pattern, arguments);
    va_end(arguments);
    return text;
}

TEST(FormatTest, textsAreMadeLikePrintfMakesThem)
{
    EXPECT_EQ("a1b", format("%s%d%c", "a", 1, 'b'));
    EXPECT_EQ("100%", format("100%%"));
    EXPECT_EQ("", format("%s", ""));
}

TEST(FormatTest, textsOfAnyLengthAreExact)
{
    for (const size_t length : {511U, 512U, 513U, 100000U}) {
        const std::string text(length, 'x');

        EXPECT_EQ(text + "1", format("%s%d", text.c_str(), 1));
    }
}

}  // namespace
}  // namespace Zorv

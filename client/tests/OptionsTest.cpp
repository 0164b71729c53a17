#include "Options.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

namespace ZorvClientTest {

using ZorvClient::readOptions;
using ZorvClient::Settings;

struct OptionsTest : ::testing::Test {
    OptionsTest() { ::unsetenv("ZORV_SOCKET"); }
    ~OptionsTest() override { ::unsetenv("ZORV_SOCKET"); }

    ZorvClientOptionsT options{};
    Settings settings;
};

TEST_F(OptionsTest, defaultsWithoutOptions)
{
    EXPECT_EQ(readOptions(nullptr, settings), ZORV_CLIENT_OK);
    EXPECT_EQ(settings.socketPath, "/run/zorv/zorvd.sock");
    EXPECT_EQ(settings.queueCapacity, 1000u);
}

TEST_F(OptionsTest, environmentNamesTheSocket)
{
    ::setenv("ZORV_SOCKET", "/tmp/other.sock", 1);
    EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_OK);
    EXPECT_EQ(settings.socketPath, "/tmp/other.sock");
}

TEST_F(OptionsTest, anEmptyEnvironmentNamesNone)
{
    ::setenv("ZORV_SOCKET", "", 1);
    EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_OK);
    EXPECT_EQ(settings.socketPath, "/run/zorv/zorvd.sock");
}

TEST_F(OptionsTest, theArgumentComesBeforeTheEnvironment)
{
    ::setenv("ZORV_SOCKET", "/tmp/other.sock", 1);
    options.socketPath = "/tmp/mine.sock";
    EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_OK);
    EXPECT_EQ(settings.socketPath, "/tmp/mine.sock");
}

TEST_F(OptionsTest, capacityHasItsBounds)
{
    for (const std::uint32_t capacity : {2u, 1000000u}) {
        options.queueCapacity = capacity;
        EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_OK);
        EXPECT_EQ(settings.queueCapacity, capacity);
    }
    for (const std::uint32_t capacity : {1u, 1000001u}) {
        options.queueCapacity = capacity;
        EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_BAD_ARGUMENT);
    }
}

TEST_F(OptionsTest, theReservedMemberIsZero)
{
    options.reserved = 1;
    EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_BAD_ARGUMENT);
}

TEST_F(OptionsTest, pathsThatNoSocketCanHaveAreRefused)
{
    const std::string fits(107, 'x');
    const std::string tooLong(108, 'x');
    options.socketPath = fits.c_str();
    EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_OK);
    options.socketPath = tooLong.c_str();
    EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_TOO_LONG);
    options.socketPath = "";
    EXPECT_EQ(readOptions(&options, settings), ZORV_CLIENT_BAD_TEXT);
}

}  // namespace ZorvClientTest

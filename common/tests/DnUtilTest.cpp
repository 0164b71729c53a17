#include "DnUtil.hpp"

#include <gtest/gtest.h>

namespace Zorv {
namespace DnUtil {
namespace {

TEST(DnUtilTest, firstRdn)
{
    EXPECT_EQ("ManagedElement=1", firstRdn("ManagedElement=1,Slot=2,Port=4"));
    EXPECT_EQ("ManagedElement=1", firstRdn("ManagedElement=1"));
    EXPECT_EQ("", firstRdn(""));
    EXPECT_EQ("", firstRdn(",Port=4"));
}

TEST(DnUtilTest, lastRdn)
{
    EXPECT_EQ("Port=4", lastRdn("ManagedElement=1,Slot=2,Port=4"));
    EXPECT_EQ("ManagedElement=1", lastRdn("ManagedElement=1"));
    EXPECT_EQ("", lastRdn(""));
    EXPECT_EQ("", lastRdn("ManagedElement=1,"));
}

TEST(DnUtilTest, parentDn)
{
    EXPECT_EQ("ManagedElement=1,Slot=2", parentDn("ManagedElement=1,Slot=2,Port=4"));
    EXPECT_EQ("", parentDn("ManagedElement=1"));
    EXPECT_EQ("", parentDn(""));
}

TEST(DnUtilTest, rdnValueAndClass)
{
    EXPECT_EQ("4", rdnValue("Port=4"));
    EXPECT_EQ("a=b", rdnValue("Port=a=b"));
    EXPECT_EQ("", rdnValue("Port="));
    EXPECT_EQ("", rdnValue("Port"));
    EXPECT_EQ("Port", rdnClass("Port=4"));
    EXPECT_EQ("Port", rdnClass("Port"));
    EXPECT_EQ("", rdnClass("=4"));
}

TEST(DnUtilTest, childDn)
{
    EXPECT_EQ("ManagedElement=1,Port=4", childDn("ManagedElement=1", "Port=4"));
    EXPECT_EQ("ManagedElement=1", childDn("", "ManagedElement=1"));
}

}  // namespace
}  // namespace DnUtil
}  // namespace Zorv

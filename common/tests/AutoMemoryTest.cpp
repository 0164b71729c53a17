#include "AutoMemory.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace Zorv {
namespace {

using Deaths = std::vector<std::string>;

/// Tells of its destruction.
class Mortal {
public:
    Mortal(Deaths& allDeaths, const char* ownName) : deaths(allDeaths), name(ownName) {}
    ~Mortal() { deaths.emplace_back(name); }

    Mortal(const Mortal&) = delete;
    Mortal& operator=(const Mortal&) = delete;

private:
    Deaths& deaths;
    const char* name;
};

TEST(AutoMemoryTest, freeDestroysOwnedObjectsLatestFirst)
{
    Deaths deaths;
    AutoMemory memory;
    memory.own(new Mortal(deaths, "first"));
    memory.own(new Mortal(deaths, "second"));
    EXPECT_THAT(deaths, IsEmpty());

    memory.free();

    EXPECT_THAT(deaths, ElementsAre("second", "first"));
}

TEST(AutoMemoryTest, freeOwnsNothingAfterwards)
{
    Deaths deaths;
    AutoMemory memory;
    memory.own(new Mortal(deaths, "once"));

    memory.free();
    memory.free();

    EXPECT_THAT(deaths, ElementsAre("once"));
}

TEST(AutoMemoryTest, aFreedPoolCanBeUsedAgain)
{
    Deaths deaths;
    AutoMemory memory;
    memory.own(new Mortal(deaths, "before"));
    memory.free();

    memory.own(new Mortal(deaths, "after"));
    EXPECT_STREQ("text", memory.strdup("text"));
    memory.free();

    EXPECT_THAT(deaths, ElementsAre("before", "after"));
}

TEST(AutoMemoryTest, destructorFrees)
{
    Deaths deaths;
    {
        AutoMemory memory;
        memory.own(new Mortal(deaths, "only"));
        memory.strdup("a leak if it stayed");
        memory.allocateArray<uint64_t>(100);
    }

    EXPECT_THAT(deaths, ElementsAre("only"));
}

TEST(AutoMemoryTest, ownGivesTheObjectBack)
{
    AutoMemory memory;
    auto* number = new int(5);

    EXPECT_EQ(number, memory.own(number));
}

TEST(AutoMemoryTest, strdupCopies)
{
    AutoMemory memory;
    std::string text = "ManagedElement=1";

    char* copy = memory.strdup(text);
    text.assign("changed");

    EXPECT_STREQ("ManagedElement=1", copy);
    copy[0] = 'm';
    EXPECT_STREQ("managedElement=1", copy);
}

TEST(AutoMemoryTest, strdupEndsAtTheFirstZeroByte)
{
    AutoMemory memory;

    EXPECT_STREQ("", memory.strdup(""));
    EXPECT_STREQ("ab", memory.strdup(std::string("ab\0cd", 5)));
}

TEST(AutoMemoryTest, arraysAreZeroFilled)
{
    AutoMemory memory;

    const auto* numbers = memory.allocateArray<uint64_t>(3);

    EXPECT_THAT(std::vector<uint64_t>(numbers, numbers + 3), ElementsAre(0, 0, 0));
}

TEST(AutoMemoryTest, arraysAreZeroFilledAlsoInMemoryThatWasUsed)
{
    AutoMemory memory;
    std::memset(memory.allocateArray<char>(1000), 'x', 1000);
    memory.free();

    EXPECT_EQ(std::string(1000, '\0'), std::string(memory.allocateArray<char>(1000), 1000));
}

TEST(AutoMemoryTest, anEmptyArrayHasAPlaceToo)
{
    AutoMemory memory;

    EXPECT_NE(nullptr, memory.allocateArray<uint64_t>(0));
}

TEST(AutoMemoryTest, nothingOverlapsAndEverythingIsAligned)
{
    AutoMemory memory;
    std::vector<std::pair<char*, std::size_t>> arrays;
    for (std::size_t size = 0; size < 3000; size += 1 + size / 7) {
        for (int i = 0; i < 20; ++i) {
            char* array = memory.allocateArray<char>(size);
            EXPECT_EQ(0U, reinterpret_cast<std::uintptr_t>(array) % alignof(std::max_align_t));
            EXPECT_EQ(std::string(size, '\0'), std::string(array, size));
            std::memset(array, 'x', size);
            arrays.emplace_back(array, size);
        }
    }
    for (const auto& [array, size] : arrays) {
        std::memset(array, 'y', size);
        std::memset(array, 'x', size);
    }
    for (const auto& [array, size] : arrays) {
        EXPECT_EQ(std::string(size, 'x'), std::string(array, size));
        std::memset(array, 0, size);
    }
}

}  // namespace
}  // namespace Zorv

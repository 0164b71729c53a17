#include "lifecycle/LoadedLibrary.hpp"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include "LogRecorder.hpp"
#include "portal/PortalTables.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class LoadedLibraryTest : public ::testing::Test {
protected:
    static std::string pathOf(const std::string& name) { return std::string(BAD_LIBRARIES) + "/" + name + ".so"; }

    std::unique_ptr<LoadedLibrary> load(const std::string& name)
    {
        return std::make_unique<LoadedLibrary>(pathOf(name), "node.xml", *PortalTables::accessor(), portal, log.sink());
    }

    /// The message behind the library's name.
    std::string failureOf(const std::string& name)
    {
        try {
            load(name);
        } catch (const LoadError& e) {
            const std::string text = e.what();
            const std::string prefix = "library " + pathOf(name) + ": ";
            return text.compare(0, prefix.size(), prefix) == 0 ? text.substr(prefix.size()) : text;
        }
        return "loaded";
    }

    static bool isMapped(const std::string& name)
    {
        void* const handle = dlopen(pathOf(name).c_str(), RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr) {
            dlclose(handle);
        }
        return handle != nullptr;
    }

    LogRecorder log;
    InterfacePortal portal;
    const PortalTables tables{portal};
};

TEST_F(LoadedLibraryTest, aGoodLibraryRegistersItsComponentAndIsUnloaded)
{
    auto library = load("WellBehaved");
    ASSERT_EQ(1U, library->getComponents().size());
    EXPECT_STREQ("BadComponent", library->getComponents().front()->componentName);
    EXPECT_TRUE(isMapped("WellBehaved"));

    library.reset();

    EXPECT_THAT(portal.getComponents(), IsEmpty());
    EXPECT_FALSE(isMapped("WellBehaved"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LoadedLibraryTest, aLibraryCanBeLoadedAgainAndAgain)
{
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ("loaded", failureOf("WellBehaved"));
        EXPECT_FALSE(isMapped("WellBehaved"));
    }
}

TEST_F(LoadedLibraryTest, aMissingFileCannotBeOpened)
{
    EXPECT_THAT(failureOf("Nowhere"), HasSubstr("cannot be opened: "));
}

TEST_F(LoadedLibraryTest, aLibraryWithoutEntryPointsIsRefused)
{
    EXPECT_EQ("has no entry point zorvLCMinit", failureOf("NoEntryPoints"));
}

TEST_F(LoadedLibraryTest, aLibraryWithoutInitIsRefused)
{
    EXPECT_EQ("has no entry point zorvLCMinit", failureOf("NoInit"));
}

TEST_F(LoadedLibraryTest, aLibraryWithoutTerminateIsRefusedBeforeInitIsCalled)
{
    EXPECT_EQ("has no entry point zorvLCMterminate", failureOf("NoTerminate"));

    EXPECT_THAT(portal.getComponents(), IsEmpty());
}

TEST_F(LoadedLibraryTest, aFailingInitIsToldWithItsCodeAndBackedOut)
{
    EXPECT_EQ("zorvLCMinit returned -7", failureOf("InitFails"));

    EXPECT_THAT(portal.getComponents(), IsEmpty());
    EXPECT_FALSE(isMapped("InitFails"));
}

TEST_F(LoadedLibraryTest, aThrowingInitIsToldWithItsTextAndBackedOut)
{
    EXPECT_EQ("zorvLCMinit threw: no memory for the alarms", failureOf("InitThrows"));

    EXPECT_THAT(portal.getComponents(), IsEmpty());
}

TEST_F(LoadedLibraryTest, aLibraryThatRegistersAComponentTwiceIsRefused)
{
    EXPECT_EQ("registers component BadComponent, which is registered already", failureOf("RegistersTwice"));

    EXPECT_THAT(portal.getComponents(), IsEmpty());
}

TEST_F(LoadedLibraryTest, aLibraryWithAComponentOfAnotherLibraryIsRefusedAndTheOtherStays)
{
    const auto first = load("WellBehaved");

    EXPECT_EQ("registers component BadComponent, which is registered already", failureOf("TerminateThrows"));

    EXPECT_EQ(first->getComponents(), portal.getComponents());
}

TEST_F(LoadedLibraryTest, aLibraryThatRegistersNothingIsRefused)
{
    EXPECT_EQ("registers no component", failureOf("RegistersNothing"));
}

TEST_F(LoadedLibraryTest, aThrowingTerminateIsLoggedAndTheLibraryUnloaded)
{
    load("TerminateThrows").reset();

    EXPECT_THAT(log.lines(),
                ElementsAre("3 library " + pathOf("TerminateThrows") + ": zorvLCMterminate threw: unknown exception"));
    EXPECT_FALSE(isMapped("TerminateThrows"));
}

TEST_F(LoadedLibraryTest, aComponentLeftRegisteredIsDroppedWithAWarning)
{
    load("LeavesRegistered").reset();

    EXPECT_THAT(log.lines(),
                ElementsAre("4 library " + pathOf("LeavesRegistered") + ": leaves component BadComponent registered"));
    EXPECT_THAT(portal.getComponents(), IsEmpty());
}

TEST_F(LoadedLibraryTest, aLibraryWithAThreadInItStaysMapped)
{
    const auto library = load("WellBehaved");

    library->unload(true);

    EXPECT_TRUE(isMapped("WellBehaved"));
    EXPECT_THAT(portal.getComponents(), IsEmpty());
}

}  // namespace ZorvNode

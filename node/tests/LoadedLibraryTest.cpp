#include "lifecycle/LoadedLibrary.hpp"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <functional>

#include "LogRecorder.hpp"
#include "TemporaryDirectory.hpp"
#include "lifecycle/ComponentRunner.hpp"
#include "portal/PortalTables.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LoadedLibraryTest : public ::testing::Test {
protected:
    static std::string pathOf(const std::string& name) { return std::string(BAD_LIBRARIES) + "/" + name + ".so"; }

    std::unique_ptr<LoadedLibrary> load(const std::string& name) { return loadFile(pathOf(name)); }

    std::unique_ptr<LoadedLibrary> loadFile(const std::string& path)
    {
        return std::make_unique<LoadedLibrary>(path, "node.xml", *PortalTables::accessor(), portal, log.sink());
    }

    /// The message of a load that fails; "loaded" otherwise.
    std::string failureOf(const std::string& path)
    {
        try {
            loadFile(path);
        } catch (const LoadError& e) {
            return e.what();
        }
        return "loaded";
    }

    static bool isMapped(const std::string& path)
    {
        void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr) {
            dlclose(handle);
        }
        return handle != nullptr;
    }

    void expectNothingLeftOf(const std::string& path) const
    {
        EXPECT_THAT(portal.getComponents(), IsEmpty());
        EXPECT_FALSE(isMapped(path));
    }

    LogRecorder log;
    InterfacePortal portal;
    const PortalTables tables{portal};
};

// --- A good library

TEST_F(LoadedLibraryTest, aGoodLibraryRegistersItsComponentAndIsUnloaded)
{
    auto library = load("WellBehaved");
    ASSERT_EQ(1U, library->getComponents().size());
    EXPECT_STREQ("BadComponent", library->getComponents().front()->componentName);
    EXPECT_EQ(library->getComponents(), portal.getComponents());
    EXPECT_TRUE(isMapped(pathOf("WellBehaved")));

    library.reset();

    expectNothingLeftOf(pathOf("WellBehaved"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LoadedLibraryTest, aLibraryCanBeLoadedAgainAndAgain)
{
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ("loaded", failureOf(pathOf("WellBehaved")));
        expectNothingLeftOf(pathOf("WellBehaved"));
    }
}

TEST_F(LoadedLibraryTest, aLibraryIsUnloadedOnce)
{
    const auto library = load("TerminateFails");

    library->unload();
    library->unload();

    EXPECT_EQ(1U, log.lines().size());
}

TEST_F(LoadedLibraryTest, aLibraryWithAThreadInItStaysMapped)
{
    const auto library = load("WellBehaved");

    library->unload(true);

    void* const handle = dlopen(pathOf("WellBehaved").c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(nullptr, handle);
    EXPECT_THAT(portal.getComponents(), IsEmpty());
    dlclose(handle);
    dlclose(handle);
    EXPECT_FALSE(isMapped(pathOf("WellBehaved"))) << "kept once and no more";
}

// --- What is no library at all

TEST_F(LoadedLibraryTest, aMissingFileCannotBeOpened)
{
    const std::string path = pathOf("Nowhere");

    EXPECT_EQ("library " + path + ": cannot be opened: " + path +
                  ": cannot open shared object file: No such file or directory",
              failureOf(path));
}

TEST_F(LoadedLibraryTest, anEmptyFileCannotBeOpened)
{
    const ZorvTest::TemporaryDirectory directory;
    const std::string path = directory.write("empty.so", "");

    EXPECT_EQ("library " + path + ": cannot be opened: " + path + ": file too short", failureOf(path));
}

TEST_F(LoadedLibraryTest, aFileThatIsNoLibraryCannotBeOpened)
{
    const ZorvTest::TemporaryDirectory directory;
    const std::string path = directory.write("text.so", std::string(5000, 'x'));

    EXPECT_EQ("library " + path + ": cannot be opened: " + path + ": invalid ELF header", failureOf(path));
}

TEST_F(LoadedLibraryTest, aLibraryWhoseSymbolsNobodyHasCannotBeOpened)
{
    const std::string path = pathOf("UndefinedSymbol");

    EXPECT_EQ("library " + path + ": cannot be opened: " + path + ": undefined symbol: nobodyHasThis", failureOf(path));

    expectNothingLeftOf(path);
}

// --- Bad libraries: each is told by a message of its own and leaves nothing behind

struct BadLibraryCase {
    const char* library;
    const char* message;
};

class BadLibraryTest : public LoadedLibraryTest, public ::testing::WithParamInterface<BadLibraryCase> {};

TEST_P(BadLibraryTest, isRefusedWithItsReasonAndBackedOut)
{
    const std::string path = pathOf(GetParam().library);

    EXPECT_EQ("library " + path + ": " + GetParam().message, failureOf(path));

    expectNothingLeftOf(path);
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ("loaded", failureOf(pathOf("WellBehaved")));
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadLibraryTest,
    ::testing::Values(BadLibraryCase{"NoEntryPoints", "has no entry point zorvLCMinit"},
                      BadLibraryCase{"NoInit", "has no entry point zorvLCMinit"},
                      BadLibraryCase{"NoTerminate", "has no entry point zorvLCMterminate"},
                      BadLibraryCase{"InitFails", "zorvLCMinit returned -7"},
                      BadLibraryCase{"InitThrows", "zorvLCMinit threw: no memory for the alarms"},
                      BadLibraryCase{"InitThrowsNumber", "zorvLCMinit threw: unknown exception"},
                      BadLibraryCase{"RegistersTwice", "registers component BadComponent, which is registered already"},
                      BadLibraryCase{"RegistersNothing", "registers no component"},
                      BadLibraryCase{"RegistersIncomplete", "registers no component"}),
    [](const auto& instance) { return instance.param.library; });

TEST_F(LoadedLibraryTest, aFailedInitWhoseTerminateFailsTooIsBackedOutAllTheSame)
{
    const std::string path = pathOf("InitFailsForGood");
    const std::string prefix = "library " + path + ": ";

    EXPECT_EQ(prefix + "zorvLCMinit returned -7", failureOf(path));

    expectNothingLeftOf(path);
    EXPECT_THAT(log.lines(), ElementsAre("3 " + prefix + "zorvLCMterminate threw: never got that far",
                                         "4 " + prefix + "leaves component BadComponent registered"));
}

TEST_F(LoadedLibraryTest, aLibraryWithAComponentOfAnotherLibraryIsRefusedAndTheOtherStays)
{
    const auto first = load("WellBehaved");
    const std::string path = pathOf("StartFails");

    EXPECT_EQ("library " + path + ": registers component BadComponent, which is registered already", failureOf(path));

    EXPECT_FALSE(isMapped(path));
    EXPECT_EQ(first->getComponents(), portal.getComponents());
}

// --- Libraries that leave badly

/// The log of a library that is loaded and unloaded again, without its name.
class LeavingLibraryTest : public LoadedLibraryTest, public ::testing::WithParamInterface<BadLibraryCase> {};

TEST_P(LeavingLibraryTest, isUnloadedAndToldAbout)
{
    const std::string path = pathOf(GetParam().library);
    const std::string message = GetParam().message;

    EXPECT_EQ("loaded", failureOf(path));

    expectNothingLeftOf(path);
    EXPECT_THAT(log.lines(), ElementsAre(message.substr(0, 2) + "library " + path + ": " + message.substr(2)));
}

INSTANTIATE_TEST_SUITE_P(
    Each, LeavingLibraryTest,
    ::testing::Values(BadLibraryCase{"TerminateFails", "4 zorvLCMterminate returned -5"},
                      BadLibraryCase{"TerminateThrowsText", "3 zorvLCMterminate threw: a file stays open"},
                      BadLibraryCase{"TerminateThrowsNumber", "3 zorvLCMterminate threw: unknown exception"},
                      BadLibraryCase{"LeavesRegistered", "4 leaves component BadComponent registered"}),
    [](const auto& instance) { return instance.param.library; });

// --- Components of a loaded library

/// The message of a library whose component does not start.
class StartingLibraryTest : public LoadedLibraryTest, public ::testing::WithParamInterface<BadLibraryCase> {
protected:
    std::string startFailure()
    {
        try {
            runner.start(ZORV_STATE_CHANGE_ACTIVATE);
        } catch (const StartError& e) {
            return e.what();
        }
        return "started";
    }

    ComponentRunner runner{portal, log.sink()};
};

TEST_P(StartingLibraryTest, doesNotStartAndIsUnloaded)
{
    auto library = load(GetParam().library);

    EXPECT_EQ(GetParam().message, startFailure());
    library.reset();

    expectNothingLeftOf(pathOf(GetParam().library));
    EXPECT_THAT(log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Each, StartingLibraryTest,
    ::testing::Values(BadLibraryCase{"StartFails", "component BadComponent: start returned -1"},
                      BadLibraryCase{"StartThrows", "component BadComponent: start threw: no thread"},
                      BadLibraryCase{"StartThrowsNumber", "component BadComponent: start threw: unknown exception"},
                      BadLibraryCase{
                          "RequiresUnknown",
                          "component BadComponent requires interface ZorvMwSpiUnknown, which nobody provides"}),
    [](const auto& instance) { return instance.param.library; });

/// The log of a library whose component does not stop well.
class StoppingLibraryTest : public StartingLibraryTest {};

TEST_P(StoppingLibraryTest, isUnloadedAndToldAbout)
{
    auto library = load(GetParam().library);
    EXPECT_EQ("started", startFailure());

    runner.stop(ZORV_STATE_CHANGE_DEACTIVATE);
    library.reset();

    expectNothingLeftOf(pathOf(GetParam().library));
    EXPECT_THAT(log.lines(), ElementsAre("6 component BadComponent started", GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(Each, StoppingLibraryTest,
                         ::testing::Values(BadLibraryCase{"WellBehaved", "6 component BadComponent stopped"},
                                           BadLibraryCase{"StopFails", "3 component BadComponent: stop returned -5"},
                                           BadLibraryCase{"StopThrows",
                                                          "3 component BadComponent: stop threw: no end"}),
                         [](const auto& instance) { return instance.param.library; });

}  // namespace ZorvNode

#include <filesystem>
#include <stdexcept>

#include "IntegrationTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace ZorvIntegration {
namespace {

std::size_t entriesOf(const char* directory)
{
    const std::filesystem::directory_iterator all(directory);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

std::size_t openDescriptors()
{
    return entriesOf("/proc/self/fd");
}

std::size_t runningThreads()
{
    return entriesOf("/proc/self/task");
}

/// A middleware that breaks its promise never to throw.
const void* throwStandard(const char*)
{
    throw std::runtime_error("no %s portal");
}

const void* throwOther(const char*)
{
    throw 5;
}

ZorvReturnT throwAtUnregister(const ZorvMgmtSpiComponent_1T*)
{
    throw std::runtime_error("cannot unregister");
}

class LivesTest : public IntegrationTest {
protected:
    /// A whole life of the library in a middleware of its own, with one alarm in it; what the middleware saw.
    Entries live() const
    {
        ZorvFakes::Middleware middleware;
        middleware.fmModel.plant();
        middleware.fmModel.plantType("1", "1", {});
        middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
        FmLibrary library(middleware);

        EXPECT_EQ(0, library.initialize(configFile()));
        library.start();
        Entries entries = takeUpTo("abortTransaction -> 0", middleware.journal);
        YaltOamSpiNotificationFmStruct_2 alarm{"ManagedElement=1,Port=1", 1, 1, timeOfAlarms, "down", 4};
        middleware.router.fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, &alarm);
        const Entries working = takeUpTo("commitTransaction -> 0", middleware.journal);
        entries.insert(entries.end(), working.begin(), working.end());
        library.stop();
        EXPECT_EQ(0, library.terminate());
        library.unload();

        EXPECT_FALSE(FmLibrary::isLoaded());
        const Entries ending = middleware.journal.take();
        entries.insert(entries.end(), ending.begin(), ending.end());
        return entries;
    }
};

TEST_F(LivesTest, tenInOneProcessAreAllAlike)
{
    const Entries firstLife = live();
    const std::size_t descriptors = openDescriptors();
    const std::size_t threads = runningThreads();
    EXPECT_EQ("getPortal 1", firstLife.front());
    EXPECT_EQ("unregisterComponent 3 ZorvFmMoImplComponent -> 0", firstLife.back());

    for (int i = 2; i <= 10; ++i) {
        EXPECT_THAT(live(), ElementsAreArray(firstLife)) << "life " << i;
    }

    EXPECT_EQ(descriptors, openDescriptors());
    EXPECT_EQ(threads, runningThreads());
}

class LoadUnloadTest : public IntegrationTest {
protected:
    ZorvReturnT initializeWith(const void* (*getPortal)(const char*), std::string& lines)
    {
        const ZorvMgmtSpiPortalAccessor_1T accessor{getPortal};
        const FmLibrary library(middleware);
        testing::internal::CaptureStderr();
        const ZorvReturnT result = library.getInit()(&accessor, "");
        lines = testing::internal::GetCapturedStderr();
        return result;
    }

    ZorvFakes::Middleware middleware;
};

TEST_F(LoadUnloadTest, isUnloadedWithoutHavingBeenUsed)
{
    FmLibrary library(middleware);
    EXPECT_TRUE(FmLibrary::isLoaded());

    library.unload();

    EXPECT_FALSE(FmLibrary::isLoaded());
    EXPECT_THAT(middleware.journal.take(), IsEmpty());
}

TEST_F(LoadUnloadTest, isUnloadedWithoutHavingBeenStarted)
{
    FmLibrary library(middleware);
    EXPECT_EQ(0, library.initialize(configFile()));
    EXPECT_EQ(0, library.terminate());

    library.unload();

    EXPECT_FALSE(FmLibrary::isLoaded());
}

TEST_F(LoadUnloadTest, isUnloadedAfterAFailedInitialization)
{
    FmLibrary library(middleware);
    EXPECT_EQ(-1, library.initialize("/nowhere"));
    EXPECT_THAT(middleware.portal.components(), ElementsAre("ZorvFmMoImplComponent", "ZorvFmComponent"));
    EXPECT_EQ(0, library.terminate());

    library.unload();

    EXPECT_FALSE(FmLibrary::isLoaded());
    EXPECT_THAT(middleware.portal.components(), IsEmpty());
}

TEST_F(LoadUnloadTest, isUnloadedAfterManyStarts)
{
    middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2);
    FmLibrary library(middleware);
    library.initialize(configFile());
    for (int i = 0; i < 20; ++i) {
        library.start(ZORV_STATE_CHANGE_FAIL_OVER);
        library.stop(ZORV_STATE_CHANGE_SWITCH_OVER);
    }
    library.terminate();

    library.unload();

    EXPECT_FALSE(FmLibrary::isLoaded());
}

TEST_F(LoadUnloadTest, noExceptionLeavesTheInitialization)
{
    std::string lines;

    EXPECT_EQ(-1, initializeWith(&throwStandard, lines));
    EXPECT_EQ("zorv: zorvLCMinit: no %s portal\n", lines);

    EXPECT_EQ(-1, initializeWith(&throwOther, lines));
    EXPECT_EQ("zorv: zorvLCMinit: unknown exception\n", lines);
}

TEST_F(LoadUnloadTest, noExceptionLeavesTheTermination)
{
    static ZorvMgmtSpiPortal_3T portal3;
    portal3 = *static_cast<const ZorvMgmtSpiPortal_3T*>(ZorvFakes::Middleware::accessor()->getPortal("3"));
    portal3.unregisterComponent = &throwAtUnregister;
    const ZorvMgmtSpiPortalAccessor_1T accessor{[](const char* version) -> const void* {
        return version == std::string("3") ? &portal3 : ZorvFakes::Middleware::accessor()->getPortal(version);
    }};
    const FmLibrary library(middleware);
    EXPECT_EQ(0, library.getInit()(&accessor, configFile().c_str()));
    middleware.journal.take();

    EXPECT_EQ(-1, library.terminate());

    EXPECT_THAT(middleware.journal.take(), ElementsAre("log 3 zorvLCMterminate: cannot unregister"));
}

}  // namespace
}  // namespace ZorvIntegration

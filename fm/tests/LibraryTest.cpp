#include "Library.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Middleware.hpp"
#include "NbiAlarmList.hpp"
#include "TemporaryDirectory.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr const char* moFailure = "log 3 Failed to initialize FM MO implementer";
constexpr const char* fmFailure = "log 3 Failed to initialize FM component, terminating MO implementer";

/// An accessor that does not answer every question for a portal: for each version a limit of answers.
class ForgetfulAccessor {
public:
    ForgetfulAccessor(int answersFor1, int answersFor3)
    {
        left1 = answersFor1;
        left3 = answersFor3;
    }

    const ZorvMgmtSpiPortalAccessor_1T* get() const { return &table; }

private:
    static const void* getPortal(const char* version)
    {
        int& left = version == std::string("1") ? left1 : left3;
        return left-- > 0 ? ZorvFakes::FakePortal::accessor()->getPortal(version) : nullptr;
    }

    static inline int left1 = 0;
    static inline int left3 = 0;

    const ZorvMgmtSpiPortalAccessor_1T table{&getPortal};
};

/// The FM component has an active alarm list from its construction on, and a living list empties the result.
bool isFmComponentCreated()
{
    std::vector<AlarmData> alarms(1);
    NbiAlarmList::getAlarms(alarms);
    return alarms.empty();
}

std::vector<std::string> texts(const ZorvMgmtSpiInterface_1* const* identities)
{
    const auto shown = [](const char* text) { return std::string(text ? text : "-"); };
    std::vector<std::string> all;
    for (; *identities; ++identities) {
        all.push_back(shown((*identities)->componentName) + " " + shown((*identities)->interfaceName) + " " +
                      shown((*identities)->interfaceVersion));
    }
    return all;
}

class LibraryTest : public testing::Test {
protected:
    ZorvReturnT initialize() { return Library::initialize(middleware.accessor(), fileName.c_str()); }

    ZorvFakes::Journal::Entries journal() { return middleware.journal.take(); }

    const ZorvMgmtSpiComponent_1T& component(const std::string& name) { return *middleware.portal.component(name); }

    ZorvFakes::Middleware middleware;
    const ZorvTest::TemporaryDirectory folder;
    const std::string fileName = folder.write("fm.xml", "<ZorvFmComponent/>");
};

// --- Initializing

TEST_F(LibraryTest, initializeRegistersTheMoImplementerAndThenTheFmComponent)
{
    middleware.journal.show({Topic::Lookup});

    EXPECT_EQ(0, initialize());

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getInterface - ZorvMwSpiLog 1 -> 0",
                                       "getInterface - YaltMwSpiTrace - -> 0", "getPortal 1", "getPortal 3",
                                       "getPortal 1", "registerComponent 3 ZorvFmMoImplComponent -> 0", "getPortal 1",
                                       "getPortal 3", "registerComponent 3 ZorvFmComponent -> 0"));
}

TEST_F(LibraryTest, initializeTracesItsProgress)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Portal});

    initialize();

    EXPECT_THAT(journal(),
                ElementsAre("getPortal 1", "trace 8 FM Initializing FM Component Manager...", "getPortal 1",
                            "trace 8 FM Initializing FM MO implementer...", "getPortal 3", "getPortal 1",
                            "registerComponent 3 ZorvFmMoImplComponent -> 0", "trace 8 FM  >> ", "trace 8 FM  << ",
                            "trace 8 FM Initializing FM component...", "getPortal 1", "getPortal 3",
                            "registerComponent 3 ZorvFmComponent -> 0", "trace 8 FM  >> " + fileName,
                            "trace 8 FM  >> \n" + fileName, "trace 8 FM ZorvFmComponent tag found",
                            "trace 8 FM Using default value for parameter alarmToggleSilentTimeout",
                            "trace 8 FM Using default value for parameter transientRaiseAlarmFilterTime",
                            "trace 8 FM Using default value for parameter transientCeaseAlarmFilterTime",
                            "trace 8 FM Using default value for parameter alarmToggleTriggerCount",
                            "trace 8 FM Using default value for parameter alarmToggleWindowSize",
                            "trace 8 FM Using default value for parameter reuseAdditionalTextFromAalAtClear",
                            "trace 8 FM releasing component list", "trace 8 FM  << ", "trace 8 FM  << 0"));
}

TEST_F(LibraryTest, progressIsTracedAtTheMostDetailedLevelOnly)
{
    middleware.journal.showOnly({Topic::Trace});
    middleware.trace.setLevels(YALT_TRACE_DETAILED - 1);

    initialize();

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LibraryTest, theFmComponentDescribesItself)
{
    initialize();

    const ZorvMgmtSpiComponent_1T& fm = component("ZorvFmComponent");
    EXPECT_THAT(texts(fm.offeredInterfaces), ElementsAre("ZorvFmComponent ZorvMgmtSpiComponent 1"));
    EXPECT_THAT(texts(fm.requiredInterfaces),
                ElementsAre("- ZorvMwSpiLog 1", "- YaltMwSpiTrace -", "ZorvOamSpiEventService ZorvOamSpiEventRouter 1",
                            "- ZorvMwSpiReplicatedList 1", "ZorvOamSpiCmRouterService ZorvOamSpiManagedObject 3",
                            "ZorvOamSpiModelRepositoryService ZorvOamSpiModelRepository 1",
                            "ZorvOamSpiTransactionService ZorvOamSpiTransactionMaster 1",
                            "ZorvOamSpiTransactionService ZorvOamSpiTransaction 1"));
    EXPECT_THAT(texts(fm.optionalInterfaces), IsEmpty());
    EXPECT_EQ(&fm, fm.getInterface(fm.offeredInterfaces[0]));
    EXPECT_EQ(nullptr, fm.getInterface(fm.requiredInterfaces[0]));
}

TEST_F(LibraryTest, theMoImplementerDescribesItself)
{
    initialize();

    const ZorvMgmtSpiComponent_1T& mo = component("ZorvFmMoImplComponent");
    EXPECT_THAT(texts(mo.offeredInterfaces), ElementsAre("ZorvFmMoImplComponent YaltOamSpiTransactionalResource 1",
                                                         "ZorvFmMoImplComponent YaltOamSpiManagedObject 3"));
    EXPECT_THAT(texts(mo.requiredInterfaces), IsEmpty());
    EXPECT_THAT(texts(mo.optionalInterfaces), IsEmpty());
    const void* const resource = mo.getInterface(mo.offeredInterfaces[0]);
    const void* const objects = mo.getInterface(mo.offeredInterfaces[1]);
    EXPECT_NE(nullptr, resource);
    EXPECT_NE(nullptr, objects);
    EXPECT_NE(resource, objects);
    const ZorvMgmtSpiInterface_1 unknown{nullptr, "ZorvMwSpiLog", "1"};
    EXPECT_EQ(nullptr, mo.getInterface(&unknown));
}

// --- Failing to initialize

TEST_F(LibraryTest, withoutAPortalOfVersion1NothingIsCreated)
{
    middleware.portal.setPresent("1", false);

    testing::internal::CaptureStderr();
    EXPECT_EQ(-1, initialize());

    EXPECT_EQ("zorv: Failed to get the interface portal\n", testing::internal::GetCapturedStderr());
    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1"));
    EXPECT_FALSE(isFmComponentCreated());
}

TEST_F(LibraryTest, withoutAnAccessorNothingIsCreated)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(-1, Library::initialize(nullptr, fileName.c_str()));

    EXPECT_EQ("zorv: Failed to get the interface portal\n", testing::internal::GetCapturedStderr());
    EXPECT_THAT(journal(), IsEmpty());
    EXPECT_FALSE(isFmComponentCreated());
}

TEST_F(LibraryTest, withoutAPortalOfVersion3TheMoImplementerFails)
{
    middleware.portal.setPresent("3", false);

    EXPECT_EQ(-1, initialize());

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1", moFailure));
    EXPECT_FALSE(isFmComponentCreated());
}

TEST_F(LibraryTest, aRefusedRegistrationOfTheMoImplementerEndsTheInitialization)
{
    middleware.portal.failNext("registerComponent 3 ZorvFmMoImplComponent", ZORV_RETURN_EXISTS);

    EXPECT_EQ(-1, initialize());

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1",
                                       "registerComponent 3 ZorvFmMoImplComponent -> -3", moFailure));
    EXPECT_FALSE(isFmComponentCreated());
}

TEST_F(LibraryTest, aRefusedRegistrationOfTheFmComponentLeavesTheMoImplementerRegistered)
{
    middleware.portal.failNext("registerComponent 3 ZorvFmComponent", ZORV_RETURN_FAILED);

    EXPECT_EQ(-1, initialize());

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1",
                                       "registerComponent 3 ZorvFmMoImplComponent -> 0", "getPortal 1", "getPortal 3",
                                       "registerComponent 3 ZorvFmComponent -> -1", fmFailure));
    EXPECT_THAT(middleware.portal.components(), ElementsAre("ZorvFmMoImplComponent"));
}

TEST_F(LibraryTest, aFailingConfigurationLeavesBothComponentsRegistered)
{
    folder.write("fm.xml", "<configuration/>");

    EXPECT_EQ(-1, initialize());

    EXPECT_THAT(journal(),
                ElementsAre("getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1",
                            "registerComponent 3 ZorvFmMoImplComponent -> 0", "getPortal 1", "getPortal 3",
                            "registerComponent 3 ZorvFmComponent -> 0",
                            "log 3 Could not load configuration, caught exception: No ZorvFmComponent configuration "
                            "found",
                            "log 3 Failed to load components configuration! (-1)", fmFailure));
    EXPECT_THAT(middleware.portal.components(), ElementsAre("ZorvFmMoImplComponent", "ZorvFmComponent"));
}

TEST_F(LibraryTest, withoutAConfigurationTheFmComponentFails)
{
    middleware.journal.showOnly({Topic::Log});

    EXPECT_EQ(-1, Library::initialize(middleware.accessor(), nullptr));

    const auto entries = journal();
    ASSERT_EQ(3U, entries.size());
    EXPECT_THAT(entries[0], testing::StartsWith("log 3 Could not load configuration, caught exception: "));
    EXPECT_EQ("log 3 Failed to load components configuration! (-1)", entries[1]);
    EXPECT_EQ(fmFailure, entries[2]);
}

TEST_F(LibraryTest, errorsAreLoggedOnlyWhenTheLevelAdmitsThem)
{
    middleware.portal.setPresent("3", false);
    middleware.log.setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_ERROR - 1);

    EXPECT_EQ(-1, initialize());

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1"));
}

// --- Portals that come and go between the components

TEST_F(LibraryTest, theFmComponentMakesDoWithThePortalOfVersion1)
{
    const ForgetfulAccessor accessor(9, 1);

    EXPECT_EQ(0, Library::initialize(accessor.get(), fileName.c_str()));

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1",
                                       "registerComponent 3 ZorvFmMoImplComponent -> 0", "getPortal 1",
                                       "registerComponent 1 ZorvFmComponent -> 0"));
}

TEST_F(LibraryTest, aRegistrationWithThePortalOfVersion1IsNotTakenBack)
{
    const ForgetfulAccessor accessor(9, 1);
    Library::initialize(accessor.get(), fileName.c_str());
    journal();

    EXPECT_EQ(0, Library::terminate());

    EXPECT_THAT(journal(), ElementsAre("unregisterComponent 3 ZorvFmMoImplComponent -> 0"));
    EXPECT_THAT(middleware.portal.components(), ElementsAre("ZorvFmComponent"));
}

TEST_F(LibraryTest, withoutAPortalOfVersion1TheFmComponentFails)
{
    const ForgetfulAccessor accessor(3, 9);

    EXPECT_EQ(-1, Library::initialize(accessor.get(), fileName.c_str()));

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1",
                                       "registerComponent 3 ZorvFmMoImplComponent -> 0", "getPortal 3", fmFailure));
}

TEST_F(LibraryTest, theMoImplementerNeedsThePortalOfVersion3Only)
{
    const ForgetfulAccessor accessor(2, 9);

    EXPECT_EQ(-1, Library::initialize(accessor.get(), fileName.c_str()));

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 1", "getPortal 3",
                                       "registerComponent 3 ZorvFmMoImplComponent -> 0", "getPortal 3", fmFailure));
}

// --- Terminating

TEST_F(LibraryTest, terminateUnregistersTheFmComponentAndThenTheMoImplementer)
{
    initialize();
    journal();
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    EXPECT_EQ(0, Library::terminate());

    EXPECT_THAT(journal(), ElementsAre("unregisterComponent 3 ZorvFmComponent -> 0", "trace 8 FM  >> ",
                                       "trace 8 FM  << ", "unregisterComponent 3 ZorvFmMoImplComponent -> 0"));
    EXPECT_THAT(middleware.portal.components(), IsEmpty());
}

TEST_F(LibraryTest, theSecondTerminateUnregistersNothing)
{
    initialize();
    Library::terminate();
    journal();

    EXPECT_EQ(0, Library::terminate());

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LibraryTest, terminateWithoutInitializeUnregistersNothing)
{
    EXPECT_EQ(0, Library::terminate());

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LibraryTest, terminateAnswersWithTheUnregistrationOfTheMoImplementer)
{
    initialize();
    middleware.portal.failNext("unregisterComponent 3 ZorvFmMoImplComponent", ZORV_RETURN_NOT_FOUND);

    EXPECT_EQ(-2, Library::terminate());
    EXPECT_EQ(0, Library::terminate());
}

TEST_F(LibraryTest, aFailedUnregistrationOfTheFmComponentIsNotReported)
{
    initialize();
    middleware.portal.failNext("unregisterComponent 3 ZorvFmComponent", ZORV_RETURN_FAILED);
    journal();

    EXPECT_EQ(0, Library::terminate());

    EXPECT_THAT(journal(), ElementsAre("unregisterComponent 3 ZorvFmComponent -> -1",
                                       "unregisterComponent 3 ZorvFmMoImplComponent -> 0"));
}

TEST_F(LibraryTest, canBeInitializedAgainAfterTerminate)
{
    initialize();
    const auto first = journal();
    Library::terminate();
    journal();

    EXPECT_EQ(0, initialize());

    EXPECT_THAT(journal(), ElementsAreArray(first));
    EXPECT_THAT(middleware.portal.components(), ElementsAre("ZorvFmMoImplComponent", "ZorvFmComponent"));
}

}  // namespace
}  // namespace ZorvFm

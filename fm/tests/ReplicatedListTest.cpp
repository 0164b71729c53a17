#include "ReplicatedList.hpp"

#include <algorithm>
#include <string>

#include "AlarmListWalk.hpp"
#include "FmTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::FakeReplicatedList;

namespace ZorvFm {
namespace {

bool isZero(const void* bytes, std::size_t size)
{
    const char* first = static_cast<const char*>(bytes);
    return std::all_of(first, first + size, [](char c) { return c == 0; });
}

class ReplicatedListTest : public FmTest {
protected:
    ReplicatedListTest()
    {
        list.open();
        list.create(1000);
        journal();
    }

    ReplicatedList list{"FmActiveAlarmList2"};
};

// --- The service, with a look at what it is given

ZorvMwSpiListNameT givenName;
unsigned dirtyBuffers = 0;

ZorvReturnT lookAndPush(const ZorvMwSpiListNameT* name, ZorvMwSpiListNameT* itemName, const void* data)
{
    givenName = *name;
    dirtyBuffers += isZero(itemName, sizeof *itemName) ? 0 : 1;
    return FakeReplicatedList::table()->listPushBack(name, itemName, data);
}

ZorvReturnT lookAndGetNext(const ZorvMwSpiListNameT* name, ZorvMwSpiListRefT* ref, ZorvMwSpiListNameT* itemName,
                           void* data)
{
    givenName = *name;
    dirtyBuffers += isZero(itemName, sizeof *itemName) && isZero(data, storedAlarmSize) ? 0 : 1;
    return FakeReplicatedList::table()->listGetNextItemFront(name, ref, itemName, data);
}

class GivenToServiceTest : public ReplicatedListTest {
protected:
    GivenToServiceTest()
    {
        table = *FakeReplicatedList::table();
        table.listPushBack = lookAndPush;
        table.listGetNextItemFront = lookAndGetNext;
        middleware.portal.offer("", "ZorvMwSpiReplicatedList", "1", &table);
        list.open();
        givenName = {};
        dirtyBuffers = 0;
    }

    ZorvMwSpiReplicatedList_1T table{};
};

TEST_F(GivenToServiceTest, namesCountTheirFinalZero)
{
    StoredAlarmT data{};
    ZorvMwSpiListNameT itemName{};
    list.pushBack(itemName, data.data());
    EXPECT_EQ(19, givenName.length);
    EXPECT_STREQ("FmActiveAlarmList2", givenName.value);
    EXPECT_TRUE(isZero(givenName.value + 18, sizeof givenName.value - 18));

    ReplicatedList legacy("FmActiveAlarmList");
    legacy.openLike(list);
    legacy.pushBack(itemName, data.data());
    EXPECT_EQ(18, givenName.length);
    EXPECT_STREQ("FmActiveAlarmList", givenName.value);
}

TEST_F(GivenToServiceTest, buffersAreZeroBeforeEachCall)
{
    const StoredAlarmT full = [] {
        StoredAlarmT data;
        data.fill('x');
        return data;
    }();
    ZorvMwSpiListNameT itemName{};
    list.pushBack(itemName, full.data());
    list.pushBack(itemName, full.data());

    StoredAlarmT data{};
    AlarmListWalk walk(list);
    while (walk.next(itemName, data)) {
        EXPECT_EQ(full, data);
    }
    EXPECT_EQ(0u, dirtyBuffers);
}

// --- Answers

TEST_F(ReplicatedListTest, everyOperationReachesTheService)
{
    ZorvMwSpiListNameT itemName{};
    const StoredAlarmT data{};
    StoredAlarmT readBack{};
    ZorvMwSpiListRefT ref = nullptr;
    bool empty = false;
    EXPECT_EQ(-3, list.create(1000));
    EXPECT_EQ(0, list.attach());
    EXPECT_EQ(0, list.isEmpty(empty, false));
    EXPECT_TRUE(empty);
    EXPECT_EQ(0, list.pushBack(itemName, data.data()));
    EXPECT_EQ(0, list.replace(itemName, data.data()));
    EXPECT_EQ(0, list.getFrontRef(ref));
    EXPECT_EQ(0, list.getNext(ref, itemName, readBack.data()));
    EXPECT_EQ(0, list.finalize(ref));
    EXPECT_EQ(0, list.erase(itemName));
    EXPECT_EQ(0, list.remove());

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> -3", "listAttach FmActiveAlarmList2 -> 0",
                            "listIsEmpty FmActiveAlarmList2 -> 0 true", "listPushBack FmActiveAlarmList2 -> 0",
                            "listReplaceItem FmActiveAlarmList2 item1 -> 0", "listGetFrontRef FmActiveAlarmList2 -> 0",
                            "listGetNextItemFront FmActiveAlarmList2 -> 0", "listGetFinalize FmActiveAlarmList2 -> 0",
                            "listEraseItem FmActiveAlarmList2 item1 -> 0", "listDelete FmActiveAlarmList2 -> 0"));
}

TEST_F(ReplicatedListTest, aFailingServiceLeavesThePreset)
{
    middleware.lists.failAlways("listIsEmpty", -2);
    bool empty = false;
    EXPECT_EQ(-2, list.isEmpty(empty, true));
    EXPECT_TRUE(empty);
    EXPECT_EQ(-2, list.isEmpty(empty, false));
    EXPECT_FALSE(empty);
}

TEST_F(ReplicatedListTest, withoutTheServiceEveryOperationFails)
{
    const ReplicatedList unopened("FmActiveAlarmList2");
    ZorvMwSpiListNameT itemName{};
    StoredAlarmT data{};
    ZorvMwSpiListRefT ref = nullptr;
    bool empty = false;
    EXPECT_EQ(-1, unopened.create(1000));
    EXPECT_EQ(-1, unopened.remove());
    EXPECT_EQ(-1, unopened.attach());
    EXPECT_EQ(-1, unopened.isEmpty(empty, true));
    EXPECT_TRUE(empty);
    EXPECT_EQ(-1, unopened.getFrontRef(ref));
    EXPECT_EQ(nullptr, ref);
    EXPECT_EQ(-1, unopened.getNext(ref, itemName, data.data()));
    EXPECT_EQ(-1, unopened.finalize(ref));
    EXPECT_EQ(-1, unopened.pushBack(itemName, data.data()));
    EXPECT_EQ(-1, unopened.replace(itemName, data.data()));
    EXPECT_EQ(-1, unopened.erase(itemName));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(ReplicatedListTest, aServiceThatWentIsForgottenAtTheNextLook)
{
    middleware.portal.withdraw("ZorvMwSpiReplicatedList");
    list.open();

    EXPECT_EQ(-1, list.attach());
    EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace
}  // namespace ZorvFm

#include "ListFormatMigration.hpp"

#include <string>

#include "AlarmListTest.hpp"
#include "Serialize.hpp"
#include "StoredFields.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr const char* newName = "FmActiveAlarmList2";
constexpr const char* legacyName = "FmActiveAlarmList";

/// The way of one item: read, pushed.
const std::vector<std::string> moved = {"listGetNextItemFront FmActiveAlarmList -> 0",
                                        "trace 8 FM listGetNextItemFront, 0", "listPushBack FmActiveAlarmList2 -> 0",
                                        "trace 8 FM listPushBack, 0"};
const std::vector<std::string> opened = {"listAttach FmActiveAlarmList2 -> 0", "listGetFrontRef FmActiveAlarmList -> 0",
                                         "trace 8 FM listGetFrontRef, 0"};
const std::vector<std::string> closed = {"listGetFinalize FmActiveAlarmList -> 0",
                                         "trace 8 FM Response from listGetFinalize of list FmActiveAlarmList: 0"};
const std::string gaveUp = "log 4 Failed to migrate replicated list to the new format";

std::vector<std::string> inRow(std::initializer_list<std::vector<std::string>> parts)
{
    std::vector<std::string> all;
    for (const std::vector<std::string>& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

/// An alarm as format 1 knew it.
AlarmData legacyAlarm(const std::string& dn, std::uint64_t originalSeqNo)
{
    AlarmData data = anAlarm(dn);
    data.originalSeqNo = originalSeqNo;
    return data;
}

/// The item that the alarm becomes.
std::string migrated(const AlarmData& legacy, int state)
{
    AlarmData data = legacy;
    data.additionalTextForClear = "";
    data.alarmId = data.originalSeqNo;
    return alarmInState(state, data).serialize_v2();
}

class ListFormatMigrationTest : public FmTest {
protected:
    void plant(const AlarmData& data, int state = AlarmState::ACTIVE)
    {
        middleware.lists.plant(legacyName, alarmInState(state, data).serialize());
    }

    /// Both lists are there, the earlier one with two alarms.
    void prepareTwo()
    {
        plant(legacyAlarm("B", 12));
        plant(legacyAlarm("A", 11));
        newList.open();
        legacyList.openLike(newList);
        newList.create(1000);
        middleware.journal.show({Topic::Trace});
        journal();
    }

    int migrate() { return migrateToNewRlFormat(newList, legacyList, config); }

    std::vector<std::string> items() const { return middleware.lists.items(newName); }

    FmConfig config;
    ReplicatedList newList{newName};
    ReplicatedList legacyList{legacyName};
};

// --- Whole migrations

TEST_F(ListFormatMigrationTest, movesItemsInOrderAndDeletesTheEarlierList)
{
    prepareTwo();

    EXPECT_EQ(0, migrate());
    EXPECT_EQ(inRow({opened, moved, moved, closed, {"listDelete FmActiveAlarmList -> 0", "trace 8 FM listDelete, 0"}}),
              journal());
    EXPECT_THAT(items(), ElementsAre(migrated(legacyAlarm("B", 12), 2), migrated(legacyAlarm("A", 11), 2)));
    EXPECT_FALSE(middleware.lists.exists(legacyName));
}

TEST_F(ListFormatMigrationTest, theFilterStateMovesAlong)
{
    newList.open();
    legacyList.openLike(newList);
    newList.create(1000);
    for (const int state : {0, 1, 2, 5, 6}) {
        plant(legacyAlarm("A", 11), state);
    }

    EXPECT_EQ(0, migrate());
    EXPECT_THAT(items(), ElementsAre(migrated(legacyAlarm("A", 11), 0), migrated(legacyAlarm("A", 11), 1),
                                     migrated(legacyAlarm("A", 11), 2), migrated(legacyAlarm("A", 11), 5),
                                     migrated(legacyAlarm("A", 11), 6)));
}

TEST_F(ListFormatMigrationTest, aFailedAttachDoesNotMatter)
{
    prepareTwo();
    middleware.lists.failNext("listAttach", -1);

    EXPECT_EQ(0, migrate());
    EXPECT_EQ("listAttach FmActiveAlarmList2 -> -1", journal().front());
    EXPECT_EQ(2u, items().size());
    EXPECT_FALSE(middleware.lists.exists(legacyName));
}

// --- Items of any kind

class MigratedItemTest : public ListFormatMigrationTest {
protected:
    /// The fields of the only item, after it was moved.
    std::vector<std::string> fieldsAfter(const std::string& legacyText)
    {
        middleware.lists.plant(legacyName, legacyText);
        newList.open();
        legacyList.openLike(newList);
        newList.create(1000);
        journal();
        EXPECT_EQ(0, migrate());
        EXPECT_EQ(1u, items().size());
        return split(items().at(0));
    }
};

TEST_F(MigratedItemTest, ofElevenFieldsIsKnownByItsSequenceNumber)
{
    const auto fields = fieldsAfter(firstFields(alarmInState(AlarmState::CEASED).serialize(), 11));

    EXPECT_EQ("17", fields.at(7));
    EXPECT_EQ("17", fields.at(11));
    EXPECT_EQ("2", fields.at(15));
    EXPECT_EQ("17", fields.at(17));
}

TEST_F(MigratedItemTest, ofFifteenFieldsIsKnownByItsOriginalSequenceNumber)
{
    const auto fields = fieldsAfter(alarmInState(AlarmState::CEASED).serializeOldForTest());

    EXPECT_EQ("17", fields.at(7));
    EXPECT_EQ("11", fields.at(11));
    EXPECT_EQ("2", fields.at(15));
    EXPECT_EQ("0", fields.at(16));
    EXPECT_EQ("11", fields.at(17));
    EXPECT_EQ("0", fields.at(18));
}

TEST_F(MigratedItemTest, ofSixteenFieldsHasItsState)
{
    const auto fields = fieldsAfter(firstFields(alarmInState(AlarmState::CEASED).serialize(), 16));

    EXPECT_EQ("6", fields.at(15));
    EXPECT_EQ("0", fields.at(16));
}

TEST_F(MigratedItemTest, ofSeventeenFieldsHasItsClearTime)
{
    EXPECT_EQ("1700000001000000002", fieldsAfter(firstFields(alarmInState(AlarmState::CEASED).serialize(), 17)).at(16));
}

TEST_F(MigratedItemTest, withPairsKeepsThem)
{
    const auto fields = fieldsAfter(alarmInState(AlarmState::ACTIVE).serialize());

    EXPECT_EQ("2", fields.at(18));
    EXPECT_EQ(23u, fields.size());
}

TEST_F(MigratedItemTest, ofATogglingAlarmSaysSoTwice)
{
    const auto fields = fieldsAfter(alarmInState(AlarmState::ACTIVE_TOGGLING).serialize());

    EXPECT_EQ("3", fields.at(15));
    EXPECT_EQ("Link down again The alarm is currently toggling. The alarm is currently toggling.",
              Serialize::fromBase64(fields.at(3)));
}

TEST_F(MigratedItemTest, ofAWrongLengthIsMovedAsAnUnknownAlarm)
{
    const auto fields = fieldsAfter(firstFields(alarmInState(AlarmState::ACTIVE).serialize(), 12));
    const FmConfig plain;

    EXPECT_THAT(journal(), testing::Contains("log 3 Corrupt data from replicated list, size 12"));
    EXPECT_EQ(Alarm(plain).serialize_v2(), join(fields));
}

TEST_F(MigratedItemTest, ofADamagedNumberIsMovedWithWhatCouldBeRead)
{
    const std::string damaged = replaced(alarmInState(AlarmState::ACTIVE).serialize(), 13, "x");
    const auto fields = fieldsAfter(damaged);

    EXPECT_THAT(journal(), testing::Contains("log 3 Failed to deserialize alarm: Failed to retrieve originalSeverity, "
                                             "data :" +
                                             damaged));
    EXPECT_EQ("11", fields.at(11));
    EXPECT_EQ("0", fields.at(13));
    EXPECT_EQ("0", fields.at(15));
    EXPECT_EQ("11", fields.at(17));
}

TEST_F(MigratedItemTest, thatGrowsBeyondTheBufferIsCut)
{
    AlarmData data = legacyAlarm("A", UINT64_MAX);
    data.additionalText = std::string(600, 'x');
    data.setAdditionalInfo(AdditionalInfoT{});
    std::string legacy = alarmInState(AlarmState::ACTIVE, data).serialize();
    while (legacy.size() + 8 < 1000) {
        data.specificProblem += "abc";
        legacy = alarmInState(AlarmState::ACTIVE, data).serialize();
    }
    fieldsAfter(legacy);

    ASSERT_LT(legacy.size(), 1000u);
    EXPECT_THAT(middleware.lists.bytes(newName),
                ElementsAre(migrated(data, AlarmState::ACTIVE).substr(0, 999) + std::string(1, '\0')));
}

// --- Failures

TEST_F(ListFormatMigrationTest, aWalkThatDoesNotBeginMovesAndDeletesNothing)
{
    prepareTwo();
    middleware.lists.failNext("listGetFrontRef", -1);

    EXPECT_EQ(-1, migrate());
    EXPECT_THAT(journal(), ElementsAre("listAttach FmActiveAlarmList2 -> 0", "listGetFrontRef FmActiveAlarmList -> -1",
                                       "trace 8 FM listGetFrontRef, -1", gaveUp));
    EXPECT_EQ(2u, middleware.lists.items(legacyName).size());
    EXPECT_EQ(0u, middleware.lists.calls("listGetFinalize"));
}

TEST_F(ListFormatMigrationTest, aWalkThatBreaksOffKeepsWhatWasMoved)
{
    prepareTwo();
    middleware.lists.failAt("listGetNextItemFront", 2, -4);

    EXPECT_EQ(-1, migrate());
    EXPECT_EQ(inRow({opened,
                     moved,
                     {"listGetNextItemFront FmActiveAlarmList -> -4", "trace 8 FM listGetNextItemFront, -4",
                      "log 3 Retval from listGetNextItemFront: -4"},
                     closed,
                     {"log 3 Caught exception during alarm list migration: 'Retval from listGetNextItemFront: -4'"}}),
              journal());
    EXPECT_THAT(items(), ElementsAre(migrated(legacyAlarm("B", 12), 2)));
    EXPECT_EQ(2u, middleware.lists.items(legacyName).size());
    EXPECT_EQ(1u, middleware.lists.calls("listGetFinalize"));
}

TEST_F(ListFormatMigrationTest, aFailedPushEndsTheWalk)
{
    prepareTwo();
    middleware.lists.failNext("listPushBack", -10);

    EXPECT_EQ(-1, migrate());
    EXPECT_EQ(inRow({opened,
                     {"listGetNextItemFront FmActiveAlarmList -> 0", "trace 8 FM listGetNextItemFront, 0",
                      "listPushBack FmActiveAlarmList2 -> -10", "trace 8 FM listPushBack, -10"},
                     closed,
                     {gaveUp}}),
              journal());
    EXPECT_THAT(items(), IsEmpty());
    EXPECT_EQ(2u, middleware.lists.items(legacyName).size());
    EXPECT_EQ(1u, middleware.lists.calls("listGetFinalize"));
}

TEST_F(ListFormatMigrationTest, aFailedPushOfTheLastItemKeepsTheEarlierList)
{
    prepareTwo();
    middleware.lists.failAt("listPushBack", 2, -10);

    EXPECT_EQ(-1, migrate());
    EXPECT_EQ(gaveUp, journal().back());
    EXPECT_TRUE(middleware.lists.exists(legacyName));
    EXPECT_EQ(1u, items().size());
}

TEST_F(ListFormatMigrationTest, aFailedFinalizeDoesNotMatter)
{
    prepareTwo();
    middleware.lists.failNext("listGetFinalize", -1);

    EXPECT_EQ(0, migrate());
    EXPECT_EQ(inRow({opened,
                     moved,
                     moved,
                     {"listGetFinalize FmActiveAlarmList -> -1",
                      "trace 8 FM Response from listGetFinalize of list FmActiveAlarmList: -1",
                      "listDelete FmActiveAlarmList -> 0", "trace 8 FM listDelete, 0"}}),
              journal());
}

TEST_F(ListFormatMigrationTest, aFailedDeleteIsAFailure)
{
    prepareTwo();
    middleware.lists.failNext("listDelete", -1);

    EXPECT_EQ(-1, migrate());
    EXPECT_EQ(inRow({opened,
                     moved,
                     moved,
                     closed,
                     {"listDelete FmActiveAlarmList -> -1", "trace 8 FM listDelete, -1", gaveUp}}),
              journal());
    EXPECT_EQ(2u, items().size());
}

TEST_F(ListFormatMigrationTest, withoutTheServiceItFails)
{
    middleware.journal.show({Topic::Trace});

    EXPECT_EQ(-1, migrate());
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM listGetFrontRef, -1", gaveUp));
}

// --- As the active alarm list calls it

class MigrationAtStartTest : public ListFormatMigrationTest {
protected:
    AlarmList list{config};
};

TEST_F(MigrationAtStartTest, withoutAnEarlierListThereIsNothingToDo)
{
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> 0", "listIsEmpty FmActiveAlarmList -> -2",
                            "listGetFrontRef FmActiveAlarmList2 -> 0", "listGetFinalize FmActiveAlarmList2 -> 0",
                            "log 6 Active Alarm List recovered, 0"));
}

TEST_F(MigrationAtStartTest, anEmptyEarlierListStays)
{
    legacyList.open();
    legacyList.create(1000);
    journal();
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> 0", "listIsEmpty FmActiveAlarmList -> 0 true",
                            "listGetFrontRef FmActiveAlarmList2 -> 0", "listGetFinalize FmActiveAlarmList2 -> 0",
                            "log 6 Active Alarm List recovered, 0"));
    EXPECT_TRUE(middleware.lists.exists(legacyName));
}

TEST_F(MigrationAtStartTest, anEarlierListThatCannotTellIsLeftAlone)
{
    plant(legacyAlarm("A", 11));
    middleware.lists.failNext("listIsEmpty", -1);
    list.initialize();

    EXPECT_EQ(0u, middleware.lists.calls("listAttach"));
    EXPECT_THAT(contentsOf(list), IsEmpty());
    EXPECT_TRUE(middleware.lists.exists(legacyName));
}

TEST_F(MigrationAtStartTest, earlierAlarmsAreMovedAndRecovered)
{
    plant(legacyAlarm("B", 12));
    plant(legacyAlarm("A", 21));
    plant(legacyAlarm("C", 3));
    list.initialize();

    EXPECT_THAT(contentsOf(list), ElementsAre("B 12", "A 21", "C 3"));
    EXPECT_THAT(items(), ElementsAre(migrated(legacyAlarm("B", 12), 2), migrated(legacyAlarm("A", 21), 2),
                                     migrated(legacyAlarm("C", 3), 2)));
    EXPECT_FALSE(middleware.lists.exists(legacyName));
    EXPECT_EQ(22u, list.createAlarm(anAlarm("D"))->alarmId);
}

TEST_F(MigrationAtStartTest, theWholeJournal)
{
    plant(legacyAlarm("A", 11));
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> 0", "listIsEmpty FmActiveAlarmList -> 0 false",
                            "listAttach FmActiveAlarmList2 -> 0", "listGetFrontRef FmActiveAlarmList -> 0",
                            "listGetNextItemFront FmActiveAlarmList -> 0", "listPushBack FmActiveAlarmList2 -> 0",
                            "listGetFinalize FmActiveAlarmList -> 0", "listDelete FmActiveAlarmList -> 0",
                            "listGetFrontRef FmActiveAlarmList2 -> 0", "listGetNextItemFront FmActiveAlarmList2 -> 0",
                            "listGetFinalize FmActiveAlarmList2 -> 0", "log 6 Active Alarm List recovered, 1"));
}

TEST_F(MigrationAtStartTest, movedAlarmsAreSavedAndDeletedInTheNewList)
{
    plant(legacyAlarm("A", 11));
    list.initialize();
    Alarm* alarm = list.findAlarm(anAlarm("A"));
    journal();
    list.saveAlarm(*alarm);
    list.deleteAlarm(*alarm);

    EXPECT_THAT(journal(), ElementsAre("listReplaceItem FmActiveAlarmList2 item2 -> 0",
                                       "listEraseItem FmActiveAlarmList2 item2 -> 0"));
}

TEST_F(MigrationAtStartTest, itHappensOnce)
{
    plant(legacyAlarm("A", 11));
    list.initialize();
    list.initialize();

    EXPECT_THAT(contentsOf(list), ElementsAre("A 11"));
    EXPECT_EQ(1u, middleware.lists.calls("listAttach"));
}

TEST_F(MigrationAtStartTest, aFailureIsSurvivedAndTheNextStartMovesAgain)
{
    plant(legacyAlarm("A", 11));
    plant(legacyAlarm("B", 12));
    middleware.lists.failAt("listPushBack", 2, -1);
    list.initialize();
    EXPECT_THAT(journal(), testing::IsSupersetOf({"log 4 Failed to migrate replicated list to the new format",
                                                  "log 3 Migration from old replicated list to new format failed",
                                                  "log 6 Active Alarm List recovered, 1"}));
    EXPECT_THAT(contentsOf(list), ElementsAre("A 11"));

    list.initialize();
    EXPECT_THAT(contentsOf(list), ElementsAre("A 11", "A 11", "B 12"));
    EXPECT_FALSE(middleware.lists.exists(legacyName));
}

TEST_F(MigrationAtStartTest, aNewListThatCouldNotBeCreatedFailsTheMigrationOnly)
{
    plant(legacyAlarm("A", 11));
    middleware.lists.failNext("listCreate", -10);
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> -10",
                            "log 3 Replicated List FmActiveAlarmList2 listCreate reports no resources ( -10 )",
                            "listIsEmpty FmActiveAlarmList -> 0 false", "listAttach FmActiveAlarmList2 -> -2",
                            "listGetFrontRef FmActiveAlarmList -> 0", "listGetNextItemFront FmActiveAlarmList -> 0",
                            "listPushBack FmActiveAlarmList2 -> -2", "listGetFinalize FmActiveAlarmList -> 0",
                            "log 4 Failed to migrate replicated list to the new format",
                            "log 3 Migration from old replicated list to new format failed",
                            "listGetFrontRef FmActiveAlarmList2 -> -2", "log 6 Active Alarm List recovered, 0",
                            "log 4 Failed to copy Active AlarmData List"));
    EXPECT_TRUE(middleware.lists.exists(legacyName));
}

}  // namespace
}  // namespace ZorvFm

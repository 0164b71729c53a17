#include "AlarmTypeIndex.hpp"

#include "ConnectorTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::MoValue;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class AlarmTypeIndexTest : public ConnectorTest {
protected:
    std::string plantType(const std::string& model, const std::string& name, std::uint32_t majorType,
                          std::uint32_t minorType)
    {
        ZorvFakes::FmAlarmTypeSpec type;
        type.majorType = majorType;
        type.minorType = minorType;
        return middleware.fmModel.plantType(model, name, type);
    }

    static std::string modelDn(const std::string& name) { return std::string(fmDn) + ",FmAlarmModel=" + name; }

    /// Reads these models, and closes the accessor.
    void read(const std::vector<std::string>& names, bool areAllModels = true)
    {
        std::list<std::string> models;
        for (const std::string& name : names) {
            models.push_back(modelDn(name));
        }
        index.read(accessor, models, areAllModels);
        accessor.close();
    }

    /// The failures that reading the models "1" and "2" reports, without those of the other topics.
    Entries failuresOfReading()
    {
        middleware.journal.showOnly({Topic::Log});
        read({"1", "2"});
        return journal();
    }

    AlarmTypeIndex index;
};

TEST_F(AlarmTypeIndexTest, isIncompleteAndEmptyAtFirst)
{
    EXPECT_FALSE(index.isComplete());
    EXPECT_EQ("", index.find(1, 1));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmTypeIndexTest, readsTheNumbersOfAllTypesAndNothingElse)
{
    const std::string first = plantType("1", "A", 1, 2);
    const std::string second = plantType("1", "B", 4294967295, 0);
    const std::string third = plantType("2", "A", 2, 1);

    read({"1", "2"});

    EXPECT_TRUE(index.isComplete());
    EXPECT_THAT(journal(),
                ElementsAreArray(all({{"createTransaction 1 60 -> 0"},
                                      children(modelDn("1"), "FmAlarmType", {"FmAlarmType=A", "FmAlarmType=B"}),
                                      attributes(first, {"majorType", "minorType"}),
                                      attributes(second, {"majorType", "minorType"}),
                                      children(modelDn("2"), "FmAlarmType", {"FmAlarmType=A"}),
                                      attributes(third, {"majorType", "minorType"}),
                                      {"abortTransaction -> 0"}})));
    EXPECT_EQ(first, index.find(1, 2));
    EXPECT_EQ(second, index.find(4294967295, 0));
    EXPECT_EQ(third, index.find(2, 1));
    EXPECT_EQ("", index.find(1, 1));
}

TEST_F(AlarmTypeIndexTest, aModelWithoutTypesIsRead)
{
    middleware.fmModel.plantModel("1");

    read({"1"});

    EXPECT_TRUE(index.isComplete());
    EXPECT_EQ("", index.find(1, 1));
}

TEST_F(AlarmTypeIndexTest, tellsWhichModelsItPassesOnTheWayToAType)
{
    plantType("2", "A", 1, 1);
    plantType("1", "A", 2, 2);
    middleware.fmModel.plantModel("3");
    read({"2", "1", "3"});
    journal();
    middleware.journal.showOnly({Topic::Trace});

    index.find(1, 1);
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Checking '" + modelDn("2") + "' for alarms"));
    index.find(2, 2);
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Checking '" + modelDn("2") + "' for alarms",
                                       "trace 8 FM Checking '" + modelDn("1") + "' for alarms"));
    index.find(3, 3);
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Checking '" + modelDn("2") + "' for alarms",
                                       "trace 8 FM Checking '" + modelDn("1") + "' for alarms",
                                       "trace 8 FM Checking '" + modelDn("3") + "' for alarms"));
}

TEST_F(AlarmTypeIndexTest, theFirstTypeOfANumberCountsWithinAndAcrossModels)
{
    const std::string first = plantType("1", "Z", 1, 1);
    plantType("1", "A", 1, 1);
    plantType("2", "A", 1, 1);
    const std::string second = plantType("2", "B", 2, 2);
    plantType("3", "A", 2, 2);

    read({"1", "2", "3"});

    EXPECT_EQ(first, index.find(1, 1));
    EXPECT_EQ(second, index.find(2, 2));
}

TEST_F(AlarmTypeIndexTest, clearForgetsEverything)
{
    plantType("1", "A", 1, 1);
    read({"1"});

    index.clear();

    EXPECT_FALSE(index.isComplete());
    EXPECT_EQ("", index.find(1, 1));
}

TEST_F(AlarmTypeIndexTest, readingAgainForgetsWhatIsGone)
{
    const std::string first = plantType("1", "A", 1, 1);
    read({"1"});
    middleware.objects.remove(first);
    const std::string second = plantType("1", "B", 2, 2);

    read({"1"});

    EXPECT_EQ("", index.find(1, 1));
    EXPECT_EQ(second, index.find(2, 2));
}

TEST_F(AlarmTypeIndexTest, withoutAllModelsItStaysIncomplete)
{
    const std::string first = plantType("1", "A", 1, 1);

    read({"1"}, false);
    EXPECT_FALSE(index.isComplete());
    EXPECT_EQ(first, index.find(1, 1));

    read({"1"}, true);
    EXPECT_TRUE(index.isComplete());
}

// --- What cannot be read is logged and left out, the rest is read

TEST_F(AlarmTypeIndexTest, aMajorTypeThatCannotBeRead)
{
    const std::string broken = plantType("1", "A", 1, 1);
    const std::string next = plantType("1", "B", 2, 2);
    middleware.objects.failNext("getMoAttribute " + broken + " majorType", ZORV_RETURN_FAILED);

    EXPECT_THAT(failuresOfReading(),
                ElementsAre("log 3 Could not access MO, reason Failed to write 'majorType' from MO ( error:-1 )!"));
    EXPECT_FALSE(index.isComplete());
    EXPECT_EQ("", index.find(1, 1));
    EXPECT_EQ(next, index.find(2, 2));
}

TEST_F(AlarmTypeIndexTest, aMinorTypeThatCannotBeRead)
{
    const std::string broken = plantType("1", "A", 1, 1);
    const std::string next = plantType("2", "B", 2, 2);
    middleware.objects.removeAttribute(broken, "minorType");

    EXPECT_THAT(failuresOfReading(),
                ElementsAre("log 3 Could not access MO, reason Failed to write 'minorType' from MO ( error:-2 )!"));
    EXPECT_FALSE(index.isComplete());
    EXPECT_EQ("", index.find(1, 1));
    EXPECT_EQ(next, index.find(2, 2));
}

TEST_F(AlarmTypeIndexTest, numbersOfOtherKinds)
{
    middleware.objects.plant(plantType("1", "A", 1, 1), {{"majorType", MoValue::none(YALT_MO_ATTRIBUTE_UINT32)}});
    middleware.objects.plant(plantType("1", "B", 2, 2), {{"minorType", MoValue::text("2")}});
    const std::string next = plantType("1", "C", 3, 3);

    EXPECT_THAT(failuresOfReading(),
                ElementsAre("log 3 Could not access MO, reason Attribute has no value set: " + modelDn("1") +
                                ",FmAlarmType=A::majorType",
                            "log 3 Could not access MO, reason Attribute has another type: " + modelDn("1") +
                                ",FmAlarmType=B::minorType"));
    EXPECT_FALSE(index.isComplete());
    EXPECT_EQ(next, index.find(3, 3));
}

TEST_F(AlarmTypeIndexTest, aModelThatCannotBeWalked)
{
    plantType("1", "A", 1, 1);
    const std::string next = plantType("2", "A", 2, 2);
    middleware.objects.failNext("nextMo", ZORV_RETURN_FAILED);

    EXPECT_THAT(failuresOfReading(),
                ElementsAre("log 3 Could not access MO, reason Failed to get children 'FmAlarmType' of MO :" +
                            modelDn("1") + ", reason (-1 )!"));
    EXPECT_FALSE(index.isComplete());
    EXPECT_EQ("", index.find(1, 1));
    EXPECT_EQ(next, index.find(2, 2));
}

}  // namespace
}  // namespace ZorvFm

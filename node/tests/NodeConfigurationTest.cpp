#include "config/NodeConfiguration.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"
#include "files/InputError.hpp"

namespace ZorvNode {

using namespace ZorvInput;

using ::testing::ElementsAre;
using ::testing::Pair;

class NodeConfigurationTest : public ::testing::Test {
protected:
    NodeConfiguration read(const std::string& content) const
    {
        return readNodeConfiguration(directory.write("node.xml", "<ZorvNode>\n" + content + "\n</ZorvNode>"));
    }

    std::string failureOf(const std::string& content) const
    {
        try {
            read(content);
        } catch (const InputError& e) {
            return std::string(e.what()).substr(directory.path("node.xml").size());
        }
        return "read";
    }

    ZorvTest::TemporaryDirectory directory;
    const std::string least = "<library>lib/a.so</library><model>m.xml</model>";
};

TEST_F(NodeConfigurationTest, theLeastHasDefaultsAndPathsRelativeToTheFile)
{
    const NodeConfiguration it = read(least);

    EXPECT_EQ(directory.path("node.xml"), it.file);
    EXPECT_THAT(it.libraries, ElementsAre(directory.path("lib/a.so")));
    EXPECT_EQ(directory.path("m.xml"), it.model);
    EXPECT_EQ(directory.path("run"), it.runDirectory);
    EXPECT_EQ(directory.path("run/log"), it.logDirectory);
    EXPECT_EQ(directory.path("run/state"), it.store.directory);
    EXPECT_EQ(StoreKind::sqlite, it.store.kind);
    EXPECT_EQ(Durability::process, it.store.durability);
    EXPECT_FALSE(it.store.acceptEmpty);
    EXPECT_EQ(6, it.logLevel);
    EXPECT_EQ(1000000U, it.logRotation.fileSize);
    EXPECT_EQ(10000U, it.queueBound);
    EXPECT_EQ(100000U, it.inboxBound);
}

TEST_F(NodeConfigurationTest, theNodesOwnAlarmIsNamedWithItsType)
{
    EXPECT_FALSE(read(least).storageAlarm);
    const NodeConfiguration it = read(least + "<storageAlarm dn='A=1' majorType='32473' minorType='4294967295'/>");
    ASSERT_TRUE(it.storageAlarm);
    EXPECT_EQ("A=1", it.storageAlarm->dn);
    EXPECT_EQ(32473U, it.storageAlarm->majorType);
    EXPECT_EQ(4294967295U, it.storageAlarm->minorType);

    EXPECT_EQ(":2: storageAlarm/minorType: not a number from 0 to 4294967295, \"4294967296\"",
              failureOf(least + "<storageAlarm dn='A=1' majorType='1' minorType='4294967296'/>"));
    EXPECT_EQ(":2: element storageAlarm has no attribute, \"dn\"",
              failureOf(least + "<storageAlarm majorType='1' minorType='2'/>"));
}

TEST_F(NodeConfigurationTest, theInboxMayHoldMoreThanAQueue)
{
    EXPECT_EQ(
        8U, read(least + "<eventRouter><queueBound>7</queueBound><inboxBound>8</inboxBound></eventRouter>").inboxBound);
}

TEST_F(NodeConfigurationTest, everyElementIsRead)
{
    const NodeConfiguration it = read(
        "<library>/x/a.so</library><library>/x/b.so</library><model>/x/m.xml</model><runDirectory>/x/run</runDirectory>"
        "<stateDirectory>/x/state</stateDirectory><logDirectory>/x/log</logDirectory><log><level> warning "
        "</level><fileSize>1000</fileSize><keptFiles>3</keptFiles></log>"
        "<trace><fileSize>2000</fileSize><keptFiles>4</keptFiles><group name='Fm' level='8'/><group name='Node' "
        "level='1'/></trace>"
        "<eventRouter><queueBound>11</queueBound><consumerBound>12</consumerBound>"
        "<inboxBound>10</inboxBound></eventRouter>"
        "<replicatedLists><listBound>13</listBound><itemBound>14</itemBound><store>memory</store><durability> power "
        "</durability></replicatedLists>"
        "<managedObjects><transactionBound>15</transactionBound></managedObjects>"
        "<ZorvFmComponent><anything>at all</anything></ZorvFmComponent>");

    EXPECT_THAT(it.libraries, ElementsAre("/x/a.so", "/x/b.so"));
    EXPECT_EQ("/x/run", it.runDirectory);
    EXPECT_EQ("/x/log", it.logDirectory);
    EXPECT_EQ("/x/state", it.store.directory);
    EXPECT_EQ(StoreKind::memory, it.store.kind);
    EXPECT_EQ(Durability::power, it.store.durability);
    EXPECT_EQ(4, it.logLevel);
    EXPECT_EQ(1000U, it.logRotation.fileSize);
    EXPECT_EQ(3U, it.logRotation.keptFiles);
    EXPECT_EQ(2000U, it.traceRotation.fileSize);
    EXPECT_THAT(it.traceLevels, ElementsAre(Pair("Fm", 8), Pair("Node", 1)));
    EXPECT_EQ(11U, it.queueBound);
    EXPECT_EQ(12U, it.consumerBound);
    EXPECT_EQ(10U, it.inboxBound);
    EXPECT_EQ(13U, it.listBound);
    EXPECT_EQ(14U, it.itemBound);
    EXPECT_EQ(15U, it.transactionBound);
}

TEST_F(NodeConfigurationTest, wrongElementsAndValuesAreToldWithTheirLine)
{
    EXPECT_EQ(":1: element is missing, \"library\"", failureOf("<model>m.xml</model>"));
    EXPECT_EQ(":1: element is missing, \"model\"", failureOf("<library>a.so</library>"));
    EXPECT_EQ(":2: unknown element, \"colour\"", failureOf(least + "<colour/>"));
    EXPECT_EQ(":3: unknown element, \"log/colour\"", failureOf(least + "<log>\n<colour/></log>"));
    EXPECT_EQ(":2: element appears twice, \"model\"", failureOf(least + "<model>b.xml</model>"));
    EXPECT_EQ(":3: log/fileSize: not a number from 1000 to 1000000000, \"10k\"",
              failureOf(least + "\n<log><fileSize>10k</fileSize></log>"));
    EXPECT_EQ(":2: log/level: not error, warning, notice or information, \"loud\"",
              failureOf(least + "<log><level>loud</level></log>"));
    EXPECT_EQ(":2: replicatedLists/store: not sqlite or memory, \"disk\"",
              failureOf(least + "<replicatedLists><store>disk</store></replicatedLists>"));
    EXPECT_EQ(":2: replicatedLists/durability: not process or power, \"\"",
              failureOf(least + "<replicatedLists><durability/></replicatedLists>"));
    EXPECT_EQ(":2: stateDirectory: no path, \"\"", failureOf(least + "<stateDirectory/>"));
    EXPECT_EQ(":2: trace/group: not a number from 0 to 8, \"9\"",
              failureOf(least + "<trace><group name='Fm' level='9'/></trace>"));
    EXPECT_EQ(":2: trace/group appears twice, \"Fm\"",
              failureOf(least + "<trace><group name='Fm' level='1'/><group name='Fm' level='1'/></trace>"));
    EXPECT_EQ(":3: ZorvFmComponent/alarmToggleTriggerCount: not a number from 0 to 4294967295, \"4294967296\"",
              failureOf(least + "<ZorvFmComponent>\n<alarmToggleTriggerCount>4294967296</alarmToggleTriggerCount>"
                                "</ZorvFmComponent>"));
    EXPECT_EQ(
        ":2: ZorvFmComponent/alarmToggleWindowSize: blanks around the number, \" 5\"",
        failureOf(least + "<ZorvFmComponent><alarmToggleWindowSize> 5</alarmToggleWindowSize></ZorvFmComponent>"));
    EXPECT_EQ(":2: model: no path, \"\"", failureOf("<library>a.so</library><model> </model>"));
    EXPECT_EQ(":1: text in element ZorvNode, \"hello\"", failureOf(least + "hello"));
    EXPECT_EQ(":2: unknown attribute of element queueBound, \"unit\"",
              failureOf(least + "<eventRouter><queueBound unit='k'>1</queueBound></eventRouter>"));
}

}  // namespace ZorvNode

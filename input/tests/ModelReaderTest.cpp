#include "model/ModelReader.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"
#include "files/InputError.hpp"

namespace ZorvInput {

using ::testing::ElementsAre;

class ModelReaderTest : public ::testing::Test {
protected:
    ModelFile read(const std::string& content) const
    {
        return readModel(directory.write("model.xml", "<ZorvModel>\n" + content + "\n</ZorvModel>"));
    }

    /// The message behind the file's name; the first line of the content is line 2.
    std::string failureOf(const std::string& content) const
    {
        try {
            read(content);
        } catch (const InputError& e) {
            return std::string(e.what()).substr(directory.path("model.xml").size());
        }
        return "read";
    }

    ZorvTest::TemporaryDirectory directory;

    const std::string classes =
        "<enum name='Severity'><member name='MAJOR' value='4'/></enum>"
        "<struct name='Pair'><attribute name='name' type='string'/>"
        "<attribute name='value' type='uint8'/></struct>"
        "<class name='Node'><attribute name='number' type='uint32' min='5' max='100'/>"
        "<attribute name='level' type='Severity'/><attribute name='on' type='bool'/>"
        "<attribute name='pairs' type='Pair' sequence='true'/></class>"
        "<class name='Port' parent='Node'><attribute name='id' type='int8' mandatory='true'/></class>"
        "<class name='Alarm' parent='Node' implementer='FmComponent'/>\n";
};

TEST_F(ModelReaderTest, objectsHaveTheirValues)
{
    const ModelFile file = read(classes + "<object dn='Node=1'><number>42</number><level>MAJOR</level><on>true</on>"
                                          "<pairs><name>a</name><value>1</value></pairs><pairs><name>b</name></pairs>"
                                          "<object dn='Port=2'><id>-7</id></object></object>");

    const auto& node = file.tree.find("Node=1")->attributes;
    EXPECT_EQ(42U, std::get<std::uint64_t>(node.at("number").values.front()));
    EXPECT_EQ(4, std::get<std::int32_t>(node.at("level").values.front()));
    EXPECT_TRUE(std::get<bool>(node.at("on").values.front()));
    const auto& second = std::get<std::vector<MoNamedValue>>(node.at("pairs").values.at(1));
    EXPECT_EQ("b", std::get<std::string>(second.at(0).value.values.front()));
    EXPECT_TRUE(second.at(1).value.values.empty());
    EXPECT_EQ(-7, std::get<std::int64_t>(file.tree.find("Node=1,Port=2")->attributes.at("id").values.front()));
}

TEST_F(ModelReaderTest, textStandsAsItIs)
{
    const ModelFile file = read("<class name='A'><attribute name='text' type='string'/></class>"
                                "<object dn='A=1'><text> two  words </text></object><object dn='A=2'><text/></object>");

    EXPECT_EQ(" two  words ", std::get<std::string>(file.tree.find("A=1")->attributes.at("text").values.front()));
    EXPECT_EQ("", std::get<std::string>(file.tree.find("A=2")->attributes.at("text").values.front()));
}

TEST_F(ModelReaderTest, childClassesStandInTheOrderOfTheFile)
{
    const ModelFile file = read(classes);

    EXPECT_THAT(file.model->childClassesOf("Node"), ElementsAre("Port", "Alarm"));
    EXPECT_THAT(file.model->childClassesOf(""), ElementsAre("Node"));
}

TEST_F(ModelReaderTest, systemAttributesDoNotNotifyUnlessTheySaySo)
{
    const ModelFile file = read("<class name='A'><attribute name='a' type='bool' readOnly='true'/>"
                                "<attribute name='b' type='bool' readOnly='true' notify='true'/>"
                                "<attribute name='c' type='bool' notify='false'/></class>");

    EXPECT_FALSE(file.model->findClass("A")->findAttribute("a")->notifies);
    EXPECT_TRUE(file.model->findClass("A")->findAttribute("b")->notifies);
    EXPECT_FALSE(file.model->findClass("A")->findAttribute("c")->notifies);
}

struct ModelFailure {
    const char* name;
    const char* content;
    const char* message;
};

class ModelFailureTest : public ModelReaderTest, public ::testing::WithParamInterface<ModelFailure> {};

TEST_P(ModelFailureTest, isToldWithLineAndValue)
{
    EXPECT_EQ(GetParam().message, failureOf(classes + GetParam().content));
}

const ModelFailure modelFailures[] = {
    {"unknownElement", "<colour/>", ":3: unknown element, \"colour\""},
    {"unknownClass", "<object dn='Nodes=1'/>", ":3: unknown class, \"Nodes\""},
    {"dnWithoutValue", "<object dn='Node'/>", ":3: dn: not \"Class=value\", \"Node\""},
    {"noDn", "<object/>", ":3: element object has no attribute, \"dn\""},
    {"wrongNumber", "<object dn='Node=1'>\n<number>4x</number></object>",
     ":4: not a uint32 for attribute number, \"4x\""},
    {"tooLarge", "<object dn='Node=1'><number>101</number></object>",
     ":3: value out of range 5 to 100 for attribute number, \"101\""},
    {"tooSmall", "<object dn='Node=1'><number>4</number></object>",
     ":3: value out of range 5 to 100 for attribute number, \"4\""},
    {"farTooLarge", "<object dn='Node=1'><number>99999999999999999999</number></object>",
     ":3: value out of range for attribute number, \"99999999999999999999\""},
    {"negative", "<object dn='Node=1'><number>-1</number></object>", ":3: not a uint32 for attribute number, \"-1\""},
    {"noMember", "<object dn='Node=1'><level>LOW</level></object>",
     ":3: not a member of Severity for attribute level, \"LOW\""},
    {"noBool", "<object dn='Node=1'><on>yes</on></object>", ":3: not true or false for attribute on, \"yes\""},
    {"unknownAttribute", "<object dn='Node=1'><colour>red</colour></object>",
     ":3: class Node has no attribute, \"colour\""},
    {"twoValues", "<object dn='Node=1'><on>true</on>\n<on>true</on></object>",
     ":4: attribute has a value already, \"on\""},
    {"unknownMember", "<object dn='Node=1'><pairs><colour/></pairs></object>",
     ":3: structure Pair has no member, \"colour\""},
    {"memberOutOfRange", "<object dn='Node=1'><pairs>\n<value>256</value></pairs></object>",
     ":4: value out of range 0 to 255 for attribute value, \"256\""},
    {"duplicate", "<object dn='Node=1'/>\n<object dn='Node=1'/>", ":4: object exists already, \"Node=1\""},
    {"noParent", "<object dn='Node=1,Port=2'><id>1</id></object>", ":3: no parent object, \"Node=1\""},
    {"misplaced", "<object dn='Node=1'><object dn='Node=2'/></object>",
     ":3: class Node is not contained in class, \"Node\""},
    {"mandatory", "<object dn='Node=1'>\n<object dn='Port=2'/></object>",
     ":4: object has no value for attribute id, \"Node=1,Port=2\""},
    {"ofAComponent", "<object dn='Node=1'><object dn='Alarm=2'/></object>",
     ":3: objects of this class are component FmComponent's, \"Node=1,Alarm=2\""},
    {"textInObject", "<object dn='Node=1'>hello</object>", ":3: text in element object, \"hello\""},
    {"classTwice", "<class name='Node'/>", ":3: class exists already, \"Node\""},
    {"badName", "<class name='9lives'/>", ":3: name: not letters, digits and \"_\", \"9lives\""},
    {"unknownParent", "<class name='Slot' parent='Shelf'/>", ":3: parent: unknown class, \"Shelf\""},
    {"unknownType", "<class name='A'><attribute name='a' type='int24'/></class>", ":3: unknown type, \"int24\""},
    {"attributeTwice", "<class name='A'><attribute name='a' type='bool'/>\n<attribute name='a' type='bool'/></class>",
     ":4: attribute exists already, \"a\""},
    {"wrongDefault", "<class name='A'><attribute name='a' type='bool' default='1'/></class>",
     ":3: not true or false for attribute a, \"1\""},
    {"wrongFlag", "<class name='A'><attribute name='a' type='bool' readOnly='yes'/></class>",
     ":3: readOnly: not true or false, \"yes\""},
    {"unknownFacet", "<class name='A'><attribute name='a' type='bool' readonly='true'/></class>",
     ":3: unknown attribute of element attribute, \"readonly\""},
    {"minAboveMax", "<class name='A'><attribute name='a' type='int8' min='5' max='4'/></class>",
     ":3: min is above max, attribute, \"a\""},
    {"rangeOfText", "<class name='A'><attribute name='a' type='string' max='4'/></class>",
     ":3: min and max are for numbers, type, \"string\""},
    {"typeTwice", "<enum name='Pair'><member name='a' value='1'/></enum>", ":3: type exists already, \"Pair\""},
    {"memberTwice", "<enum name='E'><member name='a' value='1'/>\n<member name='a' value='2'/></enum>",
     ":4: member exists already, \"a\""},
    {"valueTwice", "<enum name='E'><member name='a' value='1'/><member name='b' value='1'/></enum>",
     ":3: value is taken by another member, \"1\""},
    {"wrongMemberValue", "<enum name='E'><member name='a' value='x'/></enum>", ":3: value: not a 32-bit number, \"x\""},
    {"emptyEnum", "<enum name='E'/>", ":3: enumeration has no members, \"E\""},
};

INSTANTIATE_TEST_SUITE_P(ModelReader, ModelFailureTest, ::testing::ValuesIn(modelFailures),
                         [](const auto& failure) { return std::string(failure.param.name); });

TEST_F(ModelReaderTest, anotherDocumentElementIsRefused)
{
    const std::string path = directory.write("other.xml", "<Model/>");

    EXPECT_THROW(
        {
            try {
                readModel(path);
            } catch (const InputError& e) {
                EXPECT_EQ(path + ":1: not a ZorvModel element, \"Model\"", e.what());
                throw;
            }
        },
        InputError);
}

TEST_F(ModelReaderTest, controlCharactersAndLongValuesAreShownOnOneLine)
{
    EXPECT_EQ(":3: unknown class, \"" + std::string(200, 'x') + "...\"",
              failureOf(classes + "<object dn='" + std::string(300, 'x') + "=1'/>"));
}

}  // namespace ZorvInput

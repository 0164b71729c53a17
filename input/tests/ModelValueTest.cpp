#include "json/ModelValue.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"
#include "files/InputError.hpp"
#include "model/ModelReader.hpp"

namespace ZorvInput {

class ModelValueTest : public ::testing::Test {
protected:
    const AttributeDescription& attribute(const std::string& name) const
    {
        return *file.model->findClass("Node")->findAttribute(name);
    }

    /// The value read and written again, or what is wrong.
    std::string through(const std::string& name, const std::string& text) const
    {
        JsonDocumentT document;
        parseJson(text, 8, document);
        JsonWriter json;
        try {
            const MoValue value = fromJson(attribute(name), document);
            EXPECT_EQ(attribute(name).type, value.type);
            writeJson(json, attribute(name), value);
        } catch (const ValueError& e) {
            return e.what();
        }
        return json.take();
    }

    const ZorvTest::TemporaryDirectory directory;
    const ModelFile file = readModel(directory.write(
        "model.xml", "<ZorvModel><enum name='Severity'><member name='MAJOR' value='4'/></enum>"
                     "<struct name='Pair'><attribute name='name' type='string'/>"
                     "<attribute name='numbers' type='uint8' sequence='true'/></struct>"
                     "<class name='Node'><attribute name='number' type='int32' min='-5' max='100'/>"
                     "<attribute name='big' type='uint64'/><attribute name='on' type='bool'/>"
                     "<attribute name='level' type='Severity'/><attribute name='text' type='string'/>"
                     "<attribute name='texts' type='string' sequence='true'/>"
                     "<attribute name='pair' type='Pair'/><attribute name='pairs' type='Pair' sequence='true'/>"
                     "</class></ZorvModel>"));
};

TEST_F(ModelValueTest, valuesOfEachKindGoBothWays)
{
    EXPECT_EQ("-5", through("number", "-5"));
    EXPECT_EQ("18446744073709551615", through("big", "18446744073709551615"));
    EXPECT_EQ("true", through("on", "true"));
    EXPECT_EQ("\"MAJOR\"", through("level", "\"MAJOR\""));
    EXPECT_EQ("\"MAJOR\"", through("level", "4"));
    EXPECT_EQ("\"a \\\"b\\\"\"", through("text", "\"a \\\"b\\\"\""));
    EXPECT_EQ("[\"a\",\"\"]", through("texts", "[\"a\",\"\"]"));
    EXPECT_EQ("{\"name\":\"n\",\"numbers\":[1,255]}", through("pair", "{\"numbers\":[1,255],\"name\":\"n\"}"));
    EXPECT_EQ("[{\"name\":null,\"numbers\":[]},{\"name\":\"b\",\"numbers\":[]}]",
              through("pairs", "[{},{\"name\":\"b\"}]"));
}

TEST_F(ModelValueTest, noValueIsNullOrAnEmptySequence)
{
    EXPECT_EQ("null", through("number", "null"));
    EXPECT_EQ("null", through("pair", "null"));
    EXPECT_EQ("[]", through("texts", "null"));
    EXPECT_EQ("[]", through("texts", "[]"));
}

TEST_F(ModelValueTest, aMemberWithoutANameIsWrittenAsItsNumber)
{
    JsonWriter json;
    writeJson(json, attribute("level"), {YALT_MO_ATTRIBUTE_ENUM, {std::int32_t(9)}});

    EXPECT_EQ("9", json.take());
}

TEST_F(ModelValueTest, aSingleValueIsASequenceOfOne)
{
    EXPECT_EQ("[\"a\"]", through("texts", "\"a\""));
}

TEST_F(ModelValueTest, valuesOfAnotherKindAreRefused)
{
    EXPECT_EQ("a text, not a int32, for attribute number, \"7\"", through("number", "\"7\""));
    EXPECT_EQ("a text, not a bool, for attribute on, \"true\"", through("on", "\"true\""));
    EXPECT_EQ("not a text for attribute text, \"7\"", through("text", "7"));
    EXPECT_EQ("not a sequence, attribute text, \"[\"a\"]\"", through("text", "[\"a\"]"));
    EXPECT_EQ("not an object for attribute pair, \"7\"", through("pair", "7"));
    EXPECT_EQ("not an object for attribute pairs, \"7\"", through("pairs", "[7]"));
    EXPECT_EQ("other: unknown field", through("pair", "{\"other\":1}"));
    EXPECT_EQ("a text, not a uint8, for attribute numbers, \"x\"", through("pair", "{\"numbers\":[\"x\"]}"));
}

TEST_F(ModelValueTest, valuesOutOfRangeAreRefused)
{
    EXPECT_NE("101", through("number", "101"));
    EXPECT_NE("-1", through("big", "-1"));
    EXPECT_NE("0.5", through("number", "0.5"));
    EXPECT_NE("\"MINOR\"", through("level", "\"MINOR\""));
    EXPECT_NE("{\"name\":null,\"numbers\":[256]}", through("pair", "{\"numbers\":[256]}"));
}

}  // namespace ZorvInput

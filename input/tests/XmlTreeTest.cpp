#include "files/XmlTree.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"
#include "files/InputError.hpp"

namespace ZorvInput {

class XmlTreeTest : public ::testing::Test {
protected:
    std::string failureOf(const std::string& content) const
    {
        try {
            readXml(directory.write("a.xml", content));
        } catch (const InputError& e) {
            return std::string(e.what()).substr(directory.path("a.xml").size());
        }
        return "read";
    }

    static std::string nested(std::size_t depth)
    {
        std::string text;
        for (std::size_t level = 0; level < depth; ++level) {
            text = "<a>" + text + "</a>";
        }
        return text;
    }

    ZorvTest::TemporaryDirectory directory;
};

TEST_F(XmlTreeTest, elementsKnowTheirLinesTextsAndAttributes)
{
    const XmlElement root = readXml(directory.write("a.xml", "<a>\n <b x='1' y='2'>t&amp;u</b>\n</a>"));

    ASSERT_EQ(1U, root.children.size());
    const XmlElement& child = root.children.front();
    EXPECT_EQ(2U, child.line);
    EXPECT_EQ("t&u", child.text);
    EXPECT_EQ("2", *child.findAttribute("y"));
    EXPECT_EQ(nullptr, child.findAttribute("z"));
}

TEST_F(XmlTreeTest, documentTypeDeclarationsAreRefused)
{
    EXPECT_EQ(":1: document type declarations are refused, \"a\"",
              failureOf("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><a>&e;</a>"));
}

TEST_F(XmlTreeTest, nestingUpToTheBoundIsReadAndOneMoreRefused)
{
    EXPECT_EQ("read", failureOf(nested(64)));
    EXPECT_EQ(":1: elements nested deeper than 64, \"a\"", failureOf(nested(65)));
}

TEST_F(XmlTreeTest, veryDeepNestingIsRefusedToo)
{
    EXPECT_EQ(":1: elements nested deeper than 64, \"a\"", failureOf(nested(20000)));
}

}  // namespace ZorvInput

#include "ZorvConfiguration.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "TemporaryDirectory.hpp"
#include "ZorvException.hpp"

namespace Zorv {
namespace {

class ZorvConfigurationTest : public testing::Test {
protected:
    void write(const std::string& text) const { directory.write("configuration.xml", text); }

    /// The reason for a refused file, without the name; empty when it is accepted.
    std::string refusal(const std::string& text)
    {
        write(text);
        return refusalOf(fileName);
    }

    std::string refusalOf(const std::string& name)
    {
        try {
            configuration.load(name);
        } catch (const ZorvException& e) {
            const std::string reason = e.what();
            EXPECT_EQ(name + ":", reason.substr(0, name.size() + 1));
            return reason.substr(name.size() + 1);
        }
        return "";
    }

    void load(const std::string& text) { EXPECT_EQ("", refusal(text)); }

    size_t count(const std::string& name) const { return configuration.getElementsByTagName(name)->length(); }

    /// The value of a child of the first element so named.
    std::string value(const std::string& element, const std::string& child) const
    {
        const auto elements = configuration.getElementsByTagName(element);
        return ZorvConfiguration::getElementValue(static_cast<Poco::XML::Element&>(*elements->item(0)), child);
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string fileName = directory.path("configuration.xml");
    ZorvConfiguration configuration;
};

TEST_F(ZorvConfigurationTest, findsElementsAnywhereInDocumentOrder)
{
    load("<root><Fm><name>a</name></Fm><x><y><Fm><name>b</name></Fm></y></x></root>");

    const auto elements = configuration.getElementsByTagName("Fm");
    ASSERT_EQ(2U, elements->length());
    EXPECT_EQ("a", ZorvConfiguration::getElementValue(static_cast<Poco::XML::Element&>(*elements->item(0)), "name"));
    EXPECT_EQ("b", ZorvConfiguration::getElementValue(static_cast<Poco::XML::Element&>(*elements->item(1)), "name"));
}

TEST_F(ZorvConfigurationTest, theRootElementCanBeFound)
{
    load("<Fm><name>a</name></Fm>");

    EXPECT_EQ("a", value("Fm", "name"));
}

TEST_F(ZorvConfigurationTest, hasNoElementsBeforeLoad)
{
    EXPECT_EQ(0U, count("Fm"));
}

TEST_F(ZorvConfigurationTest, theFirstMatchingChildWins)
{
    load("<Fm><a>1</a><b>2</b><a>3</a></Fm>");

    EXPECT_EQ("1", value("Fm", "a"));
    EXPECT_EQ("2", value("Fm", "b"));
}

TEST_F(ZorvConfigurationTest, onlyChildrenCountNotTheirDescendants)
{
    load("<Fm><x><a>deep</a></x><a>child</a></Fm>");

    EXPECT_EQ("child", value("Fm", "a"));
}

TEST_F(ZorvConfigurationTest, aMissingOrEmptyChildIsAnEmptyText)
{
    load("<Fm><a/><b></b></Fm>");

    EXPECT_EQ("", value("Fm", "a"));
    EXPECT_EQ("", value("Fm", "b"));
    EXPECT_EQ("", value("Fm", "c"));
}

TEST_F(ZorvConfigurationTest, textIsNotTrimmed)
{
    load("<Fm><a> 5 </a><b>\n\t</b></Fm>");

    EXPECT_EQ(" 5 ", value("Fm", "a"));
    EXPECT_EQ("\n\t", value("Fm", "b"));
}

TEST_F(ZorvConfigurationTest, textMayComeInPieces)
{
    load("<Fm><a>1<!-- two -->3<![CDATA[<4>]]>&amp;&#53;</a></Fm>");

    EXPECT_EQ("13<4>&5", value("Fm", "a"));
}

TEST_F(ZorvConfigurationTest, namesAreCaseSensitive)
{
    load("<Fm><Name>a</Name></Fm>");

    EXPECT_EQ("", value("Fm", "name"));
    EXPECT_EQ(0U, count("FM"));
}

TEST_F(ZorvConfigurationTest, aSecondLoadReplacesTheFirst)
{
    load("<a/>");
    load("<b/>");

    EXPECT_EQ(0U, count("a"));
    EXPECT_EQ(1U, count("b"));
}

TEST_F(ZorvConfigurationTest, aFailedLoadKeepsWhatWasLoaded)
{
    load("<a/>");
    EXPECT_NE("", refusal("<b>"));

    EXPECT_EQ(1U, count("a"));
}

// --- Files that are not accepted

TEST_F(ZorvConfigurationTest, missingFile)
{
    EXPECT_EQ(" File not found: " + fileName, refusalOf(fileName));
}

TEST_F(ZorvConfigurationTest, directory)
{
    EXPECT_EQ(" Cannot open file: not a file: /tmp", refusalOf("/tmp"));
}

TEST_F(ZorvConfigurationTest, emptyFile)
{
    EXPECT_EQ("1: No element found in line 1 column 0", refusal(""));
}

TEST_F(ZorvConfigurationTest, malformedFilesAreRefusedWithTheLine)
{
    EXPECT_EQ("3: Tag mismatch in line 3 column 2", refusal("<a>\n<b>\n</a>"));
    EXPECT_EQ("2: No element found in line 2 column 4", refusal("<a>\n<b/>"));
    EXPECT_EQ("1: Syntax error in line 1 column 0", refusal("this is no XML"));
    EXPECT_EQ("1: Invalid token in line 1 column 3", refusal("<a>\x01</a>"));
    EXPECT_EQ("2: Junk after document element in line 2 column 0", refusal("<a/>\n<b/>"));
    EXPECT_EQ("1: Undefined entity in line 1 column 3", refusal("<a>&nothing;</a>"));
}

TEST_F(ZorvConfigurationTest, nestingIsBounded)
{
    const auto nested = [](size_t depth) {
        std::string text;
        for (size_t i = 0; i < depth; ++i) {
            text += "<a>";
        }
        for (size_t i = 0; i < depth; ++i) {
            text += "</a>";
        }
        return text;
    };

    EXPECT_EQ("", refusal(nested(100)));
    EXPECT_EQ("1: elements are nested too deep", refusal(nested(101)));
    EXPECT_EQ("1: elements are nested too deep", refusal(nested(1000000)));
}

TEST_F(ZorvConfigurationTest, documentTypesAreRefused)
{
    EXPECT_EQ("2: a document type declaration is not accepted", refusal("<?xml version='1.0'?>\n<!DOCTYPE a><a/>"));
    EXPECT_EQ("1: a document type declaration is not accepted",
              refusal("<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/hostname'>]><a>&x;</a>"));
}

TEST_F(ZorvConfigurationTest, entityBombsAreRefusedFast)
{
    std::string bomb = "<!DOCTYPE a [<!ENTITY x0 'xxxxxxxxxx'>";
    for (int i = 1; i < 30; ++i) {
        bomb += "<!ENTITY x" + std::to_string(i) + " '";
        for (int repeat = 0; repeat < 10; ++repeat) {
            bomb += "&x" + std::to_string(i - 1) + ";";
        }
        bomb += "'>";
    }
    bomb += "]><a>&x29;</a>";

    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ("1: a document type declaration is not accepted", refusal(bomb));
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(10));
}

}  // namespace
}  // namespace Zorv

#include <Poco/File.h>
#include <gtest/gtest.h>

#include "NodeFiles.hpp"

namespace ZorvTest {

class ZorvdBadInputTest : public ::testing::Test {
protected:
    /// zorvd says this one line, after the file's name, exits with 2 and has started nothing.
    void expectRefused(const std::string& file, const std::string& message)
    {
        const ProcessResult result = files.runNode();
        EXPECT_EQ("zorvd: " + files.path(file) + message + "\n", result.err);
        EXPECT_EQ("", result.out);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_FALSE(Poco::File(files.path("run")).exists());
    }

    static std::string nested(int depth)
    {
        std::string text = "<ZorvModel/>";
        for (int level = 0; level < depth; ++level) {
            text = "<a>" + text + "</a>";
        }
        return text;
    }

    void remove(const std::string& file) const { Poco::File(files.path(file)).remove(); }
    void write(const std::string& file, const std::string& content) const { files.directory.write(file, content); }

    NodeFiles files;
};

// --- configuration

TEST_F(ZorvdBadInputTest, missingConfiguration)
{
    remove("node.xml");
    expectRefused("node.xml", ": cannot be read: No such file or directory");
}

TEST_F(ZorvdBadInputTest, emptyConfiguration)
{
    write("node.xml", "");
    expectRefused("node.xml", ":1: not well-formed XML: No element found");
}

TEST_F(ZorvdBadInputTest, truncatedConfiguration)
{
    write("node.xml", "<ZorvNode>\n<library>a.so</lib");
    expectRefused("node.xml", ":2: not well-formed XML: Unclosed token");
}

TEST_F(ZorvdBadInputTest, configurationThatIsNotXml)
{
    write("node.xml", "library = a.so\n");
    expectRefused("node.xml", ":1: not well-formed XML: Syntax error");
}

TEST_F(ZorvdBadInputTest, configurationNestedTooDeeply)
{
    write("node.xml", nested(64));
    expectRefused("node.xml", ":1: elements nested deeper than 64, \"ZorvModel\"");
}

TEST_F(ZorvdBadInputTest, wrongValueInTheConfiguration)
{
    write("node.xml", "<ZorvNode>\n<library>a.so</library>\n<model>model.xml</model>\n"
                      "<eventRouter><queueBound>0</queueBound></eventRouter>\n</ZorvNode>");
    expectRefused("node.xml", ":4: eventRouter/queueBound: not a number from 1 to 10000000, \"0\"");
}

TEST_F(ZorvdBadInputTest, directoryAsConfiguration)
{
    remove("node.xml");
    Poco::File(files.path("node.xml")).createDirectory();
    expectRefused("node.xml", ": cannot be read: Is a directory");
}

// --- model

TEST_F(ZorvdBadInputTest, missingModel)
{
    remove("model.xml");
    expectRefused("model.xml", ": cannot be read: No such file or directory");
}

TEST_F(ZorvdBadInputTest, emptyModel)
{
    write("model.xml", "");
    expectRefused("model.xml", ":1: not well-formed XML: No element found");
}

TEST_F(ZorvdBadInputTest, truncatedModel)
{
    write("model.xml", "<ZorvModel>\n<class name=\"Node\"/>\n");
    expectRefused("model.xml", ":3: not well-formed XML: No element found");
}

TEST_F(ZorvdBadInputTest, modelWithAnEntityFromOutside)
{
    write("model.xml", "<!DOCTYPE ZorvModel SYSTEM \"file:///etc/passwd\">\n<ZorvModel/>");
    expectRefused("model.xml", ":1: document type declarations are refused, \"ZorvModel\"");
}

TEST_F(ZorvdBadInputTest, modelNestedTooDeeply)
{
    write("model.xml", nested(100));
    expectRefused("model.xml", ":1: elements nested deeper than 64, \"a\"");
}

TEST_F(ZorvdBadInputTest, wrongValueInTheModel)
{
    write("model.xml", "<ZorvModel>\n<class name=\"Node\"/>\n<object dn=\"Nodes=1\"/>\n</ZorvModel>");
    expectRefused("model.xml", ":3: unknown class, \"Nodes\"");
}

// --- command line

TEST_F(ZorvdBadInputTest, missingOption)
{
    const ProcessResult result = runProcess({ZORVD});

    EXPECT_EQ("zorvd: --config is required; see zorvd --help\n", result.err);
    EXPECT_EQ(2, result.exitCode);
}

TEST_F(ZorvdBadInputTest, unknownOption)
{
    const ProcessResult result = runProcess(files.command({"--fast"}));

    EXPECT_EQ("zorvd: The following argument was not expected: --fast; see zorvd --help\n", result.err);
    EXPECT_EQ(2, result.exitCode);
}

TEST_F(ZorvdBadInputTest, socketPathThatNoSocketCanHave)
{
    const std::string path = "/" + std::string(107, 'x');
    write("node.xml", "<ZorvNode>\n<library>a.so</library>\n<model>model.xml</model>\n<api><socket>" + path +
                          "</socket></api>\n</ZorvNode>");
    expectRefused("node.xml", ":4: api/socket: longer than 107 bytes, \"" + path + "\"");
}

// --- what is not input

TEST_F(ZorvdBadInputTest, libraryThatCannotBeLoadedIsAFailure)
{
    files.writeConfiguration(std::string(BAD_LIBRARIES) + "/InitFails.so");

    const ProcessResult result = files.runNode();

    EXPECT_EQ("zorvd: library " + std::string(BAD_LIBRARIES) + "/InitFails.so: zorvLCMinit returned -7\n", result.err);
    EXPECT_EQ(1, result.exitCode);
}

TEST_F(ZorvdBadInputTest, componentThatDoesNotStartIsAFailure)
{
    files.writeConfiguration(std::string(BAD_LIBRARIES) + "/StartThrows.so");

    const ProcessResult result = files.runNode();

    EXPECT_EQ("zorvd: component BadComponent: start threw: no thread\n", result.err);
    EXPECT_EQ(1, result.exitCode);
}

}  // namespace ZorvTest

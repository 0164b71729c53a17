#include "ExpectedText.hpp"

#include <Poco/File.h>
#include <Poco/Path.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace ZorvTest {

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string expectedPath(const std::string& name)
{
    return std::string(EXPECTED) + "/" + name;
}

void expectText(const std::string& name, const std::string& actual)
{
    const std::string expected = readFile(expectedPath(name));
    if (actual == expected) {
        return;
    }
    const std::string left = std::string(ACTUAL) + "/" + name;
    Poco::File(Poco::Path(left).parent()).createDirectories();
    std::ofstream(left, std::ios::binary) << actual;
    std::istringstream actualLines(actual);
    std::istringstream expectedLines(expected);
    std::string actualLine;
    std::string expectedLine;
    int number = 0;
    do {
        ++number;
        actualLine = std::getline(actualLines, actualLine) ? actualLine : "(no more lines)";
        expectedLine = std::getline(expectedLines, expectedLine) ? expectedLine : "(no more lines)";
    } while (actualLine == expectedLine && actualLines && expectedLines);
    EXPECT_EQ(expectedLine, actualLine) << name << ", line " << number << "; all of it is in " << left;
}

}  // namespace ZorvTest

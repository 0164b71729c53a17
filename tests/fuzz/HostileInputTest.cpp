/// What hostile input costs: at most 10 MB, however deep, bombed or long-winded it is, and with all that readers keep of it
/// until they have refused it.
#include <gmock/gmock.h>
#include <regex.h>

#include <algorithm>

#include "InputFile.hpp"
#include "MemoryMeter.hpp"
#include "RegularExpression.hpp"
#include "ZorvConfiguration.hpp"
#include "ZorvException.hpp"
#include "files/InputError.hpp"
#include "files/XmlTree.hpp"

namespace ZorvFuzz {
namespace {

using testing::HasSubstr;

/// In bytes; the larger one where the parser's one large block counts twice when it grows.
const std::size_t mostMemory = MemoryMeter::doBlocksGrowInPlace() ? 10000000 : 20000000;

std::string repeated(const std::string& text, std::size_t times)
{
    std::string result;
    for (; times > 0; --times) {
        result += text;
    }
    return result;
}

std::string deepDocument()
{
    constexpr std::size_t levels = 300000;
    return repeated("<a>", levels) + repeated("</a>", levels);
}

/// Each entity is ten times the one before.
std::string entityBomb()
{
    std::string text = "<!DOCTYPE a [<!ENTITY x0 'xxxxxxxxxx'>";
    for (int level = 1; level < 30; ++level) {
        text +=
            "<!ENTITY x" + std::to_string(level) + " '" + repeated("&x" + std::to_string(level - 1) + ";", 10) + "'>";
    }
    return text + "]><a b='&x29;'>&x29;</a>";
}

/// One long entity, many times.
std::string longEntity()
{
    return "<!DOCTYPE a [<!ENTITY x '" + std::string(100000, 'x') + "'>]><a>" + repeated("&x;", 10000) + "</a>";
}

std::string refusalOfConfiguration(const std::string& path)
{
    try {
        Zorv::ZorvConfiguration().load(path);
    } catch (const Zorv::ZorvException& e) {
        return e.what();
    }
    return "none";
}

std::string refusalOfTree(const std::string& path)
{
    try {
        ZorvInput::readXml(path);
    } catch (const ZorvInput::InputError& e) {
        return e.what();
    }
    return "none";
}

/// The refusal, as long as it came cheap.
template <class ReaderT>
std::string cheapRefusal(ReaderT reader, const std::string& document)
{
    const InputFile file;
    const std::string path = file.write(document);
    const MemoryMeter meter;
    std::string refusal = reader(path);
    EXPECT_LT(meter.getPeak(), mostMemory);
    return refusal;
}

TEST(HostileInputTest, theMeterCountsWhatIsAllocatedAndReleased)
{
    const MemoryMeter meter;
    for (const std::size_t size : {3000000U, 5000000U, 2000000U}) {
        const std::string text(size, 'x');
        EXPECT_EQ('x', text.back());
    }

    EXPECT_GE(meter.getPeak(), 5000000U);
    EXPECT_LT(meter.getPeak(), 6000000U);
}

TEST(HostileInputTest, deepXml)
{
    EXPECT_THAT(cheapRefusal(refusalOfConfiguration, deepDocument()), HasSubstr("nested too deep"));
    EXPECT_THAT(cheapRefusal(refusalOfTree, deepDocument()), HasSubstr("elements nested deeper than 64"));
}

TEST(HostileInputTest, bombedXml)
{
    for (const std::string& document : {entityBomb(), longEntity()}) {
        EXPECT_THAT(cheapRefusal(refusalOfConfiguration, document), HasSubstr("document type declaration"));
        EXPECT_THAT(cheapRefusal(refusalOfTree, document), HasSubstr("document type declarations are refused"));
    }
}

constexpr const char* pieces[] = {
    "a",      "(",  "(a",    "[",         "a|",          "|",     "[a-z]",         "a*",
    ".*|",    "^",  "(a?)*", "\\",        "a{1,9}",      "(a)",   "[[:alpha:]]",   "(()|a?)",
    "(a|b)*", "a?", "[^b]?", "a{1,1000}", "(a{30}){30}", ".{12}", "((a{9}){9}){9}"};

/// As many repetitions of a piece as fit into so many characters, with its parentheses closed.
std::string longPattern(const std::string& piece, std::size_t length)
{
    const std::string pattern = repeated(piece, std::max<std::size_t>(1, length / piece.size()));
    const auto open = std::count(pattern.begin(), pattern.end(), '(') - std::count(pattern.begin(), pattern.end(), ')');
    return pattern + std::string(static_cast<std::size_t>(open), ')');
}

/// @return whether the pattern is valid
bool costsLittle(const std::string& pattern)
{
    static const std::string dn(1000, 'a');
    const MemoryMeter meter;
    const Zorv::RegularExpression expression(pattern, REG_EXTENDED | REG_NOSUB);
    expression.match(dn);
    EXPECT_LT(meter.getPeak(), mostMemory) << pattern.substr(0, 20);
    return expression.isExpressionValid();
}

TEST(HostileInputTest, patternsAsLongAsARequest)
{
    for (const char* piece : pieces) {
        EXPECT_FALSE(costsLittle(longPattern(piece, 1000000))) << piece;
    }
}

TEST(HostileInputTest, patternsOfAllLengthsThatAreTaken)
{
    std::size_t taken = 0;
    for (const char* piece : pieces) {
        for (std::size_t length = 1; length < 4000; length += length / 4 + 1) {
            taken += costsLittle(longPattern(piece, length)) ? 1U : 0U;
        }
    }
    EXPECT_GT(taken, 300U);
}

}  // namespace
}  // namespace ZorvFuzz

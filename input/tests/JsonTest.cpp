#include "json/Json.hpp"

#include <gmock/gmock.h>

#include "files/InputError.hpp"

namespace ZorvInput {

namespace {

constexpr unsigned deepest = 3;

/// The value written anew, or what is wrong.
std::string parsed(const std::string& text)
{
    JsonDocumentT document;
    try {
        parseJson(text, deepest, document);
    } catch (const ValueError& e) {
        return std::string("!") + e.what();
    }
    return jsonText(document);
}

}  // namespace

TEST(JsonTest, oneValueOfAnyKindIsTaken)
{
    for (const char* text : {"{\"a\":[1,-2,0.5,true,false,null,\"x\"]}", "[]", "7", "true", "null"}) {
        EXPECT_EQ(text, parsed(text));
    }
    EXPECT_EQ("plain", parsed(" \"plain\" "));
}

TEST(JsonTest, levelsAreBounded)
{
    EXPECT_EQ("[{\"a\":[]}]", parsed("[{\"a\":[]}]"));
    EXPECT_EQ("!JSON deeper than 3 levels", parsed("[{\"a\":[[]]}]"));
    EXPECT_EQ("!JSON deeper than 3 levels", parsed(std::string(1000000, '[')));
}

TEST(JsonTest, bracketsInTextsAndLevelsSideBySideDoNotCount)
{
    EXPECT_EQ("[\"[[[[{{{{\\\"[[[[\"]", parsed("[\"[[[[{{{{\\\"[[[[\"]"));
    EXPECT_EQ("[[],[],[],[],[[]]]", parsed("[[],[],[],[],[[]]]"));
}

TEST(JsonTest, whatIsNoJsonIsToldWithItsPlace)
{
    EXPECT_EQ("!not JSON: at byte 0: The document is empty", parsed(""));
    EXPECT_EQ("!not JSON: at byte 1: Missing a name for object member", parsed("{1}"));
    EXPECT_EQ("!not JSON: at byte 3: The document root must not be followed by other values", parsed("{} {}"));
    EXPECT_EQ("!not JSON: at byte 3: Missing a comma or ']' after an array element", parsed("[1 2]"));
}

TEST(JsonTest, noNumberIsInfinite)
{
    EXPECT_EQ("[1e308,-1e308]", parsed("[1e308,-1e308]"));
    EXPECT_EQ("!not JSON: a number is too large", parsed("2e308"));
    EXPECT_EQ("!not JSON: a number is too large", parsed("{\"a\":[1,-2e308]}"));
    EXPECT_EQ("!not JSON: at byte 0: Number too big to be stored in double", parsed("1e400"));
}

TEST(JsonTest, aNullByteEndsNothing)
{
    EXPECT_EQ("!not JSON: at byte 2: Invalid value", parsed(std::string("{}\0{}", 5)));
    EXPECT_EQ("!not JSON: at byte 2: Invalid value", parsed(std::string("[\"\0\"]", 5)));
}

TEST(JsonTest, onlyValidUtf8IsTaken)
{
    EXPECT_EQ("Z\xC3\xBCrich \xE2\x82\xAC \xF0\x9F\x98\x80", parsed("\"Z\xC3\xBCrich \xE2\x82\xAC \\ud83d\\ude00\""));
    for (const std::string bytes : {"\xFF", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\\ud83d", "\\ud83dx", "\\udc00",
                                    "\\uDFFF", "\\ud83d\\ude00\\ude00"}) {
        EXPECT_EQ('!', parsed("\"" + bytes + "\"")[0]) << bytes;
    }
}

}  // namespace ZorvInput

#include "json/JsonWriter.hpp"

#include <gmock/gmock.h>

#include "json/Utf8.hpp"

namespace ZorvInput {

TEST(JsonWriterTest, valuesOfEachKindAreWritten)
{
    JsonWriter json;
    json.beginObject()
        .member("text", std::string("a\"\\\n\tb"))
        .member("literal", "c")
        .member("nothing", static_cast<const char*>(nullptr))
        .member("u64", UINT64_MAX)
        .member("u32", UINT32_MAX)
        .member("i64", INT64_MIN)
        .member("i32", INT32_MIN)
        .member("flag", true);
    json.key("null").null().key("raw").raw("{\"x\":[1]}").key("list").beginArray().value(1).value(false).endArray();

    EXPECT_EQ("{\"text\":\"a\\\"\\\\\\n\\tb\",\"literal\":\"c\",\"nothing\":\"\",\"u64\":18446744073709551615,"
              "\"u32\":4294967295,\"i64\":-9223372036854775808,\"i32\":-2147483648,\"flag\":true,\"null\":null,"
              "\"raw\":{\"x\":[1]},\"list\":[1,false]}",
              json.endObject().take());
}

TEST(JsonWriterTest, itBeginsAnewWhenItsTextWasTaken)
{
    JsonWriter json;

    EXPECT_EQ("[1]", json.beginArray().value(1).endArray().take());
    EXPECT_EQ("{\"a\":2}", json.beginObject().member("a", 2).endObject().take());
}

TEST(JsonWriterTest, textsAndNamesOfAnyBytesAreMended)
{
    JsonWriter json;
    json.beginObject().member("na\xFFme", std::string("va\xC3lue")).endObject();

    EXPECT_EQ("{\"na\xEF\xBF\xBDme\":\"va\xEF\xBF\xBDlue\"}", json.take());
}

TEST(JsonWriterTest, nullBytesStayInTheText)
{
    EXPECT_EQ("[\"a\\u0000b\"]", JsonWriter().beginArray().value(std::string("a\0b", 3)).endArray().take());
}

TEST(Utf8Test, onlyWhatIsNoCharacterIsReplaced)
{
    const std::string replaced = "\xEF\xBF\xBD";

    EXPECT_EQ("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z", toUtf8("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z"));
    EXPECT_EQ("a" + replaced, toUtf8("a\xC3"));  // cut off
    EXPECT_EQ(replaced + "a", toUtf8("\xBC"
                                     "a"));                                            // goes on from nothing
    EXPECT_EQ(replaced + replaced, toUtf8("\xC0\xAF"));                                // longer than need be
    EXPECT_EQ(replaced + replaced + replaced, toUtf8("\xED\xA0\x80"));                 // half of a pair
    EXPECT_EQ(replaced + replaced + replaced + replaced, toUtf8("\xF4\x90\x80\x80"));  // beyond the last one
    EXPECT_EQ("", toUtf8(""));
}

TEST(Utf8Test, itIsKnownWhetherATextIsValid)
{
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("a\xC3\xBC"));
    EXPECT_FALSE(isUtf8("a\xC3"));
    EXPECT_FALSE(isUtf8("\xFF"
                        "a"));
}

}  // namespace ZorvInput

#include "json/JsonFields.hpp"

#include <gmock/gmock.h>

namespace ZorvInput {

class JsonFieldsTest : public ::testing::Test {
protected:
    JsonFields of(const std::string& text)
    {
        parseJson(text, 8, document);
        return JsonFields(document);
    }

    template <class OperationT>
    static std::string failureOf(const OperationT& operation)
    {
        try {
            operation();
        } catch (const FieldError& e) {
            EXPECT_EQ(e.getField() + ": " + e.getReason(), e.what());
            return e.what();
        }
        return "";
    }

    JsonDocumentT document;
};

TEST_F(JsonFieldsTest, fieldsOfEachKindAreRead)
{
    JsonFields it = of(R"({"text":"a b","flag":true,"number":-5,"fraction":0.5,"inner":{"x":1}})");

    EXPECT_EQ("a b", it.text("text"));
    EXPECT_EQ("else", it.text("other", "else"));
    EXPECT_TRUE(it.boolean("flag"));
    EXPECT_EQ(-5, it.integer("number", -5, 5));
    EXPECT_EQ(0.5, it.number("fraction", 0, 0.5));
    EXPECT_EQ(1, it.fields("inner").integer("x", 1, 1));
    EXPECT_EQ("", failureOf([&] { it.expectNoOther(); }));
}

TEST_F(JsonFieldsTest, aFieldThatIsWrongIsToldWithItsValue)
{
    JsonFields it = of(R"({"text":5,"flag":"yes","number":6,"huge":9223372036854775808,"fraction":0.7,"inner":[1]})");

    EXPECT_EQ("none: missing", failureOf([&] { it.get("none"); }));
    EXPECT_EQ("text: not a text, \"5\"", failureOf([&] { it.text("text"); }));
    EXPECT_EQ("text: not a text, \"5\"", failureOf([&] { it.text("text", "else"); }));
    EXPECT_EQ("flag: not true or false, \"yes\"", failureOf([&] { it.boolean("flag"); }));
    EXPECT_EQ("number: not a number from -5 to 5, \"6\"", failureOf([&] { it.integer("number", -5, 5); }));
    EXPECT_EQ("huge: not a number from 0 to 5, \"9223372036854775808\"", failureOf([&] { it.integer("huge", 0, 5); }));
    EXPECT_EQ("fraction: not a number from 0 to 5, \"0.7\"", failureOf([&] { it.integer("fraction", 0, 5); }));
    EXPECT_EQ("fraction: not a number from 0 to 0.5, \"0.7\"", failureOf([&] { it.number("fraction", 0, 0.5); }));
    EXPECT_EQ("flag: not a number from 0 to 1, \"yes\"", failureOf([&] { it.number("flag", 0, 1); }));
    EXPECT_EQ("inner: not an object, \"[1]\"", failureOf([&] { it.fields("inner"); }));
}

TEST_F(JsonFieldsTest, aTextWithANullByteIsNoText)
{
    JsonFields it = of(R"({"text":"a\u0000b"})");

    EXPECT_EQ("text: contains U+0000, which ends a text", failureOf([&] { it.text("text"); }));
}

TEST_F(JsonFieldsTest, innerFieldsAreToldWithTheirPath)
{
    JsonFields it = of(R"({"raise":{"info":{"a":1}}})");
    JsonFields raise = it.fields("raise");
    JsonFields info = raise.fields("info");

    EXPECT_EQ("raise.dn: missing", failureOf([&] { raise.text("dn"); }));
    EXPECT_EQ("raise.info.a: not a text, \"1\"", failureOf([&] { info.text("a"); }));
    EXPECT_EQ("raise.info.a", info.pathOf("a"));
}

TEST_F(JsonFieldsTest, aFieldThatNobodyAskedForIsUnknown)
{
    JsonFields it = of(R"({"a":1,"inner":{"b":2,"c":3}})");
    JsonFields inner = it.fields("inner");

    EXPECT_EQ("a: unknown field", failureOf([&] { it.expectNoOther(); }));
    inner.get("c");
    EXPECT_EQ("inner.b: unknown field", failureOf([&] { inner.expectNoOther(); }));
    it.get("a");
    EXPECT_EQ("", failureOf([&] { it.expectNoOther(); }));
}

TEST_F(JsonFieldsTest, aFieldThatNobodyAskedForIsToldInOneLine)
{
    JsonFields it = of(R"({"inner":{"a\n\u007fb":1}})");

    EXPECT_EQ("inner.a\\n\\x7Fb: unknown field", failureOf([&] { it.fields("inner").expectNoOther(); }));
}

TEST_F(JsonFieldsTest, aFieldThatStandsTwiceIsUnknownTheSecondTime)
{
    JsonFields it = of(R"({"a":1,"b":2,"a":3})");

    EXPECT_EQ(1, it.integer("a", 0, 9));
    it.get("b");
    EXPECT_EQ("a: unknown field", failureOf([&] { it.expectNoOther(); }));
}

TEST_F(JsonFieldsTest, whatStandsBehindAnyNumberOfKnownFieldsIsUnknown)
{
    std::string text = "{";
    for (int number = 0; number < 64; ++number) {
        text += "\"f" + std::to_string(number) + "\":0,";
    }
    JsonFields it = of(text + "\"last\":0}");
    for (int number = 0; number < 64; ++number) {
        it.get(("f" + std::to_string(number)).c_str());
    }

    EXPECT_EQ("last: unknown field", failureOf([&] { it.expectNoOther(); }));
    it.get("last");
    EXPECT_EQ("last: unknown field", failureOf([&] { it.expectNoOther(); }));
}

}  // namespace ZorvInput

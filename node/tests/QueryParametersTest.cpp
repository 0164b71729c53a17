#include "api/QueryParameters.hpp"

#include <gmock/gmock.h>

namespace ZorvNode {

class QueryParametersTest : public ::testing::Test {
protected:
    explicit QueryParametersTest()
    {
        request.query = {{"name", "a b"}, {"empty", ""}, {"number", "7"}, {"on", "true"}, {"off", "false"}};
    }

    template <class OperationT>
    static std::string failureOf(const OperationT& operation)
    {
        try {
            operation();
        } catch (const HttpError& e) {
            return std::to_string(e.status) + " " + e.field + ": " + e.what();
        }
        return "";
    }

    HttpRequest request;
};

TEST_F(QueryParametersTest, parametersAreReadByKind)
{
    QueryParameters it(request);

    EXPECT_EQ("a b", it.text("name"));
    EXPECT_EQ("", it.text("empty"));
    EXPECT_EQ(7U, it.number("number", 7, 7));
    EXPECT_TRUE(it.flag("on", false));
    EXPECT_FALSE(it.flag("off", true));
    EXPECT_EQ("", failureOf([&] { it.expectNoOther(); }));
}

TEST_F(QueryParametersTest, whatIsNotThereIsNone)
{
    QueryParameters it(request);

    EXPECT_EQ(std::nullopt, it.text("other"));
    EXPECT_EQ(std::nullopt, it.number("other", 1, 2));
    EXPECT_TRUE(it.flag("other", true));
    EXPECT_FALSE(it.flag("other", false));
}

TEST_F(QueryParametersTest, wrongValuesAreRefused)
{
    for (const char* value : {"", "6", "9", "-7", "+7", " 7", "7x", "0x7", "7,0", "18446744073709551623"}) {
        request.query["number"] = value;
        EXPECT_EQ("400 number: not a number from 7 to 8",
                  failureOf([&] { QueryParameters(request).number("number", 7, 8); }))
            << value;
    }
    for (const char* value : {"", "1", "TRUE", "yes"}) {
        request.query["on"] = value;
        EXPECT_EQ("400 on: not true or false", failureOf([&] { QueryParameters(request).flag("on", true); })) << value;
    }
}

TEST_F(QueryParametersTest, aParameterThatNobodyAskedForIsRefused)
{
    QueryParameters it(request);
    for (const char* name : {"name", "empty", "number", "on"}) {
        it.text(name);
    }

    EXPECT_EQ("400 off: no such parameter", failureOf([&] { it.expectNoOther(); }));
}

}  // namespace ZorvNode

#include "CommandTest.hpp"

namespace ZorvCtl {

using ::testing::ElementsAre;

class ObjectCommandsTest : public CommandTest {
protected:
    /// What an attribute assignment becomes in the request, for an object as it is now.
    std::string assigned(const std::string& value)
    {
        const std::string before = node.requests().empty() ? "" : node.requests().back();
        run({"object", "set", "N=1", value});
        const std::string request = node.requests().back();
        const std::string start = R"(POST /v1/objects {"changes":[{"set":{"dn":"N=1","attributes":)";
        EXPECT_EQ(start, request.substr(0, start.size()));
        return request.substr(start.size(), request.size() - start.size() - 4);
    }
};

TEST_F(ObjectCommandsTest, anObjectIsShownWithItsAttributes)
{
    node.answer("GET /v1/objects?dn=N%3D1&depth=1",
                R"({"objects":[{"dn":"N=1","class":"N","attributes":{"name":"r\n7","size":3,"on":true,"none":null,)"
                R"("pairs":[{"a":1}]}},{"dn":"N=1,M=2","class":"M","attributes":{}}]})");

    EXPECT_EQ((Outcome{0,
                       "N=1\n"
                       "  name = r\\n7\n"
                       "  size = 3\n"
                       "  on = true\n"
                       "  none = -\n"
                       "  pairs = [{\"a\":1}]\n"
                       "N=1,M=2\n",
                       ""}),
              run({"object", "get", "N=1", "--depth", "1"}));
}

TEST_F(ObjectCommandsTest, asJsonTheAnswerIsPrinted)
{
    node.answer("GET /v1/objects?dn=N%3D1&depth=0", R"({"objects":[]})");

    EXPECT_EQ((Outcome{0, "{\n  \"objects\": []\n}\n", ""}), run({"object", "get", "N=1", "--json"}));
}

TEST_F(ObjectCommandsTest, theTreeStandsBelowItsRootsInWhateverOrderItComes)
{
    node.answer("GET /v1/objects?depth=64&attributes=false",
                R"({"objects":[{"dn":"A=1"},{"dn":"B=1"},{"dn":"A=1,C=1"},{"dn":"A=1,C=2"},{"dn":"A=1,C=1,D=1"}]})");

    EXPECT_EQ((Outcome{0, "A=1\n  C=1\n    D=1\n  C=2\nB=1\n", ""}), run({"object", "tree"}));
}

TEST_F(ObjectCommandsTest, aTreeMayBeginAnywhere)
{
    node.answer("GET /v1/objects?dn=A%3D1%2CC%3D1&depth=1&attributes=false",
                R"({"objects":[{"dn":"A=1,C=1"},{"dn":"A=1,C=1,D=1"}]})");

    EXPECT_EQ((Outcome{0, "A=1,C=1\n  D=1\n", ""}), run({"object", "tree", "A=1,C=1", "--depth", "1"}));
}

TEST_F(ObjectCommandsTest, anAttributeIsSetAsWhatItIs)
{
    node.answer("GET /v1/objects?dn=N%3D1&depth=0",
                R"({"objects":[{"dn":"N=1","attributes":{"text":"x","number":1,"list":[],"none":null}}]})");
    node.answer("POST /v1/objects", R"({"changed":1})");

    EXPECT_EQ(R"({"text":"7"})", assigned("text=7"));
    EXPECT_EQ(R"({"text":"true"})", assigned("text=true"));
    EXPECT_EQ(R"({"text":null})", assigned("text=null"));
    EXPECT_EQ(R"({"text":""})", assigned("text="));
    EXPECT_EQ(R"({"text":"null"})", assigned("text=\"null\""));
    EXPECT_EQ(R"({"number":7})", assigned("number=7"));
    EXPECT_EQ(R"({"none":-1.5})", assigned("none=-1.5"));
    EXPECT_EQ(R"({"none":"router-8"})", assigned("none=router-8"));
    EXPECT_EQ(R"({"none":"7"})", assigned("none=\"7\""));
    EXPECT_EQ(R"({"list":["a", {"b": 1}]})", assigned(R"(list=["a", {"b": 1}])"));
    EXPECT_EQ(R"({"other":"a=b"})", assigned("other=a=b"));
}

TEST_F(ObjectCommandsTest, severalAttributesAreOneChange)
{
    node.answer("GET /v1/objects?dn=N%3D1&depth=0", R"({"objects":[{"dn":"N=1","attributes":{}}]})");
    node.answer("POST /v1/objects", R"({"changed":1})");

    EXPECT_EQ((Outcome{0, "set: N=1\n", ""}), run({"object", "set", "N=1", "a=1", "b=x"}));
    EXPECT_THAT(node.requests(),
                ElementsAre("GET /v1/objects?dn=N%3D1&depth=0",
                            R"(POST /v1/objects {"changes":[{"set":{"dn":"N=1","attributes":{"a":1,"b":"x"}}}]})"));
}

TEST_F(ObjectCommandsTest, aValueThatBeginsLikeJsonAndIsNoneIsAWrongCommandLine)
{
    node.answer("GET /v1/objects?dn=N%3D1&depth=0", R"({"objects":[{"dn":"N=1","attributes":{}}]})");

    EXPECT_EQ((Outcome{2, "", "zorvctl: a: not JSON: at byte 2: Missing a comma or ']' after an array element\n"}),
              run({"object", "set", "N=1", "a=[1"}));
}

TEST_F(ObjectCommandsTest, objectsAreCreatedAndDeleted)
{
    node.answer("POST /v1/objects", R"({"changed":1})");

    EXPECT_EQ((Outcome{0, "create: N=2\n", ""}), run({"object", "create", "N=2", "size=3", "name=r7"}));
    EXPECT_EQ((Outcome{0, "create: N=3\n", ""}), run({"object", "create", "N=3"}));
    EXPECT_EQ((Outcome{0, "delete: N=3\n", ""}), run({"object", "delete", "N=3"}));
    EXPECT_THAT(
        node.requests(),
        ElementsAre(R"(POST /v1/objects {"changes":[{"create":{"dn":"N=2","attributes":{"size":3,"name":"r7"}}}]})",
                    R"(POST /v1/objects {"changes":[{"create":{"dn":"N=3","attributes":{}}}]})",
                    R"(POST /v1/objects {"changes":[{"delete":{"dn":"N=3"}}]})"));
}

TEST_F(ObjectCommandsTest, aRefusedChangeIsTold)
{
    node.answer("POST /v1/objects", R"({"error":{"reason":"no such object, \"N=9\""}})", 404);

    EXPECT_EQ((Outcome{1, "", "zorvctl: no such object, \"N=9\"\n"}), run({"object", "delete", "N=9"}));
}

}  // namespace ZorvCtl

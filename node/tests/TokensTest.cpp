#include "api/http/Tokens.hpp"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "TemporaryDirectory.hpp"
#include "files/InputError.hpp"

namespace ZorvNode {

class TokensTest : public ::testing::Test {
protected:
    std::string write(const std::string& content, mode_t mode = 0600) const
    {
        std::string path = directory.write("tokens", content);
        EXPECT_EQ(0, chmod(path.c_str(), mode));
        return path;
    }

    std::string failureOf(const std::string& content, mode_t mode = 0600) const
    {
        const std::string path = write(content, mode);
        try {
            Tokens{path};
        } catch (const ZorvInput::InputError& e) {
            return std::string(e.what()).substr(path.size());
        }
        return "read";
    }

    /// "TEXT: rpm", with a letter for each permission.
    static std::string callerOf(const Tokens& tokens, const std::string& authorization)
    {
        const Caller caller = tokens.callerOf(authorization, "peer");
        return caller.text + ": " + (caller.mayRead ? "r" : "") + (caller.mayPublish ? "p" : "") +
               (caller.mayManage ? "m" : "");
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string first = "0123456789abcdef";
    const std::string second = "0123456789abcdeg";
    const std::string third = "0123456789abcdefg";
};

TEST_F(TokensTest, eachPermissionIncludesThoseBefore)
{
    const Tokens tokens(write("# people\n\n read   " + first + "\npublish\t" + second + " \n#\nmanage " + third));

    EXPECT_EQ("token 1 from peer: r", callerOf(tokens, "Bearer " + first));
    EXPECT_EQ("token 2 from peer: rp", callerOf(tokens, "Bearer " + second));
    EXPECT_EQ("token 3 from peer: rpm", callerOf(tokens, "bearer " + third));
}

TEST_F(TokensTest, whoeverNamesNoTokenMayDoNothing)
{
    const Tokens tokens(write("manage " + first + "\n"));

    for (const std::string& authorization :
         {std::string(), std::string("Bearer"), std::string("Bearer "), "Bearer  " + first, "Bearer " + first + " ",
          "Bearer " + second, "Bearer " + third, first, "Basic " + first, "Bearer " + first.substr(1)}) {
        EXPECT_EQ("unknown from peer: ", callerOf(tokens, authorization)) << authorization;
    }
}

TEST_F(TokensTest, whatIsWrongIsToldWithoutTheToken)
{
    EXPECT_EQ(":2: begins with none of read, publish and manage",
              failureOf("read " + first + "\n" + second + " read\n"));
    EXPECT_EQ(":1: not one token of 16 characters or more", failureOf("read"));
    EXPECT_EQ(":1: not one token of 16 characters or more", failureOf("read " + first.substr(1)));
    EXPECT_EQ(":1: not one token of 16 characters or more", failureOf("read " + first + " " + second));
    EXPECT_EQ(": no token in the file", failureOf(""));
    EXPECT_EQ(": no token in the file", failureOf("# read " + first));
}

TEST_F(TokensTest, aFileThatOthersMayUseIsRefused)
{
    for (const mode_t mode : {0640U, 0604U, 0620U, 0601U}) {
        EXPECT_EQ(": other users may read it; chmod 600", failureOf("read " + first, mode));
    }
    EXPECT_EQ("read", failureOf("read " + first, 0400));
}

TEST_F(TokensTest, aFileThatIsNotThereIsTold)
{
    EXPECT_THROW(Tokens(directory.path("none")), ZorvInput::InputError);
}

}  // namespace ZorvNode

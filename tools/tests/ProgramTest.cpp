#include <Poco/Net/ServerSocket.h>

#include <streambuf>

#include "CommandTest.hpp"

namespace ZorvCtl {

using ::testing::AllOf;
using ::testing::HasSubstr;

namespace {

std::string noNodeText(const std::string& socket, const std::string& reason)
{
    return "zorvctl: no node answers on " + socket + ": " + reason +
           "\nzorvctl: start one with zorvd --config FILE, or systemctl start zorvd; "
           "name another one's socket with --socket PATH\n";
}

/// Takes nothing, with an error number of its choice.
class ClosedBuffer : public std::streambuf {
public:
    explicit ClosedBuffer(int number) : errorNumber(number) {}

protected:
    int_type overflow(int_type /*character*/) override
    {
        errno = errorNumber;
        return traits_type::eof();
    }

    int sync() override
    {
        errno = errorNumber;
        return -1;
    }

private:
    const int errorNumber;
};

}  // namespace

class ProgramTest : public CommandTest {
protected:
    void SetUp() override { ::unsetenv("ZORV_SOCKET"); }
    void TearDown() override { ::unsetenv("ZORV_SOCKET"); }

    Outcome runWithOutput(int errorNumber)
    {
        node.answer("GET /v1/counters", R"({"published":3})");
        ClosedBuffer buffer(errorNumber);
        std::ostream out(&buffer);
        std::ostringstream err;
        const Console console(out, err);
        const int exitCode = ZorvCtl::run({"--socket", node.socket(), "counters"}, console, interruption);
        return {exitCode, "", err.str()};
    }
};

TEST_F(ProgramTest, withoutANodeItSaysWhichSocketItTriedAndHowToStartOne)
{
    const std::string socket = node.socket() + ".other";

    EXPECT_EQ((Outcome{3, "", noNodeText(socket, "No such file or directory")}),
              runAsIs({"alarms", "--socket", socket}));
}

TEST_F(ProgramTest, theSocketComesFromTheOptionThenFromTheEnvironmentThenFromTheService)
{
    node.answer("GET /v1/counters", R"({"published":3})");
    ::setenv("ZORV_SOCKET", node.socket().c_str(), 1);
    EXPECT_EQ((Outcome{0, "published  3\n", ""}), runAsIs({"counters"}));
    EXPECT_EQ((Outcome{3, "", noNodeText("/nowhere/a", "No such file or directory")}),
              runAsIs({"counters", "--socket", "/nowhere/a"}));
    ::setenv("ZORV_SOCKET", "/nowhere/b", 1);
    EXPECT_EQ((Outcome{3, "", noNodeText("/nowhere/b", "No such file or directory")}), runAsIs({"counters"}));
    ::setenv("ZORV_SOCKET", "", 1);
    EXPECT_THAT(runAsIs({"--help"}).out, HasSubstr("else /run/zorv/zorvd.sock\n"));
}

TEST_F(ProgramTest, aSocketThatNobodyListensOnIsNoNode)
{
    const ZorvTest::TemporaryDirectory directory;
    const std::string path = directory.path("s");
    {
        Poco::Net::ServerSocket gone;
        gone.bind(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, path), false);
        gone.listen();
    }
    EXPECT_EQ((Outcome{3, "", noNodeText(path, "Connection refused")}), runAsIs({"alarms", "--socket", path}));
}

TEST_F(ProgramTest, aPathThatIsTooLongForASocketIsAWrongCommandLine)
{
    const std::string path(200, 'x');

    EXPECT_EQ((Outcome{2, "", "zorvctl: not a path for a socket, 1 to 107 bytes: \"" + path + "\"\n"}),
              runAsIs({"alarms", "--socket", path}));
}

TEST_F(ProgramTest, aReasonOfTheNodeIsPrintedWithItsFieldOnce)
{
    node.answer("GET /v1/summary", R"({"error":{"reason":"unknown, \"x\"","field":"dn"}})", 400);
    EXPECT_EQ((Outcome{1, "", "zorvctl: dn: unknown, \"x\"\n"}), run({"summary"}));

    node.answer("GET /v1/lists", R"({"error":{"reason":"dn: unknown","field":"dn"}})", 400);
    EXPECT_EQ((Outcome{1, "", "zorvctl: dn: unknown\n"}), run({"lists"}));
}

TEST_F(ProgramTest, anAnswerThatIsNotJsonIsTold)
{
    node.answer("GET /v1/summary", "<html>", 502);

    EXPECT_EQ((Outcome{1, "", "zorvctl: the node answered 502 Bad Gateway, not JSON: at byte 0: Invalid value\n"}),
              run({"summary"}));
}

TEST_F(ProgramTest, anInterruptedRequestEndsWithItsOwnExitCode)
{
    interruption.interrupt();

    EXPECT_EQ((Outcome{130, "", ""}), run({"summary"}));
}

TEST_F(ProgramTest, aReaderThatLeftEndsItQuietly)
{
    EXPECT_EQ((Outcome{0, "", ""}), runWithOutput(EPIPE));
}

TEST_F(ProgramTest, anOutputThatIsFullIsTold)
{
    EXPECT_EQ((Outcome{1, "", "zorvctl: standard output takes no more: No space left on device\n"}),
              runWithOutput(ENOSPC));
}

TEST_F(ProgramTest, theVersionIsPrinted)
{
    EXPECT_EQ((Outcome{0, "zorvctl " ZORV_VERSION "\n", ""}), runAsIs({"--version"}));
}

TEST_F(ProgramTest, eachCommandTeachesWithExamples)
{
    const std::vector<std::vector<std::string>> commands = {
        {},
        {"raise"},
        {"clear"},
        {"alert"},
        {"alarms"},
        {"alarm"},
        {"summary"},
        {"suppress"},
        {"notifications"},
        {"object", "get"},
        {"object", "set"},
        {"object", "create"},
        {"object", "delete"},
        {"object", "tree"},
        {"model", "check"},
        {"model", "reload"},
        {"component", "start"},
        {"component", "stop"},
        {"component", "list"},
        {"lists"},
        {"counters"},
        {"log"},
        {"level"},
        {"level", "log"},
        {"level", "trace"},
        {"status"},
        {"play"},
    };
    for (std::vector<std::string> command : commands) {
        std::string name = "zorvctl";
        for (const std::string& word : command) {
            name += " " + word;
        }
        command.push_back("--help");
        const Outcome outcome = runAsIs(command);
        EXPECT_EQ(0, outcome.exitCode) << name;
        EXPECT_EQ("", outcome.err) << name;
        EXPECT_THAT(outcome.out, AllOf(HasSubstr("Usage: " + name + " "), HasSubstr("\nExamples:\n  " + name))) << name;
    }
}

}  // namespace ZorvCtl

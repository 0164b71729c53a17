/// Who may connect to the node's socket, and what others than the node's own user may do there.

#include <gmock/gmock.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "RunningNode.hpp"
#include "Visitor.hpp"

namespace ZorvTest {

using ::testing::EndsWith;
using ::testing::HasSubstr;

namespace {

constexpr uid_t stranger = 65533;
constexpr gid_t itsGroup = 65532;
constexpr uid_t otherStranger = 65531;

const std::string publishers = "daemon";
const std::string managers = "bin";

gid_t idOf(const std::string& name)
{
    const ::group* const found = getgrnam(name.c_str());
    return found == nullptr ? throw std::runtime_error("no group " + name) : found->gr_gid;
}

/// A group that the test's user may give a file to.
std::string groupToGive()
{
    const ::group* const own = getgrgid(getegid());
    return geteuid() == 0 || own == nullptr ? publishers : own->gr_name;
}

}  // namespace

class WhoGetsInTest : public ::testing::Test {
protected:
    WhoGetsInTest()
    {
        std::filesystem::create_directory(files.path("run"));
        for (const std::string& folder : {files.directory.path(), files.path("run")}) {
            EXPECT_EQ(0, chmod(folder.c_str(), 0755));  // what keeps somebody out is the socket
        }
    }

    void start(const std::string& api)
    {
        files.writeConfiguration(std::string(BAD_LIBRARIES) + "/WellBehaved.so", "<api>" + api + "</api>\n");
        node = std::make_unique<RunningNode>(files);
    }

    /// The answers to a read, a publication and a change.
    std::string triesOf(Visitor visitor) const
    {
        return visitor.ask(files.socket(), "GET", "/v1/node") + " " +
               visitor.ask(files.socket(), "POST", "/v1/notifications", raise) + " " +
               visitor.ask(files.socket(), "PUT", "/v1/levels", change);
    }

    /// @param asStranger what somebody else is answered; the node's own user is never refused.
    static std::string answers(const Visitor& visitor, const std::string& asStranger)
    {
        return visitor.isStranger() ? asStranger : "200 200 200";
    }

    struct stat statusOfSocket() const
    {
        struct stat status {};
        EXPECT_EQ(0, stat(files.socket().c_str(), &status));
        return status;
    }

    const std::string raise = R"({"raise":{"dn":"Node=1","majorType":1,"minorType":1,"severity":"MAJOR"}})";
    const std::string change = R"({"log":"information"})";
    NodeFiles files;
    std::unique_ptr<RunningNode> node;
};

TEST_F(WhoGetsInTest, theSocketIsForTheNodesUserAndGroupWhateverTheUmask)
{
    for (const mode_t mask : {0U, 0077U}) {
        const mode_t old = umask(mask);
        start("");
        umask(old);

        const struct stat status = statusOfSocket();
        EXPECT_EQ(static_cast<mode_t>(S_IFSOCK | 0660), status.st_mode);
        EXPECT_EQ(geteuid(), status.st_uid);
        EXPECT_EQ(getegid(), status.st_gid);
        EXPECT_EQ(0, node->stop().exitCode);
    }
}

TEST_F(WhoGetsInTest, theConfigurationDecidesOnTheSocketsModeAndGroup)
{
    start("<socketMode>0624</socketMode><socketGroup>" + groupToGive() + "</socketGroup>");

    const struct stat status = statusOfSocket();
    EXPECT_EQ(static_cast<mode_t>(S_IFSOCK | 0624), status.st_mode);
    EXPECT_EQ(geteuid(), status.st_uid);
    EXPECT_EQ(idOf(groupToGive()), status.st_gid);
}

TEST_F(WhoGetsInTest, whoeverTheSocketsModeLeavesOutIsNotConnected)
{
    start("<socketGroup>" + groupToGive() + "</socketGroup>");
    Visitor outsider(stranger, itsGroup);
    Visitor member(stranger, idOf(groupToGive()));

    EXPECT_EQ(outsider.isStranger() ? "Permission denied" : "200", outsider.ask(files.socket(), "GET", "/v1/node"));
    EXPECT_EQ("200", member.ask(files.socket(), "GET", "/v1/node"));
}

TEST_F(WhoGetsInTest, theGroupsDecideWhoPublishesAndWhoManages)
{
    start("<socketMode>0666</socketMode><publishGroup>" + publishers + "</publishGroup><manageGroup>" + managers +
          "</manageGroup>");
    const Visitor outsider(stranger, itsGroup);
    const Visitor publisher(stranger, idOf(publishers));
    const Visitor manager(otherStranger, idOf(managers));

    EXPECT_EQ(answers(outsider, "200 403 403"), triesOf(outsider));
    EXPECT_EQ(answers(publisher, "200 200 403"), triesOf(publisher));
    EXPECT_EQ(answers(manager, "200 200 200"), triesOf(manager));
    EXPECT_EQ("200 200 200", triesOf(Visitor(geteuid(), itsGroup)));
}

TEST_F(WhoGetsInTest, withoutGroupsWhoeverConnectsMayPublishAndNobodyElseMayManage)
{
    start("<socketMode>0666</socketMode>");
    const Visitor outsider(stranger, itsGroup);

    EXPECT_EQ(answers(outsider, "200 200 403"), triesOf(outsider));
}

TEST_F(WhoGetsInTest, theLogsTellWhoPublishedAndWhoChangedSomething)
{
    start("<socketMode>0666</socketMode><manageGroup>" + managers + "</manageGroup>");
    Visitor publisher(stranger, itsGroup);
    Visitor manager(otherStranger, idOf(managers));

    ASSERT_EQ("200", publisher.ask(files.socket(), "POST", "/v1/notifications", raise));
    ASSERT_EQ("200", manager.ask(files.socket(), "PUT", "/v1/levels", change));

    EXPECT_THAT(files.directory.read("run/log/Publications.log"),
                EndsWith(" published 1, rejected 0, by " + publisher.name() + "\n"));
    EXPECT_THAT(files.directory.read("run/log/SystemLog.log"),
                HasSubstr(" NOTICE levels changed, by " + manager.name() + "\n"));
}

}  // namespace ZorvTest

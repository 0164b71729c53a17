#include "config/ApiConfiguration.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"
#include "config/NodeConfiguration.hpp"
#include "files/InputError.hpp"

namespace ZorvNode {

class ApiConfigurationTest : public ::testing::Test {
protected:
    ApiSettings read(const std::string& api) const
    {
        const std::string least = "<ZorvNode><library>a.so</library><model>m.xml</model>\n";
        return readNodeConfiguration(directory.write("node.xml", least + api + "</ZorvNode>")).api;
    }

    std::string failureOf(const std::string& inside) const
    {
        try {
            read("<api>" + inside + "</api>");
        } catch (const InputError& e) {
            return std::string(e.what()).substr(directory.path("node.xml").size());
        }
        return "read";
    }

    const ZorvTest::TemporaryDirectory directory;
};

TEST_F(ApiConfigurationTest, theDefaultsStandWithoutASection)
{
    const ApiSettings it = read("");

    EXPECT_EQ(directory.path("run/zorvd.sock"), it.socket);
    EXPECT_EQ(0660U, it.socketMode);
    EXPECT_FALSE(it.socketGroup || it.permissions.publishGroup || it.permissions.manageGroup || it.tls);
    EXPECT_EQ(256U, it.connectionBound);
    EXPECT_EQ(64U, it.streamBound);
    EXPECT_EQ(16384U, it.headerBound);
    EXPECT_EQ(1048576U, it.bodyBound);
    EXPECT_EQ(1000U, it.batchBound);
    EXPECT_EQ(10000U, it.streamHistory);
    EXPECT_EQ(std::chrono::seconds(30), it.requestTime);
    EXPECT_EQ(std::chrono::seconds(60), it.idleTime);
}

TEST_F(ApiConfigurationTest, everyElementIsRead)
{
    const ApiSettings it =
        read("<api><socket>s</socket><socketMode>0606</socketMode><socketGroup>root</socketGroup>"
             "<publishGroup>root</publishGroup><manageGroup> root </manageGroup><connectionBound>1</connectionBound>"
             "<streamBound>0</streamBound><headerBound>1024</headerBound><bodyBound>1025</bodyBound>"
             "<batchBound>2</batchBound><streamHistory>3</streamHistory><requestSeconds>4</requestSeconds>"
             "<idleSeconds>5</idleSeconds><tls><address>::1</address><port>65535</port><certificate>c.pem</certificate>"
             "<key>/k.pem</key><tokens>t</tokens></tls></api>");

    EXPECT_EQ(directory.path("s"), it.socket);
    EXPECT_EQ(0606U, it.socketMode);
    EXPECT_EQ(gid_t(0), it.socketGroup);
    EXPECT_EQ(gid_t(0), it.permissions.publishGroup);
    EXPECT_EQ(gid_t(0), it.permissions.manageGroup);
    EXPECT_EQ(1U, it.connectionBound);
    EXPECT_EQ(0U, it.streamBound);
    EXPECT_EQ(1024U, it.headerBound);
    EXPECT_EQ(1025U, it.bodyBound);
    EXPECT_EQ(2U, it.batchBound);
    EXPECT_EQ(3U, it.streamHistory);
    EXPECT_EQ(std::chrono::seconds(4), it.requestTime);
    EXPECT_EQ(std::chrono::seconds(5), it.idleTime);
    ASSERT_TRUE(it.tls);
    EXPECT_EQ("::1", it.tls->address);
    EXPECT_EQ(65535, it.tls->port);
    EXPECT_EQ(directory.path("c.pem"), it.tls->certificate);
    EXPECT_EQ("/k.pem", it.tls->key);
    EXPECT_EQ(directory.path("t"), it.tls->tokens);
}

TEST_F(ApiConfigurationTest, wrongElementsAndValuesAreToldWithTheirLine)
{
    const std::string mode = ":2: api/socketMode: not an octal number that gives read and write permissions only, ";
    EXPECT_EQ(":2: unknown element, \"api/colour\"", failureOf("<colour/>"));
    EXPECT_EQ(mode + "\"0770\"", failureOf("<socketMode>0770</socketMode>"));
    EXPECT_EQ(mode + "\"668\"", failureOf("<socketMode>668</socketMode>"));
    EXPECT_EQ(mode + "\"\"", failureOf("<socketMode/>"));
    EXPECT_EQ(":2: api/publishGroup: no such group, \"no group\"", failureOf("<publishGroup>no group</publishGroup>"));
    EXPECT_EQ(":2: api/headerBound: not a number from 1024 to 65536, \"1023\"",
              failureOf("<headerBound>1023</headerBound>"));
    EXPECT_EQ(":2: api/requestSeconds: not a number from 1 to 3600, \"0\"",
              failureOf("<requestSeconds>0</requestSeconds>"));
    EXPECT_EQ(":2: api/socket: longer than 107 bytes, \"/" + std::string(107, 'x') + "\"",
              failureOf("<socket>/" + std::string(107, 'x') + "</socket>"));
}

TEST_F(ApiConfigurationTest, tlsNeedsPortCertificateKeyAndTokens)
{
    const std::string port = "<port>1</port>";
    const std::string certificate = "<certificate>c</certificate>";
    const std::string key = "<key>k</key>";

    EXPECT_EQ(":2: element is missing, \"api/tls/port\"", failureOf("<tls/>"));
    EXPECT_EQ(":2: element is missing, \"api/tls/certificate\"", failureOf("<tls>" + port + "</tls>"));
    EXPECT_EQ(":2: element is missing, \"api/tls/key\"", failureOf("<tls>" + port + certificate + "</tls>"));
    EXPECT_EQ(":2: element is missing, \"api/tls/tokens\"", failureOf("<tls>" + port + certificate + key + "</tls>"));
    EXPECT_EQ(":2: api/tls/port: not a number from 1 to 65535, \"65536\"", failureOf("<tls><port>65536</port></tls>"));
}

}  // namespace ZorvNode

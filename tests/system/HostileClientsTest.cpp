/// Thousands of requests that no well-meaning client sends: each is answered with an error or its connection is closed,
/// and the node goes on as if nothing had happened.

#include <Poco/Net/SocketAddress.h>
#include <Poco/Net/StreamSocket.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "HostileRequests.hpp"
#include "RunningNode.hpp"
#include "json/Json.hpp"

namespace ZorvTest {

using ::testing::AnyOf;
using ::testing::HasSubstr;

namespace {

constexpr std::chrono::seconds longest(15);

/// What can be sent is sent, then comes the end of what is sent; everything that comes back.
std::string exchange(const std::string& socket, const std::string& text)
{
    Poco::Net::StreamSocket connection(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket));
    connection.setReceiveTimeout(Poco::Timespan(longest.count(), 0));
    std::string answer;
    try {
        for (std::size_t sent = 0; sent < text.size();) {
            sent += static_cast<std::size_t>(
                connection.sendBytes(text.data() + sent, static_cast<int>(text.size() - sent)));
        }
        connection.shutdownSend();
    } catch (const Poco::TimeoutException&) {
        throw;
    } catch (const Poco::Exception&) {
        // the node has heard enough
    }
    char block[4096];
    try {
        for (int length = 0; (length = connection.receiveBytes(block, sizeof(block))) > 0;) {
            answer.append(block, static_cast<std::size_t>(length));
        }
    } catch (const Poco::TimeoutException&) {
        throw;
    } catch (const Poco::Exception&) {
        // closed the hard way
    }
    return answer;
}

/// For messages.
std::string shortened(const std::string& text)
{
    return ::testing::PrintToString(text.substr(0, 400));
}

/// A closed connection, or one error or more, each with its reason as JSON.
void expectErrors(const std::string& sent, const std::string& answer)
{
    std::size_t position = 0;
    while (position < answer.size()) {
        const std::size_t end = answer.find("\r\n\r\n", position);
        ASSERT_NE(std::string::npos, end) << shortened(answer);
        const std::string head = answer.substr(position, end - position);
        const std::string status = head.substr(0, head.find(' ') + 2);
        ASSERT_THAT(status, AnyOf("HTTP/1.1 4", "HTTP/1.1 5")) << shortened(sent) << "\n" << shortened(answer);
        const std::string lengthField = "Content-Length: ";
        const std::size_t length = head.find(lengthField);
        ASSERT_NE(std::string::npos, length) << head;
        position = end + 4 + std::stoul(head.substr(length + lengthField.size()));
        ASSERT_LE(position, answer.size());
        ZorvInput::JsonDocumentT body;
        ASSERT_NO_THROW(ZorvInput::parseJson(answer.substr(end + 4, position - end - 4), 4, body)) << shortened(answer);
        const bool isPublished = body.IsObject() && body.HasMember("accepted");
        ASSERT_TRUE(isPublished ? body["accepted"].GetUint64() == 0 && !body["rejected"].Empty()
                                : body.IsObject() && body.HasMember("error") && body["error"].HasMember("reason"))
            << shortened(answer);
    }
}

}  // namespace

class HostileClientsTest : public ::testing::Test {
protected:
    HostileClientsTest()
    {
        files.writeConfiguration(FM_LIBRARY,
                                 "<api><bodyBound>" + std::to_string(hostileBodyBound) + "</bodyBound></api>\n");
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
        node = std::make_unique<RunningNode>(files);
    }

    /// What the node keeps in memory, in kB.
    long memoryInUse() const
    {
        ZorvInput::JsonDocumentT description;
        ZorvInput::parseJson(node->request("GET", "/v1/node"), 8, description);
        std::ifstream status("/proc/" + std::to_string(description["processId"].GetInt()) + "/status");
        for (std::string word; status >> word;) {
            if (word == "VmRSS:") {
                long size = 0;
                status >> size;
                return size;
            }
        }
        ADD_FAILURE() << "no VmRSS";
        return 0;
    }

    /// Each kind in turn.
    void attack(int requests)
    {
        for (int number = 0; number < requests && !HasFatalFailure(); ++number) {
            SCOPED_TRACE("request " + std::to_string(number));
            const std::string text = hostileRequest(static_cast<std::size_t>(number), random);
            expectErrors(text, exchange(files.socket(), text));
            ASSERT_FALSE(node->process().hasEnded()) << shortened(text);
        }
    }

    NodeFiles files;
    std::unique_ptr<RunningNode> node;
    std::mt19937 random{20240501};
};

TEST_F(HostileClientsTest, eachIsRefusedAndTheNodeIsAsBefore)
{
    attack(HOSTILE_REQUESTS / 10);  // buffers and threads are there from now on
    const long before = memoryInUse();
    attack(HOSTILE_REQUESTS);
    if (HasFatalFailure()) {
        return;
    }
    const long growth = memoryInUse() - before;
    RecordProperty("growthInKilobytes", static_cast<int>(growth));
    EXPECT_LT(growth, HOSTILE_GROWTH);

    node->settle();
    EXPECT_EQ(R"({"health":"ok","reasons":[]})", node->request("GET", "/v1/health"));
    EXPECT_EQ(R"({"alarms":[],"total":0})", node->request("GET", "/v1/alarms"));
    EXPECT_THAT(node->request("GET", "/v1/counters"), HasSubstr(R"("notificationsPublished":0,)"));
    const ProcessResult end = node->stop();
    EXPECT_EQ("", end.err);
    EXPECT_EQ(0, end.exitCode);
}

}  // namespace ZorvTest

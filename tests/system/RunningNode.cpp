#include "RunningNode.hpp"

#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/StreamCopier.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace ZorvTest {

namespace {

constexpr std::chrono::seconds longestWait(30);
constexpr std::chrono::milliseconds pause(5);

Poco::Net::StreamSocket connect(const std::string& socket)
{
    return Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket));
}

bool answers(const std::string& socket)
{
    try {
        connect(socket);
        return true;
    } catch (const Poco::Exception&) {
        return false;
    }
}

}  // namespace

RunningNode::RunningNode(const NodeFiles& files, const std::vector<std::string>& further,
                         std::vector<std::string> environment)
    : nodeFiles(files)
{
    environment.emplace_back("TZ=UTC");
    zorvd = std::make_unique<RunningProcess>(files.command(further), environment);
    awaitReadiness();
}

void RunningNode::awaitReadiness()
{
    const auto latest = std::chrono::steady_clock::now() + longestWait;
    while (!answers(nodeFiles.socket())) {
        if (zorvd->hasEnded() || std::chrono::steady_clock::now() > latest) {
            zorvd->signal(SIGKILL);
            throw std::runtime_error("the node does not answer: " + zorvd->awaitEnd().err);
        }
        std::this_thread::sleep_for(pause);
    }
}

ProcessResult RunningNode::ctl(const std::vector<std::string>& arguments) const
{
    return runProcess(ctlCommand(nodeFiles.socket(), arguments), {"TZ=UTC"});
}

std::string RunningNode::out(const std::vector<std::string>& arguments) const
{
    const ProcessResult result = ctl(arguments);
    EXPECT_EQ("", result.err);
    EXPECT_EQ(0, result.exitCode);
    return result.out;
}

std::string RunningNode::request(const std::string& method, const std::string& target, const std::string& body) const
{
    Poco::Net::HTTPClientSession session(connect(nodeFiles.socket()));
    Poco::Net::HTTPRequest question(method, target, Poco::Net::HTTPMessage::HTTP_1_1);
    question.setContentType("application/json");
    question.setContentLength(static_cast<std::streamsize>(body.size()));
    session.sendRequest(question) << body;
    Poco::Net::HTTPResponse response;
    std::string answer;
    Poco::StreamCopier::copyToString(session.receiveResponse(response), answer);
    EXPECT_EQ(200, response.getStatus()) << method << " " << target << ": " << answer;
    return answer;
}

void RunningNode::settle() const
{
    EXPECT_EQ(R"({"quiet":true})", request("POST", "/v1/settle", R"({"quietSeconds":0.3})"));
}

void RunningNode::awaitStreams(unsigned number) const
{
    const std::string wanted = "\"streams\":" + std::to_string(number) + ",";
    const auto latest = std::chrono::steady_clock::now() + longestWait;
    while (request("GET", "/v1/counters").find(wanted) == std::string::npos) {
        ASSERT_LT(std::chrono::steady_clock::now(), latest) << "there are no " << number << " streams";
        std::this_thread::sleep_for(pause);
    }
}

ProcessResult RunningNode::stop()
{
    zorvd->signal(SIGTERM);
    return zorvd->awaitEnd();
}

void RunningNode::kill()
{
    zorvd->signal(SIGKILL);
    zorvd->awaitEnd();
}

std::vector<std::string> ctlCommand(const std::string& socket, const std::vector<std::string>& arguments)
{
    std::vector<std::string> command = {ZORVCTL, "--socket", socket};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

}  // namespace ZorvTest

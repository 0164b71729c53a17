#include "ScriptedNode.hpp"

#include <Poco/Net/HTTPRequestHandler.h>
#include <Poco/Net/HTTPRequestHandlerFactory.h>
#include <Poco/Net/HTTPServerParams.h>
#include <Poco/Net/HTTPServerRequest.h>
#include <Poco/Net/HTTPServerResponse.h>
#include <Poco/Net/SocketAddress.h>
#include <Poco/StreamCopier.h>

#include <chrono>

namespace ZorvTest {

using namespace Poco::Net;

namespace {

class Handler : public HTTPRequestHandler {
public:
    explicit Handler(ScriptedNode& scriptedNode) : node(scriptedNode) {}

    void handleRequest(HTTPServerRequest& request, HTTPServerResponse& response) override
    {
        const std::string asked = request.getMethod() + " " + request.getURI();
        std::string body;
        Poco::StreamCopier::copyToString(request.stream(), body);
        const std::string lastId = request.get("Last-Event-ID", "");
        const ScriptedAnswer answer =
            node.take(asked, asked + (lastId.empty() ? "" : " [" + lastId + "]") + (body.empty() ? "" : " " + body));
        response.setStatus(static_cast<HTTPResponse::HTTPStatus>(answer.status));
        response.setReason(HTTPResponse::getReasonForStatus(response.getStatus()));
        response.setContentType(answer.isStream ? "text/event-stream" : "application/json");
        if (!answer.isStream) {
            response.sendBuffer(answer.body.data(), answer.body.size());
            return;
        }
        response.setChunkedTransferEncoding(true);
        response.send() << answer.body << std::flush;
        if (answer.staysOpen) {
            node.awaitEnd();
        }
    }

private:
    ScriptedNode& node;
};

class Factory : public HTTPRequestHandlerFactory {
public:
    explicit Factory(ScriptedNode& scriptedNode) : node(scriptedNode) {}

    HTTPRequestHandler* createRequestHandler(const HTTPServerRequest& /*request*/) override
    {
        return new Handler(node);
    }

private:
    ScriptedNode& node;
};

}  // namespace

ScriptedNode::ScriptedNode() : path(directory.path("zorvd.sock"))
{
    ServerSocket listening;
    listening.bind(SocketAddress(SocketAddress::UNIX_LOCAL, path), false);
    listening.listen();
    auto parameters = Poco::makeAuto<HTTPServerParams>();
    parameters->setKeepAlive(false);
    server = std::make_unique<HTTPServer>(new Factory(*this), listening, parameters);
    server->start();
}

ScriptedNode::~ScriptedNode()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isEnding = true;
        changed.notify_all();
    }
    server->stopAll(true);
    Poco::ThreadPool::defaultPool().joinAll();
}

void ScriptedNode::answer(const std::string& request, const std::string& body, int status)
{
    const std::lock_guard<std::mutex> lock(mutex);
    script[request].push_back({status, body, false, false});
}

void ScriptedNode::stream(const std::string& request, const std::string& events, bool staysOpen)
{
    const std::lock_guard<std::mutex> lock(mutex);
    script[request].push_back({200, events, true, staysOpen});
}

std::vector<std::string> ScriptedNode::requests() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return recorded;
}

bool ScriptedNode::awaitRequests(std::size_t number) const
{
    std::unique_lock<std::mutex> lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(10), [&] { return recorded.size() >= number; });
}

ScriptedAnswer ScriptedNode::take(const std::string& request, const std::string& all)
{
    const std::lock_guard<std::mutex> lock(mutex);
    recorded.push_back(all);
    changed.notify_all();
    std::deque<ScriptedAnswer>& answers = script[request];
    if (answers.empty()) {
        return {404, R"({"error":{"reason":"nothing scripted"}})", false, false};
    }
    ScriptedAnswer answer = answers.front();
    if (answers.size() > 1) {
        answers.pop_front();
    }
    return answer;
}

void ScriptedNode::awaitEnd() const
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return isEnding; });
}

}  // namespace ZorvTest

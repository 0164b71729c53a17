#include "NodeScript.hpp"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <stdexcept>

namespace ZorvClientTest {

namespace {

using LockT = std::unique_lock<std::mutex>;

int listenOn(const std::string& path)
{
    ::unlink(path.c_str());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        ::listen(listener, 16) != 0) {
        throw std::runtime_error("cannot listen on " + path);
    }
    return listener;
}

void sendAll(int connection, const std::string& bytes)
{
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t result = ::send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (result <= 0) {
            return;
        }
        sent += static_cast<std::size_t>(result);
    }
}

std::vector<std::uint32_t> minorTypes(const std::string& body)
{
    const std::string name = "\"minorType\":";
    std::vector<std::uint32_t> types;
    for (std::size_t at = body.find(name); at != std::string::npos; at = body.find(name, at + 1)) {
        types.push_back(static_cast<std::uint32_t>(std::stoul(body.substr(at + name.size(), 10))));
    }
    return types;
}

Step takeAll(const std::string& body)
{
    return answer(200, "{\"accepted\":" + std::to_string(minorTypes(body).size()) + ",\"rejected\":[]}");
}

}  // namespace

Step answer(int status, const std::string& body)
{
    return {"HTTP/1.1 " + std::to_string(status) + " Scripted\r\nContent-Type: application/json\r\nContent-Length: " +
                std::to_string(body.size()) + "\r\n\r\n" + body,
            false, false};
}

Step rejectItems(std::size_t batch, const std::vector<std::size_t>& items)
{
    std::string body = "{\"accepted\":" + std::to_string(batch - items.size()) + ",\"rejected\":[";
    for (std::size_t i = 0; i < items.size(); ++i) {
        body += (i == 0 ? "" : ",") + std::string("{\"item\":") + std::to_string(items[i]) +
                ",\"field\":\"raise.dn\",\"reason\":\"no such object\"}";
    }
    return answer(items.size() == batch ? 422 : 200, body + "]}");
}

Step loseConnection()
{
    return {"", true, false};
}

Step hang()
{
    return {"", true, true};
}

Step raw(const std::string& bytes)
{
    return {bytes, true, false};
}

NodeScript::NodeScript() : socketPath(folder.path("node.sock"))
{
}

NodeScript::~NodeScript()
{
    stop();
}

void NodeScript::start()
{
    const LockT lock(mutex);
    stopping = false;
    listening = listenOn(socketPath);
    acceptor = std::thread(&NodeScript::acceptAll, this, listening);
}

void NodeScript::stop()
{
    std::vector<std::thread> ended;
    {
        const LockT lock(mutex);
        stopping = true;
        changed.notify_all();
        ::shutdown(listening, SHUT_RDWR);
        for (const int connection : openConnections) {
            ::shutdown(connection, SHUT_RDWR);
        }
    }
    if (acceptor.joinable()) {
        acceptor.join();
        ::close(listening);
    }
    ended.swap(workers);
    for (std::thread& worker : ended) {
        worker.join();
    }
}

void NodeScript::acceptAll(int listener)
{
    for (;;) {
        const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        const LockT lock(mutex);
        if (connection < 0 || stopping) {
            ::close(connection);
            return;
        }
        ++connections;
        openConnections.push_back(connection);
        workers.emplace_back(&NodeScript::serve, this, connection);
    }
}

void NodeScript::serve(int connection)
{
    if (!serveEarly(connection)) {
        serveRequests(connection);
    }
    const LockT lock(mutex);
    openConnections.erase(std::remove(openConnections.begin(), openConnections.end(), connection),
                          openConnections.end());
    changed.notify_all();
    ::close(connection);
}

bool NodeScript::serveEarly(int connection)
{
    Step step;
    {
        const LockT lock(mutex);
        if (earlySteps.empty()) {
            return false;
        }
        step = earlySteps.front();
        earlySteps.pop_front();
    }
    char byte = 0;
    ::recv(connection, &byte, 1, 0);
    sendAll(connection, step.bytes);
    return true;
}

void NodeScript::serveRequests(int connection)
{
    std::string buffer;
    for (bool goOn = true; goOn && readRequest(connection, buffer);) {
        const std::size_t headEnd = buffer.find("\r\n\r\n") + 4;
        const std::string body = buffer.substr(headEnd);
        Step step;
        {
            LockT lock(mutex);
            receivedHeads.push_back(buffer.substr(0, headEnd));
            receivedBodies.push_back(body);
            step = takeStep(body);
            changed.notify_all();
            if (step.hang) {
                changed.wait(lock, [this] { return released || stopping; });
            }
        }
        sendAll(connection, step.bytes);
        goOn = !step.hangUp;
        buffer.clear();
    }
}

bool NodeScript::readRequest(int connection, std::string& buffer)
{
    for (;;) {
        const std::size_t headEnd = buffer.find("\r\n\r\n");
        if (headEnd != std::string::npos) {
            const std::string field = "Content-Length: ";
            const std::size_t length = std::stoul(buffer.substr(buffer.find(field) + field.size()));
            if (buffer.size() >= headEnd + 4 + length) {
                return true;
            }
        }
        char bytes[16384];
        const ssize_t count = ::recv(connection, bytes, sizeof(bytes), 0);
        if (count <= 0) {
            return false;
        }
        buffer.append(bytes, static_cast<std::size_t>(count));
    }
}

Step NodeScript::takeStep(const std::string& body)
{
    if (steps.empty()) {
        return takeAll(body);
    }
    Step step = steps.front();
    steps.pop_front();
    return step;
}

void NodeScript::next(const Step& step)
{
    const LockT lock(mutex);
    steps.push_back(step);
}

void NodeScript::answerEarly(const Step& step)
{
    const LockT lock(mutex);
    earlySteps.push_back(step);
}

void NodeScript::release()
{
    const LockT lock(mutex);
    released = true;
    changed.notify_all();
}

bool NodeScript::awaitRequests(std::size_t count)
{
    LockT lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(10), [&] { return receivedBodies.size() >= count; });
}

bool NodeScript::awaitNoConnection()
{
    LockT lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(10), [&] { return openConnections.empty(); });
}

std::vector<std::string> NodeScript::bodies()
{
    const LockT lock(mutex);
    return receivedBodies;
}

std::vector<std::string> NodeScript::heads()
{
    const LockT lock(mutex);
    return receivedHeads;
}

std::vector<std::vector<std::uint32_t>> NodeScript::batches()
{
    std::vector<std::vector<std::uint32_t>> all;
    for (const std::string& body : bodies()) {
        all.push_back(minorTypes(body));
    }
    return all;
}

std::size_t NodeScript::connectionCount()
{
    const LockT lock(mutex);
    return connections;
}

}  // namespace ZorvClientTest

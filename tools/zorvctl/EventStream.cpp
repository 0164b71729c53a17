#include "EventStream.hpp"

#include <Poco/Net/SocketImpl.h>
#include <sys/socket.h>

#include <utility>

namespace ZorvCtl {

namespace {

constexpr std::size_t readAhead = 1000;  // a slower reader makes the node wait, and then cut the stream

/// "name: value"; the blank behind the colon does not belong to the value.
std::pair<std::string, std::string> splitLine(const std::string& line)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) {
        return {line, ""};
    }
    const bool hasBlank = colon + 1 < line.size() && line[colon + 1] == ' ';
    return {line.substr(0, colon), line.substr(colon + (hasBlank ? 2 : 1))};
}

}  // namespace

EventStream::EventStream(std::unique_ptr<Poco::Net::HTTPClientSession> theSession, std::istream& body,
                         Interruption& interruption)
    : session(std::move(theSession)),
      watch(interruption, session->socket())
{
    session->socket().setReceiveTimeout(Poco::Timespan());
    reader = std::thread([this, &body] { read(body); });
}

EventStream::~EventStream()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isClosing = true;
        changed.notify_all();
    }
    ::shutdown(session->socket().impl()->sockfd(), SHUT_RDWR);
    reader.join();
}

EventStream::Next EventStream::next(Event& event, std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait_for(lock, timeout, [this] { return !events.empty() || hasEnded; });
    if (events.empty()) {
        return hasEnded ? Next::ended : Next::quiet;
    }
    event = std::move(events.front());
    events.pop_front();
    changed.notify_all();
    return Next::event;
}

void EventStream::read(std::istream& body)
{
    Event event;
    bool hasData = false;
    for (std::string line; std::getline(body, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        const auto [field, value] = splitLine(line);
        if (line.empty() && (hasData || !event.name.empty())) {
            push(std::exchange(event, {}));
            hasData = false;
        } else if (field == "event") {
            event.name = value;
        } else if (field == "id") {
            event.id = value;
        } else if (field == "data") {
            event.data += (hasData ? "\n" : "") + value;
            hasData = true;
        }
    }
    const std::lock_guard<std::mutex> lock(mutex);
    hasEnded = true;
    changed.notify_all();
}

void EventStream::push(Event event)
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return events.size() < readAhead || isClosing; });
    events.push_back(std::move(event));
    changed.notify_all();
}

}  // namespace ZorvCtl

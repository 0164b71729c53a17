#include "Follower.hpp"

#include <algorithm>
#include <utility>

#include "Failure.hpp"

namespace ZorvCtl {

namespace {

constexpr std::chrono::milliseconds shortestPause(200);
constexpr std::chrono::milliseconds longestPause(5000);
constexpr std::chrono::hours longWait(1);

}  // namespace

Follower::Follower(NodeConnection& nodeConnection, const Console& theConsole, const Target& begin, Target again)
    : connection(nodeConnection),
      console(theConsole),
      target(begin),
      later(std::move(again)),
      stream(connection.follow(begin, ""))
{
}

bool Follower::next(Event& event, std::chrono::milliseconds timeout)
{
    switch (stream->next(event, timeout)) {
    case EventStream::Next::event:
        lastId = event.id.empty() ? lastId : event.id;
        target = later;
        return true;
    case EventStream::Next::ended:
        reopen();
        return false;
    default:
        return false;
    }
}

void Follower::next(Event& event)
{
    while (!next(event, longWait)) {}
}

void Follower::reopen()
{
    stream.reset();
    connection.getInterruption().waitFor(shortestPause);
    console.tell("the node has ended the stream; connecting again");
    for (auto pause = shortestPause;; pause = std::min(pause * 2, longestPause)) {
        try {
            stream = connection.follow(target, lastId);
            reopened = true;
            return;
        } catch (const NoNode&) {
            connection.getInterruption().waitFor(pause);
        }
    }
}

}  // namespace ZorvCtl

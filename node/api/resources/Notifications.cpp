#include "api/QueryParameters.hpp"
#include "api/resources/Resources.hpp"

namespace ZorvNode {

namespace {

using PositionT = NotificationHistory::PositionT;

constexpr std::chrono::milliseconds stopCheck(250);
constexpr unsigned checksBetweenProbes = 40;  // every ten seconds

/// Where the reader asked to begin; none: what lies between there and now is not known.
std::optional<PositionT> beginOf(const NotificationHistory& history, const std::string& after)
{
    if (after.empty()) {
        return history.end();
    }
    if (after == "oldest") {
        return history.oldest();
    }
    const auto place = NotificationPlace::fromText(after);
    if (!place) {
        throw HttpError(400, "not STATEFUL.STATELESS or oldest", "after");
    }
    return history.behind(*place);
}

/// Sends entry after entry until the reader goes, or falls behind what is kept.
class Stream {
public:
    Stream(const NotificationHistory& notificationHistory, EventSink& eventSink, StreamCounters& streamCounters)
        : history(notificationHistory),
          sink(eventSink),
          counters(streamCounters)
    {
    }

    void run(std::optional<PositionT> begin, bool follow)
    {
        const PositionT end = history.end();  // what comes meanwhile is sent behind the resync
        if (!begin && !sendResync()) {
            return;
        }
        PositionT position = begin.value_or(end);
        while (follow || position < end) {
            if (!sendNext(position)) {
                return;
            }
        }
    }

private:
    bool sendResync() { return sink.send("resync", history.lastPlace().toText(), "{}"); }

    bool sendNext(PositionT& position)
    {
        NotificationHistory::EntryT entry;
        switch (history.next(position, stopCheck, entry)) {
        case NotificationHistory::Found::entry:
            ++position;
            quietChecks = 0;
            return sink.send(entry->name, entry->place.toText(), entry->json);
        case NotificationHistory::Found::missed:
            ++counters.cutOff;
            sendResync();
            return false;
        default:
            if (++quietChecks < checksBetweenProbes) {
                return sink.isOpen();
            }
            quietChecks = 0;
            return sink.sendNothing();
        }
    }

    const NotificationHistory& history;
    EventSink& sink;
    StreamCounters& counters;
    unsigned quietChecks = 0;
};

HttpResponse follow(const NotificationFollower& follower, StreamCounters& counters, const HttpRequest& request)
{
    QueryParameters query(request);
    const auto version = static_cast<int>(query.number("version", 2, 3).value_or(3));
    const std::string after = query.text("after").value_or(request.lastEventId);
    const bool goOn = query.flag("follow", true);
    query.expectNoOther();
    const NotificationHistory& history = follower.getHistory(version);
    const auto begin = beginOf(history, after);
    HttpResponse response;
    response.stream = [&history, &counters, begin, goOn](EventSink& sink) {
        Stream(history, sink, counters).run(begin, goOn);
    };
    return response;
}

}  // namespace

void addNotifications(HttpRoutes& routes, const NotificationFollower& follower, StreamCounters& counters)
{
    routes.add("GET", "/v1/notifications", Permission::read,
               [&](const HttpRequest& request, const std::string&) { return follow(follower, counters, request); });
}

}  // namespace ZorvNode

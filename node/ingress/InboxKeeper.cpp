#include "ingress/InboxKeeper.hpp"

#include <algorithm>
#include <utility>

namespace ZorvNode {

InboxKeeper::InboxKeeper(FmNotificationSource& notificationSource, HandlingSigns handlingSigns,
                         const KeeperSettings& keeperSettings)
    : source(notificationSource),
      signs(std::move(handlingSigns)),
      settings(keeperSettings)
{
    source.whenFilled([this] {
        const std::lock_guard<std::mutex> lock(mutex);
        isFilled = true;
        wake.notify_all();
    });
    thread = std::thread([this] { run(); });
}

InboxKeeper::~InboxKeeper()
{
    source.whenFilled({});
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
        wake.notify_all();
    }
    thread.join();
}

void InboxKeeper::run()
{
    while (awaitSomething()) {
        activity = signs.activity();
        commits = signs.commits();
        quietSince = ClockT::now();
        trimmedAt = quietSince;
        source.sendPortion();
        while (source.getNumberInInbox() > 0) {
            mark();
            if (!pause()) {
                return;
            }
            noteActivity();
            noteHandled();
        }
        marks.clear();
    }
}

/// False when it is time to end, here and below.
bool InboxKeeper::awaitSomething()
{
    if (source.getNumberInInbox() > 0) {
        return true;
    }
    std::unique_lock<std::mutex> lock(mutex);
    wake.wait(lock, [this] { return stopping || isFilled; });
    isFilled = false;
    return !stopping;
}

bool InboxKeeper::pause()
{
    std::unique_lock<std::mutex> lock(mutex);
    return !wake.wait_for(lock, settings.look, [this] { return stopping; });
}

/// What is taken is asked for first: a commit in between counts as one before it.
void InboxKeeper::mark()
{
    const auto taken = source.getLastTaken();
    if (!marks.empty() && marks.back().taken.life != taken.life) {
        marks.clear();
    }
    if (taken.number > (marks.empty() ? 0 : marks.back().taken.number)) {
        marks.push_back({taken, ClockT::now(), signs.commits(), std::nullopt});
    }
}

void InboxKeeper::noteActivity()
{
    const auto now = ClockT::now();
    const std::uint64_t before = std::exchange(activity, signs.activity());
    if (activity != before) {
        quietSince = now;
    }
    if (const std::uint64_t present = signs.commits(); activity == before || present != commits) {
        commits = present;
        source.sendPortion();
    }
    for (Mark& mark : marks) {
        if (!mark.quietAt && now - std::max(mark.time, quietSince) >= settings.quiet) {
            mark.quietAt = now;
        }
    }
}

void InboxKeeper::noteHandled()
{
    auto unhandled = marks.begin();
    while (unhandled != marks.end() && isHandled(*unhandled)) {
        ++unhandled;
    }
    const auto now = ClockT::now();
    if (unhandled != marks.begin()) {
        source.noteHandled(std::prev(unhandled)->taken);
        marks.erase(marks.begin(), unhandled);
        trimmedAt = now;
    } else if (now - trimmedAt >= settings.grace) {
        source.allowMore();
        source.sendPortion();
        trimmedAt = now;
    }
}

bool InboxKeeper::isHandled(const Mark& mark) const
{
    return signs.commits() >= mark.commits + settings.commits ||
           (mark.quietAt && ClockT::now() - *mark.quietAt >= settings.grace);
}

}  // namespace ZorvNode

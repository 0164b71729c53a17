#include "ingress/InboxKeeper.hpp"

#include <utility>

namespace ZorvNode {

InboxKeeper::InboxKeeper(FmNotificationSource& notificationSource, std::function<std::uint64_t()> activity,
                         const KeeperSettings& keeperSettings)
    : source(notificationSource),
      getActivity(std::move(activity)),
      settings(keeperSettings),
      thread([this] { run(); })
{
}

InboxKeeper::~InboxKeeper()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
        wake.notify_all();
    }
    thread.join();
}

void InboxKeeper::run()
{
    std::uint64_t taken = 0;
    std::uint64_t activity = getActivity();
    while (pause(source.getNumberInInbox() > 0 ? settings.look : settings.idleLook)) {
        const bool wasQuiet = getActivity() == activity;
        if (wasQuiet && taken > 0 && (marks.empty() || marks.back().number < taken)) {
            marks.push_back({taken, ClockT::now()});
        }
        noteHandled();
        taken = source.getLastTaken();
        activity = getActivity();
    }
}

void InboxKeeper::noteHandled()
{
    while (!marks.empty() && ClockT::now() - marks.front().time >= settings.grace) {
        source.noteHandled(marks.front().number);
        marks.pop_front();
    }
}

/// False when it is time to end.
bool InboxKeeper::pause(std::chrono::milliseconds time)
{
    std::unique_lock<std::mutex> lock(mutex);
    return !wake.wait_for(lock, time, [this] { return stopping; });
}

}  // namespace ZorvNode
